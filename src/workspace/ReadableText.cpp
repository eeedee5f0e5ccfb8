#include "workspace/ReadableText.h"

#include <algorithm>
#include <vector>

#include "base/CharacterKind.h"
#include "base/Localized.h"
#include "base/Text.h"
#include "workspace/StorageListing.h"

namespace kestrune::ReadableText {

namespace {

constexpr std::size_t nameLimit = 200;
constexpr std::size_t pathLimit = 300;
constexpr std::string_view ellipsis = "…";
constexpr std::string_view replacement = "\uFFFD";

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> result;
    while (!text.empty()) {
        result.push_back(firstCharacter(text));
        text.remove_prefix(result.back().size());
    }
    return result;
}

void appendVisible(std::string& result, std::string_view character) {
    const char first = character.front();
    if (character.size() > 1) {
        result += isDisturbing(character) ? replacement : character;
    } else if (first >= '\0' && first < ' ') {
        result += {'\xE2', '\x90', static_cast<char>('\x80' + first)};  // U+2400 and the control's own number
    } else if (first == '\x7F') {
        result += "\u2421";
    } else {
        result += isValidUtf8(character) ? character : replacement;
    }
}

std::string inUnit(const char* unit, std::int64_t count) {
    return localized(unit, {std::to_string(count)});
}

std::string inUnits(const char* largeUnit, std::int64_t large, const char* smallUnit, std::int64_t small) {
    return inUnit(largeUnit, large) + (small == 0 ? "" : " " + inUnit(smallUnit, small));
}

}  // namespace

std::string visible(std::string_view text) {
    std::string result;
    for (const auto character : characters(text)) {
        appendVisible(result, character);
    }
    return result;
}

bool hasVisible(std::string_view text) {
    const auto all = characters(text);
    return std::any_of(all.begin(), all.end(), leavesAMark);
}

std::string processName(std::string_view name, std::string_view executable, std::int32_t pid) {
    if (hasVisible(name)) {
        return std::string(name);
    }
    const std::string file = lastPathComponent(executable);
    return hasVisible(file) ? file : localized("PID %1", {std::to_string(pid)});
}

std::string elided(std::string_view text, std::size_t limit) {
    const auto all = characters(text);
    if (all.size() <= limit) {
        return std::string(text);
    }
    const std::size_t tail = (limit - 1) / 2;
    std::size_t headBytes = 0;
    std::size_t tailBytes = 0;
    for (std::size_t i = 0; i < limit - 1 - tail; ++i) {
        headBytes += all[i].size();
    }
    for (std::size_t i = all.size() - tail; i < all.size(); ++i) {
        tailBytes += all[i].size();
    }
    return std::string(text.substr(0, headBytes)).append(ellipsis).append(text.substr(text.size() - tailBytes));
}

std::string name(std::string_view text) {
    return visible(elided(text, nameLimit));
}

std::string path(const std::string& path, const std::string& home) {
    return visible(elided(abbreviatedPath(path, home), pathLimit));
}

std::string duration(std::int64_t seconds) {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 60 * minute;
    constexpr std::int64_t day = 24 * hour;
    if (seconds < minute) {
        return inUnit(localizable("%1 s"), std::max<std::int64_t>(seconds, 0));
    }
    if (seconds < hour) {
        return inUnit(localizable("%1 min"), seconds / minute);
    }
    if (seconds < day) {
        return inUnits(localizable("%1 h"), seconds / hour, localizable("%1 min"), seconds % hour / minute);
    }
    return inUnits(localizable("%1 d"), seconds / day, localizable("%1 h"), seconds % day / hour);
}

}  // namespace kestrune::ReadableText
