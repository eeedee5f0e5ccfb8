#include "base/Text.h"

#include <algorithm>
#include <cstdint>

namespace kestrune {

namespace {

// Length of the well-formed UTF-8 sequence at the front of text (not empty), or 0.
std::size_t sequenceLength(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    // The second byte's range is narrower after four lead bytes: RFC 3629, section 4.
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || text.size() < length) {
        return 0;
    }
    const std::uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < lowest || byte(1) > highest) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    return length;
}

bool isWhiteSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

}  // namespace

bool isValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string lowerCased(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

std::string_view firstCharacter(std::string_view text) {
    return text.substr(0, std::max<std::size_t>(sequenceLength(text), 1));
}

char32_t codePoint(std::string_view character) {
    if (character.size() == 1) {
        return static_cast<std::uint8_t>(character.front());
    }
    // The lead byte keeps 7 - size bits of its own, each other byte 6: RFC 3629, section 3.
    char32_t result = static_cast<std::uint8_t>(character.front()) & (0x7FU >> character.size());
    for (const char byte : character.substr(1)) {
        result = (result << 6U) | (static_cast<std::uint8_t>(byte) & 0x3FU);
    }
    return result;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    while (!text.empty()) {
        text.remove_prefix(firstCharacter(text).size());
        ++count;
    }
    return count;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator, start)) {
        pieces.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    pieces.emplace_back(text.substr(start));
    return pieces;
}

std::vector<std::string> splitAtWhiteSpace(std::string_view text) {
    std::vector<std::string> pieces;
    auto at = text.begin();
    while (true) {
        at = std::find_if_not(at, text.end(), isWhiteSpace);
        if (at == text.end()) {
            return pieces;
        }
        const auto end = std::find_if(at, text.end(), isWhiteSpace);
        pieces.emplace_back(at, end);
        at = end;
    }
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        result.append(i == 0 ? std::string_view{} : separator).append(pieces[i]);
    }
    return result;
}

std::string lastPathComponent(std::string_view path) {
    return std::string(path.substr(path.rfind('/') + 1));
}

std::string standardizedPath(std::string_view path) {
    std::vector<std::string> kept;
    for (auto& component : split(path, '/')) {
        if (component.empty() || component == ".") {
            continue;
        }
        if (component == ".." && path.starts_with('/')) {
            if (!kept.empty()) {
                kept.pop_back();
            }
            continue;
        }
        kept.push_back(std::move(component));
    }
    return (path.starts_with('/') ? "/" : "") + joined(kept, "/");
}

}  // namespace kestrune
