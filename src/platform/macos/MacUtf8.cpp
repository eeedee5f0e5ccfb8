#include "platform/macos/MacUtf8.h"

#include "base/Text.h"

namespace kestrune::MacUtf8 {

std::string wellFormed(std::string_view text) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::string_view character = firstCharacter(text);
        result += isValidUtf8(character) ? character : replacement;
        text.remove_prefix(character.size());
    }
    return result;
}

}  // namespace kestrune::MacUtf8
