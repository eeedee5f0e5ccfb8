#include "engine/LowerCase.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(LowerCase, lettersOfEveryScriptBecomeSmall) {
    EXPECT_EQ(lowerCasedInAnyScript("Google CHROME 99"), "google chrome 99");
    EXPECT_EQ(lowerCasedInAnyScript("ÜBER ÆØÅ ŁÓDŹ"), "über æøå łódź");
    EXPECT_EQ(lowerCasedInAnyScript("ΑΣ ТЕЛЕГРАМ ԱՖ"), "ασ телеграм աֆ");
    EXPECT_EQ(lowerCasedInAnyScript("ȺẞῼⱤ"), "ⱥßῳɽ");
    EXPECT_EQ(lowerCasedInAnyScript("𐐀𞤀"), "𐐨𞤢");
}

TEST(LowerCase, smallLettersAndWhatHasNoCaseStay) {
    for (const std::string text : {"straße ñ ǆ", "微信 アプリ", "🧹 63%", "÷×", "ª²"}) {
        EXPECT_EQ(lowerCasedInAnyScript(text), text);
    }
}

TEST(LowerCase, everyOtherCharacterOfAnAlternatingRunIsACapital) {
    EXPECT_EQ(lowerCasedInAnyScript("ĀāĂăĮį"), "āāăăįį");
    EXPECT_EQ(lowerCasedInAnyScript("Ÿ"), "ÿ");
}

TEST(LowerCase, signsThatAreLettersOfAnotherAlphabetBecomeThose) {
    EXPECT_EQ(lowerCasedInAnyScript("\u212Aestrune \u212B"), "kestrune å");
}

TEST(LowerCase, dottedCapitalIBecomesTwoCharacters) {
    EXPECT_EQ(lowerCasedInAnyScript("İzmir"), "i\u0307zmir");
}

TEST(LowerCase, bytesThatAreNoUtf8StayAndWhatFollowsIsRead) {
    EXPECT_EQ(lowerCasedInAnyScript("A\xC3(B\xFF\xC3\x9C\xE2\x84"), "a\xC3(b\xFF\xC3\xBC\xE2\x84");
    EXPECT_EQ(lowerCasedInAnyScript("\xED\xA0\x80X\xC3"), "\xED\xA0\x80x\xC3");
    EXPECT_EQ(lowerCasedInAnyScript(""), "");
}

}  // namespace
}  // namespace kestrune
