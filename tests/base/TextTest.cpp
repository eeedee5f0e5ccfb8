#include "base/Text.h"

#include <gtest/gtest.h>

namespace kestrune {

TEST(Text, plainAndAccentedTextIsValidUtf8) {
    EXPECT_TRUE(isValidUtf8(""));
    EXPECT_TRUE(isValidUtf8("plain"));
    EXPECT_TRUE(isValidUtf8("you’ve — 🧹"));
    EXPECT_TRUE(isValidUtf8(std::string_view("\0", 1)));
    EXPECT_TRUE(isValidUtf8("\xF4\x8F\xBF\xBF"));  // U+10FFFF
}

TEST(Text, malformedSequencesAreNotValidUtf8) {
    EXPECT_FALSE(isValidUtf8("\x80"));              // continuation alone
    EXPECT_FALSE(isValidUtf8("\xC0\xAF"));          // overlong
    EXPECT_FALSE(isValidUtf8("\xE0\x80\xAF"));      // overlong
    EXPECT_FALSE(isValidUtf8("\xED\xA0\x80"));      // surrogate
    EXPECT_FALSE(isValidUtf8("\xF4\x90\x80\x80"));  // above U+10FFFF
    EXPECT_FALSE(isValidUtf8("\xE2\x82"));          // cut short
    EXPECT_FALSE(isValidUtf8("\xE2\x28\xA1"));      // second byte of the wrong kind
}

TEST(Text, onlyAsciiLettersAreLowered) {
    EXPECT_EQ(lowerCased("LM Studio É"), "lm studio É");
}

TEST(Text, charactersAreCountedNotBytes) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("né"), 2U);
    EXPECT_EQ(characterCount("🧹"), 1U);
}

TEST(Text, eachByteOutsideOfUtf8CountsAsOneCharacter) {
    EXPECT_EQ(characterCount("a\xFF\xFE"
                             "b"),
              4U);
    EXPECT_EQ(characterCount("\xE2\x82"), 2U);
}

TEST(Text, splitKeepsEmptyPieces) {
    EXPECT_EQ(split("a//b/", '/'), (std::vector<std::string>{"a", "", "b", ""}));
    EXPECT_EQ(split("", '/'), (std::vector<std::string>{""}));
}

TEST(Text, splitAtWhiteSpaceHasNoEmptyPieces) {
    EXPECT_EQ(splitAtWhiteSpace("  12\t34\n56 "), (std::vector<std::string>{"12", "34", "56"}));
    EXPECT_TRUE(splitAtWhiteSpace(" \n").empty());
}

TEST(Text, joinedPutsTheSeparatorBetweenOnly) {
    EXPECT_EQ(joined({"Xcode", "Simulator"}, ", "), "Xcode, Simulator");
    EXPECT_EQ(joined({}, ", "), "");
    EXPECT_EQ(joined({"", ""}, ","), ",");
}

TEST(Text, theLastPathComponentFollowsTheLastSlash) {
    EXPECT_EQ(lastPathComponent("/home/anna/.npm"), ".npm");
    EXPECT_EQ(lastPathComponent("name"), "name");
    EXPECT_EQ(lastPathComponent("/home/"), "");
}

TEST(Text, aTextIsTakenApartByCharactersAndByBytesThatAreNone) {
    EXPECT_EQ(firstCharacter("abc"), "a");
    EXPECT_EQ(firstCharacter("图标"), "图");
    EXPECT_EQ(firstCharacter("\xE5\x9B"), "\xE5");
    EXPECT_EQ(firstCharacter("\xFFz"), "\xFF");
}

TEST(Text, aCharacterHasItsCodePoint) {
    EXPECT_EQ(codePoint("A"), U'A');
    EXPECT_EQ(codePoint("é"), U'\u00E9');
    EXPECT_EQ(codePoint("图"), U'\u56FE');
    EXPECT_EQ(codePoint("🧹"), U'\U0001F9F9');
}

TEST(Text, pathsThatDifferByTrailingSlashOrDotSegmentsAreEqualWhenStandardized) {
    EXPECT_EQ(standardizedPath("/home/anna/.npm/_cacache/"), "/home/anna/.npm/_cacache");
    EXPECT_EQ(standardizedPath("/home/./anna//.npm/./_cacache"), "/home/anna/.npm/_cacache");
    EXPECT_EQ(standardizedPath("/home/bert/../anna"), "/home/anna");
}

TEST(Text, standardizingNeverClimbsAboveTheRoot) {
    EXPECT_EQ(standardizedPath("/../../etc"), "/etc");
    EXPECT_EQ(standardizedPath("/.."), "/");
    EXPECT_EQ(standardizedPath("/"), "/");
}

TEST(Text, standardizingKeepsTheStepsUpOfARelativePath) {
    EXPECT_EQ(standardizedPath("../a/./b/"), "../a/b");
}

TEST(Text, standardizingDoesNotFoldCaseAndKeepsForeignBytes) {
    EXPECT_EQ(standardizedPath("/Home/\xFF/"), "/Home/\xFF");
}

}  // namespace kestrune
