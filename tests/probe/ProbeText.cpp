#include "tests/probe/ProbeText.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/Text.h"

namespace kestrune::probe {

namespace {

// Length of the character at the front of text, or 0 when its first byte is none.
std::size_t characterLength(std::string_view text) {
    for (std::size_t length = 1; length <= std::min<std::size_t>(4, text.size()); ++length) {
        if (isValidUtf8(text.substr(0, length))) {
            return length;
        }
    }
    return 0;
}

}  // namespace

std::string escaped(const std::string& text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t length = characterLength(rest);
        if (length == 0) {
            const auto byte = static_cast<std::uint8_t>(rest.front());
            result += {'%', digits[byte >> 4U], digits[byte & 0x0FU]};
        } else {
            result += rest.substr(0, length);
        }
        rest.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::optional<std::string> absoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value == '/' ? std::optional<std::string>(value) : std::nullopt;
}

}  // namespace kestrune::probe
