#pragma once

#include <string_view>

namespace kestrune {

/// Whether character, the first of a text, must not stand in a sentence of ours as it is: a control character, a
/// character that breaks a line or turns the writing direction, one that shows nothing, or a byte that is not UTF-8.
[[nodiscard]] bool isDisturbing(std::string_view character);

/// Whether character shows something: neither disturbing nor white space of any kind.
[[nodiscard]] bool leavesAMark(std::string_view character);

}  // namespace kestrune
