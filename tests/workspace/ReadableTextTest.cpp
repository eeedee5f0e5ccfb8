#include "workspace/ReadableText.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/Text.h"

namespace kestrune {

TEST(ReadableText, ordinaryTextStaysAsItIs) {
    for (const std::string text : {"Firefox", "Größe – 図 🧹", "מסמכים", "a & <b>", ""}) {
        EXPECT_EQ(ReadableText::visible(text), text);
        EXPECT_EQ(ReadableText::name(text), text);
    }
}

TEST(ReadableText, controlCharactersBecomeTheirPictures) {
    EXPECT_EQ(ReadableText::visible("a\nb\rc\td\x1B[31m\x7F"), "a␊b␍c␉d␛[31m␡");
    EXPECT_EQ(ReadableText::visible(std::string_view("\0x", 2)), "␀x");
    EXPECT_EQ(ReadableText::visible("\x1F "), "␟ ");
}

TEST(ReadableText, laterControlsAndLineSeparatorsAreReplaced) {
    EXPECT_EQ(ReadableText::visible("a\u0085b\u0080c\u009Fd\u00A0e"), "a�b�c�d\u00A0e");
    EXPECT_EQ(ReadableText::visible("a\u2028b\u2029c"), "a�b�c");
}

TEST(ReadableText, marksThatTurnTheWritingDirectionAreReplaced) {
    EXPECT_EQ(ReadableText::visible("a\u202Egpj.exe\u202C"), "a�gpj.exe�");
    EXPECT_EQ(ReadableText::visible("\u2066a\u2069\u200F\u200E\u061C"), "�a����");
    EXPECT_EQ(ReadableText::visible("\u2010\u2027\u2030\u205E"), "\u2010\u2027\u2030\u205E");
}

TEST(ReadableText, charactersThatShowNothingAreReplaced) {
    for (const std::string_view hidden :
         {"\u00AD", "\u034F", "\u115F",     "\u1160",     "\u17B4",     "\u180E",     "\u200B",    "\u200C",
          "\u200D", "\u2060", "\u2064",     "\u206F",     "\u3164",     "\uFE00",     "\uFE0F",    "\uFEFF",
          "\uFFA0", "\uFFF9", "\U0001D173", "\U000E0000", "\U000E0041", "\U000E007F", "\U000E0100"}) {
        EXPECT_EQ(ReadableText::visible("Fire" + std::string(hidden) + "fox"), "Fire�fox");
        EXPECT_FALSE(ReadableText::hasVisible(hidden));
    }
    for (const std::string_view kept : {"\u00AC", "\u00AE", "\u0350", "\u3165", "\uFE10", "\uFF9F", "\U000E1000"}) {
        EXPECT_EQ(ReadableText::visible(kept), kept);
        EXPECT_TRUE(ReadableText::hasVisible(kept));
    }
}

TEST(ReadableText, onlyWhatLeavesAMarkIsVisible) {
    EXPECT_FALSE(ReadableText::hasVisible(""));
    EXPECT_FALSE(ReadableText::hasVisible(" \t\n\x7F\u00A0\u2003\u3000\u2800"));
    EXPECT_FALSE(ReadableText::hasVisible("\u202E\u2066\u0085\u2028\xFF"));
    EXPECT_TRUE(ReadableText::hasVisible(" \u200B."));
    EXPECT_TRUE(ReadableText::hasVisible("図"));
}

TEST(ReadableText, aProcessWithoutAVisibleNameGoesByItsExecutableOrItsIdentifier) {
    EXPECT_EQ(ReadableText::processName("Firefox", "/opt/firefox/firefox-bin", 7), "Firefox");
    EXPECT_EQ(ReadableText::processName("\u200B\u2060\uFEFF", "/opt/firefox/firefox-bin", 7), "firefox-bin");
    EXPECT_EQ(ReadableText::processName("", "/opt/\u3164", 7), "PID 7");
    EXPECT_EQ(ReadableText::processName(" ", "", 7), "PID 7");
}

TEST(ReadableText, bytesThatAreNotTextAreReplaced) {
    EXPECT_EQ(ReadableText::visible("a\xFFz\xC3"), "a�z�");
    EXPECT_TRUE(isValidUtf8(ReadableText::name(std::string(5000, '\xE2'))));
}

TEST(ReadableText, longTextLosesItsMiddle) {
    EXPECT_EQ(ReadableText::elided("abcdefghij", 10), "abcdefghij");
    EXPECT_EQ(ReadableText::elided("abcdefghijk", 10), "abcde…hijk");
    EXPECT_EQ(ReadableText::elided("äöüßéèêëñçø", 5), "äö…çø");
    EXPECT_EQ(ReadableText::elided("abcdef", 3), "a…f");
}

TEST(ReadableText, aNameHasAtMostTwoHundredCharacters) {
    const std::string exact(200, 'x');
    EXPECT_EQ(ReadableText::name(exact), exact);
    const std::string longName = "begin" + std::string(10'000, '\n') + "end";
    const std::string shown = ReadableText::name(longName);
    EXPECT_EQ(characterCount(shown), 200U);
    EXPECT_TRUE(shown.starts_with("begin␊"));
    EXPECT_TRUE(shown.ends_with("␊end"));
}

TEST(ReadableText, aPathBelowHomeIsShortened) {
    EXPECT_EQ(ReadableText::path("/home/anna/shop", "/home/anna"), "~/shop");
    EXPECT_EQ(ReadableText::path("/home/anna", "/home/anna"), "~");
    EXPECT_EQ(ReadableText::path("/home/annabel/a\nb", "/home/anna"), "/home/annabel/a␊b");
    EXPECT_EQ(characterCount(ReadableText::path("/" + std::string(4000, 'x'), "/home/anna")), 300U);
}

TEST(ReadableText, aDurationShowsItsTwoLargestUnits) {
    EXPECT_EQ(ReadableText::duration(0), "0 s");
    EXPECT_EQ(ReadableText::duration(45), "45 s");
    EXPECT_EQ(ReadableText::duration(59), "59 s");
    EXPECT_EQ(ReadableText::duration(60), "1 min");
    EXPECT_EQ(ReadableText::duration(3599), "59 min");
    EXPECT_EQ(ReadableText::duration(3600), "1 h");
    EXPECT_EQ(ReadableText::duration(3 * 3600 + 12 * 60 + 59), "3 h 12 min");
    EXPECT_EQ(ReadableText::duration(86'399), "23 h 59 min");
    EXPECT_EQ(ReadableText::duration(86'400), "1 d");
    EXPECT_EQ(ReadableText::duration(2 * 86'400 + 4 * 3600 + 3599), "2 d 4 h");
}

TEST(ReadableText, aClockThatWentBackwardsGivesNoNegativeDuration) {
    EXPECT_EQ(ReadableText::duration(-5), "0 s");
    EXPECT_EQ(ReadableText::duration(std::numeric_limits<std::int64_t>::min()), "0 s");
    EXPECT_EQ(ReadableText::duration(std::numeric_limits<std::int64_t>::max()), "106751991167300 d 15 h");
}

}  // namespace kestrune
