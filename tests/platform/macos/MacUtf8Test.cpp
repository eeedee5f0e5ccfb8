#include "platform/macos/MacUtf8.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(MacUtf8Test, wellFormedTextStaysAsItIs) {
    for (const std::string& text : {std::string(), std::string("Käse 🧹"), std::string("a\0b", 3)}) {
        EXPECT_EQ(MacUtf8::wellFormed(text), text);
    }
}

TEST(MacUtf8Test, eachByteThatIsNoUtf8ShowsAsAReplacement) {
    EXPECT_EQ(MacUtf8::wellFormed("a\xFF\xFE"
                                  "b"),
              "a\uFFFD\uFFFDb");
    EXPECT_EQ(MacUtf8::wellFormed("cut \xF0\x9F\xA7"), "cut \uFFFD\uFFFD\uFFFD");
}

TEST(MacUtf8Test, halfOfASurrogatePairIsNoUtf8) {
    EXPECT_EQ(MacUtf8::wellFormed("\xED\xA0\x80."), "\uFFFD\uFFFD\uFFFD.");
}

}  // namespace
}  // namespace kestrune
