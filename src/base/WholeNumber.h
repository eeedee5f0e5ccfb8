#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace kestrune {

/// All of text as one number, without blanks or a "+"; nothing when it is none, or one that Number does not hold.
template <typename Number>
[[nodiscard]] std::optional<Number> wholeNumber(std::string_view text, int base = 10) {
    const char* const last = text.data() + text.size();
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), last, value, base);
    return error == std::errc{} && end == last ? std::optional(value) : std::nullopt;
}

}  // namespace kestrune
