#include "base/CharacterKind.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>

#include "base/Text.h"

namespace kestrune {

TEST(CharacterKind, lettersDigitsAndPicturesLeaveAMark) {
    for (const std::string_view character : {"a", "~", "!", "0", "ß", "図", "מ", "🧹"}) {
        EXPECT_TRUE(leavesAMark(character)) << character;
        EXPECT_FALSE(isDisturbing(character)) << character;
    }
}

TEST(CharacterKind, whiteSpaceDisturbsNobodyAndLeavesNoMark) {
    for (const std::string_view character : {" ", "\u00A0", "\u2003", "\u202F", "\u3000", "\u2800"}) {
        EXPECT_FALSE(leavesAMark(character)) << character;
        EXPECT_FALSE(isDisturbing(character)) << character;
    }
}

TEST(CharacterKind, controlsMarksOfDirectionAndHiddenCharactersDisturb) {
    for (const auto character : std::initializer_list<std::string_view>{
             "\n", "\t", "\x1B", "\x7F", "\u0085", "\u2028", firstCharacter("\u202Ea\u202C"),
             firstCharacter("\u2066a\u2069"), "\u200F", "\u200B", "\uFEFF", "\u00AD"}) {
        EXPECT_TRUE(isDisturbing(character));
        EXPECT_FALSE(leavesAMark(character));
    }
    EXPECT_TRUE(isDisturbing(std::string_view("\0", 1)));
}

TEST(CharacterKind, aByteThatIsNotUtf8Disturbs) {
    EXPECT_TRUE(isDisturbing("\xFF"));
    EXPECT_TRUE(isDisturbing("\x80"));
    EXPECT_FALSE(leavesAMark("\xC3"));
}

}  // namespace kestrune
