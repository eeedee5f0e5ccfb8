#include "ui/UiText.h"

#include <gtest/gtest.h>

namespace kestrune {

TEST(UiText, bytesThatAreNoTextStayVisible) {
    EXPECT_EQ(shown("a\xFF"
                    "b"),
              QStringLiteral("a\uFFFDb"));
}

TEST(UiText, foreignNameKeepsToOneLine) {
    EXPECT_EQ(shown("a\nb\tc"), QStringLiteral("a b c"));
}

TEST(UiText, ampersandIsDoubledWhereItWouldMarkAMnemonic) {
    EXPECT_EQ(withoutMnemonic(QStringLiteral("Build & Package")), QStringLiteral("Build && Package"));
}

}  // namespace kestrune
