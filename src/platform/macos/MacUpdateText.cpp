#include "platform/macos/MacUpdateText.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/CharacterKind.h"
#include "base/Text.h"

namespace kestrune::MacUpdateText {

namespace {

constexpr std::size_t charactersOfAVersion = 64;
constexpr std::size_t charactersOfADescription = 500;

/// text as one line of at most so many characters that shows what it says: white space becomes one space, and what must
/// not stand in a sentence goes.
std::string plainLine(std::string_view text, std::size_t charactersAtMost) {
    constexpr std::string_view lineBreaksAndTabs = "\n\r\t\v\f";
    std::string line;
    std::string gap;
    std::size_t characters = 0;
    for (; !text.empty(); text.remove_prefix(firstCharacter(text).size())) {
        const std::string_view character = firstCharacter(text);
        if (leavesAMark(character)) {
            characters += gap.size() + 1;
            if (characters > charactersAtMost) {
                break;
            }
            line += gap;
            line += character;
            gap.clear();
        } else if (!line.empty() &&
                   (!isDisturbing(character) || lineBreaksAndTabs.find(character) != std::string::npos)) {
            gap = " ";
        }
    }
    return line;
}

bool endsASentence(std::string_view text) {
    constexpr std::array<std::string_view, 7> ends{".", "!", "?", "…", "。", "！", "？"};
    return std::any_of(ends.begin(), ends.end(), [text](std::string_view end) { return text.ends_with(end); });
}

int codeOf(std::int64_t number) {
    constexpr std::int64_t numbersOfAGroup = 1000;
    if (number == UpdaterError::noUpdate) {
        return UpdaterError::noUpdate;
    }
    switch (number / numbersOfAGroup) {
        case 1:
            return UpdaterError::feed;
        case 2:
            return UpdaterError::network;
        case 3:
            return UpdaterError::signature;
        case 4:
            return UpdaterError::install;
        default:
            return std::in_range<int>(number) ? static_cast<int>(number) : 0;
    }
}

}  // namespace

bool isConfigured(std::string_view feedUrl, std::string_view publicKey) {
    return !feedUrl.empty() && !publicKey.empty();
}

UpdateItem item(const std::string& version, const std::string& displayVersion) {
    UpdateItem item;
    item.version = version;
    item.displayVersion = plainLine(displayVersion, charactersOfAVersion);
    if (item.displayVersion.empty()) {
        item.displayVersion = plainLine(version, charactersOfAVersion);
    }
    return item;
}

std::optional<UpdateChoice> choice(std::int64_t number) {
    switch (number) {
        case skipNumber:
            return UpdateChoice::skip;
        case installNumber:
            return UpdateChoice::install;
        case dismissNumber:
            return UpdateChoice::dismiss;
        default:
            return std::nullopt;
    }
}

UpdaterError error(std::int64_t number, const std::string& description) {
    std::string sentence = plainLine(description, charactersOfADescription);
    if (!sentence.empty() && !endsASentence(sentence)) {
        sentence += '.';
    }
    return {codeOf(number), std::move(sentence)};
}

}  // namespace kestrune::MacUpdateText
