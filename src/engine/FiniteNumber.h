#pragma once

#include <optional>
#include <string>

namespace kestrune {

/// The whole of text as a finite decimal number with a "." whatever the user's locale; nothing for any other text.
/// Pure.
[[nodiscard]] std::optional<double> finiteNumber(const std::string& text);

}  // namespace kestrune
