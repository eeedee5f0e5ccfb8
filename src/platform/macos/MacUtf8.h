#pragma once

#include <string>
#include <string_view>

namespace kestrune::MacUtf8 {

/// text as well-formed UTF-8: U+FFFD stands for each byte that is not part of it. Pure.
[[nodiscard]] std::string wellFormed(std::string_view text);

}  // namespace kestrune::MacUtf8
