#include "base/CharacterKind.h"

#include <algorithm>
#include <array>
#include <span>

#include "base/Text.h"

namespace kestrune {

namespace {

/// Code points from first to last.
struct Range {
    char32_t first;
    char32_t last;
};

using Ranges = std::span<const Range>;

// C1 controls, the separators and marks of UAX #9 that break a line or turn the direction of what follows, and whatever
// Unicode calls default ignorable: none of them shows, and some change how their neighbours look.
constexpr std::array<Range, 18> disturbing{{{0x80, 0x9F},
                                            {0xAD, 0xAD},
                                            {0x34F, 0x34F},
                                            {0x61C, 0x61C},
                                            {0x115F, 0x1160},
                                            {0x17B4, 0x17B5},
                                            {0x180B, 0x180F},
                                            {0x200B, 0x200F},
                                            {0x2028, 0x202E},
                                            {0x2060, 0x206F},
                                            {0x3164, 0x3164},
                                            {0xFE00, 0xFE0F},
                                            {0xFEFF, 0xFEFF},
                                            {0xFFA0, 0xFFA0},
                                            {0xFFF0, 0xFFFB},
                                            {0x1BCA0, 0x1BCA3},
                                            {0x1D173, 0x1D17A},
                                            {0xE0000, 0xE0FFF}}};

// White space outside of ASCII, and the Braille pattern without dots.
constexpr std::array<Range, 7> blank{{{0xA0, 0xA0},
                                      {0x1680, 0x1680},
                                      {0x2000, 0x200A},
                                      {0x202F, 0x202F},
                                      {0x205F, 0x205F},
                                      {0x2800, 0x2800},
                                      {0x3000, 0x3000}}};

bool isAmong(Ranges ranges, std::string_view character) {
    const char32_t point = codePoint(character);
    return std::any_of(ranges.begin(), ranges.end(),
                       [point](const Range& range) { return range.first <= point && point <= range.last; });
}

bool isAsciiControl(char c) {
    return (c >= '\0' && c < ' ') || c == '\x7F';
}

}  // namespace

bool isDisturbing(std::string_view character) {
    if (character.size() > 1) {
        return isAmong(disturbing, character);
    }
    return isAsciiControl(character.front()) || !isValidUtf8(character);
}

bool leavesAMark(std::string_view character) {
    return !isDisturbing(character) && character != " " && (character.size() == 1 || !isAmong(blank, character));
}

}  // namespace kestrune
