#include "ui/PortSearch.h"

#include <gtest/gtest.h>

#include "tests/ui/RunningItems.h"

namespace kestrune {

namespace {

const RunningItem node = runningProcess(5521, "Node", 100, {"*:3000", "127.0.0.1:9229", "[::1]:5173"});

}  // namespace

TEST(PortSearch, nothingTypedMeansEverything) {
    EXPECT_TRUE(matchesPortSearch(node, QString()));
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral("  ")));
}

TEST(PortSearch, findsAPortByItsFirstDigits) {
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral("3000")));
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral("30")));
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral(":5173")));
    EXPECT_FALSE(matchesPortSearch(node, QStringLiteral("000")));
    EXPECT_FALSE(matchesPortSearch(node, QStringLiteral("30001")));
}

TEST(PortSearch, findsAnAddress) {
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral("127.0.0.1")));
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral("[::1]")));
    EXPECT_FALSE(matchesPortSearch(node, QStringLiteral("10.0.0.1")));
}

TEST(PortSearch, findsANameWhateverItsCase) {
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral("nod")));
    EXPECT_FALSE(matchesPortSearch(node, QStringLiteral("vite")));
}

TEST(PortSearch, takesAnIdentifierOnlyAsAWhole) {
    EXPECT_TRUE(matchesPortSearch(node, QStringLiteral("5521")));
    EXPECT_FALSE(matchesPortSearch(node, QStringLiteral("552")));
}

TEST(PortSearch, aLoneColonFindsNothingByItself) {
    EXPECT_FALSE(matchesPortSearch(node, QStringLiteral(":")));
}

}  // namespace kestrune
