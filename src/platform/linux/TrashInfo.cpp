#include "platform/linux/TrashInfo.h"

#include <array>
#include <vector>

#include "base/Text.h"

namespace kestrune {

namespace {

constexpr std::string_view firstLine = "[Trash Info]";
constexpr std::string_view pathKey = "Path=";
constexpr std::string_view dateKey = "\nDeletionDate=";
constexpr std::size_t dateLength = std::string_view("2026-01-31T23:59:59").size();

bool staysPlain(unsigned char byte) {
    const bool letter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    const bool digit = byte >= '0' && byte <= '9';
    return letter || digit || std::string_view("-._~/").find(static_cast<char>(byte)) != std::string_view::npos;
}

std::string recordUpTo(std::string_view originalPath) {
    std::string text(firstLine);
    text += '\n';
    text += pathKey;
    text += percentEncoded(originalPath);
    text += dateKey;
    return text;
}

std::optional<unsigned char> hexDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return static_cast<unsigned char>(digit - '0');
    }
    const char small = static_cast<char>(digit | 0x20);
    if (small >= 'a' && small <= 'f') {
        return static_cast<unsigned char>(small - 'a' + 10);
    }
    return std::nullopt;
}

/// Nothing for an escape that is none, for NUL, and for a control character that is not escaped.
std::optional<std::string> percentDecoded(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            const auto byte = static_cast<unsigned char>(text[i]);
            if (byte < ' ' || byte == 0x7FU) {
                return std::nullopt;
            }
            bytes.push_back(text[i]);
            continue;
        }
        const auto high = i + 2 < text.size() ? hexDigit(text[i + 1]) : std::nullopt;
        const auto low = high ? hexDigit(text[i + 2]) : std::nullopt;
        if (!low || (*high == 0 && *low == 0)) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<char>(*high * 16 + *low));
        i += 2;
    }
    return bytes;
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The first bytes of name, at most length of them, without the beginning of a character that would be cut in two.
std::string_view cutBetweenCharacters(std::string_view name, std::size_t length) {
    if (name.size() <= length) {
        return name;
    }
    constexpr std::size_t longestCharacter = 4;
    std::size_t end = length;
    while (end > 0 && length - end < longestCharacter && continuesCharacter(name[end])) {
        --end;
    }
    return name.substr(0, continuesCharacter(name[end]) || end == 0 ? length : end);
}

}  // namespace

std::string percentEncoded(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    encoded.reserve(bytes.size());
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        if (staysPlain(byte)) {
            encoded.push_back(character);
        } else {
            encoded.push_back('%');
            encoded.push_back(digits[byte >> 4U]);
            encoded.push_back(digits[byte & 0x0FU]);
        }
    }
    return encoded;
}

std::string trashInfoText(std::string_view originalPath, const std::tm& deleted) {
    std::array<char, dateLength + 1> date = {};
    const std::size_t length = std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &deleted);
    std::string text = recordUpTo(originalPath);
    text.append(date.data(), length);
    text += '\n';
    return text;
}

bool isTrashInfoOf(std::string_view text, std::string_view originalPath) {
    const std::string beginning = recordUpTo(originalPath);
    return text.starts_with(beginning) && text.size() == beginning.size() + dateLength + 1 && text.ends_with('\n');
}

std::optional<std::string> originalPathIn(std::string_view text) {
    std::vector<std::string> lines = split(text, '\n');
    // What follows the last line break is no whole line.
    lines.pop_back();
    if (lines.empty() || lines.front() != firstLine) {
        return std::nullopt;
    }
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with(pathKey); });
    return lines.size() == 1 ? percentDecoded(std::string_view(lines.front()).substr(pathKey.size())) : std::nullopt;
}

std::string trashName(std::string_view leaf, unsigned attempt, std::size_t longestName) {
    const std::string number = attempt == 0 ? std::string() : "." + std::to_string(attempt + 1);
    const std::size_t added = number.size() + trashInfoSuffix.size();
    const std::size_t room = longestName > added ? longestName - added : 0;
    return std::string(cutBetweenCharacters(leaf, room)) + number;
}

}  // namespace kestrune
