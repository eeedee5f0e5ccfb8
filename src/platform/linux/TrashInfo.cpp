#include "platform/linux/TrashInfo.h"

#include <array>

namespace kestrune {

namespace {

constexpr std::string_view header = "[Trash Info]\nPath=";
constexpr std::string_view dateKey = "\nDeletionDate=";
constexpr std::size_t dateLength = std::string_view("2026-01-31T23:59:59").size();

bool staysPlain(unsigned char byte) {
    const bool letter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    const bool digit = byte >= '0' && byte <= '9';
    return letter || digit || std::string_view("-._~/").find(static_cast<char>(byte)) != std::string_view::npos;
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
    std::string text(header);
    text += percentEncoded(originalPath);
    text += dateKey;
    text.append(date.data(), length);
    text += '\n';
    return text;
}

bool isTrashInfoOf(std::string_view text, std::string_view originalPath) {
    std::string beginning(header);
    beginning += percentEncoded(originalPath);
    beginning += dateKey;
    return text.starts_with(beginning) && text.size() == beginning.size() + dateLength + 1 && text.ends_with('\n');
}

std::string trashName(std::string_view leaf, unsigned attempt, std::size_t longestName) {
    const std::string number = attempt == 0 ? std::string() : "." + std::to_string(attempt + 1);
    const std::size_t added = number.size() + trashInfoSuffix.size();
    const std::size_t room = longestName > added ? longestName - added : 0;
    return std::string(cutBetweenCharacters(leaf, room)) + number;
}

}  // namespace kestrune
