#pragma once

#include <optional>
#include <string>

namespace kestrune::probe {

/// text as it can stand in JSON: a byte outside of well-formed UTF-8 becomes "%FF".
[[nodiscard]] std::string escaped(const std::string& text);

/// The environment variable when it is an absolute path.
[[nodiscard]] std::optional<std::string> absoluteVariable(const char* name);

}  // namespace kestrune::probe
