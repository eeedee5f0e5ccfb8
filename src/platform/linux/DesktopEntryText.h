#pragma once

#include <string_view>

namespace kestrune {

/// A line, a key or a value of a .desktop file without the blanks around it, which the Desktop Entry Specification has
/// readers ignore.
[[nodiscard]] inline std::string_view withoutBlanksAround(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace kestrune
