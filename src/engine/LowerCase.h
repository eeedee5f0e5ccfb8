#pragma once

#include <string>
#include <string_view>

namespace kestrune {

/// text with every letter in lower case, whatever its script and the user's locale: the mapping of each character by
/// itself from the Unicode Character Database. Bytes that are no UTF-8 stay as they are. Pure.
[[nodiscard]] std::string lowerCasedInAnyScript(std::string_view text);

}  // namespace kestrune
