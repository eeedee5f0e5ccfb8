#pragma once

#include <string>

namespace kestrune::probe {

/// The items of an appcast as a JSON array; an object with the sentence under "error" when it cannot be read.
[[nodiscard]] std::string feedJson(const std::string& appcast);

}  // namespace kestrune::probe
