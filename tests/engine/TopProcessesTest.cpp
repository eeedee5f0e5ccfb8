#include "engine/TopProcesses.h"

#include <gtest/gtest.h>

namespace kestrune::TopProcesses {
namespace {

using Rows = std::vector<TopProcess>;

TEST(TopProcesses, largestComesFirstAndEqualOnesKeepTheirOrder) {
    EXPECT_EQ(parse("%MEM COMMAND\n 0.5 busy\n12.0 big\n 0.5 second\n 3.1 middle\n 0.5 third\n"),
              (Rows{{12.0, "big"}, {3.1, "middle"}, {0.5, "busy"}, {0.5, "second"}, {0.5, "third"}}));
}

TEST(TopProcesses, nameIsCutAtItsFirstSpace) {
    EXPECT_EQ(parse("%MEM COMM\n 4.2 Google Chrome Helper\n"), (Rows{{4.2, "Google"}}));
}

TEST(TopProcesses, malformedLinesAreSkipped) {
    EXPECT_EQ(parse("%MEM COMM\n5.0 a\n4.0\n\n- dash\n1,5 comma\n3.0x odd\nnan none\n   \n2.0 b\n"),
              (Rows{{5.0, "a"}, {2.0, "b"}}));
}

TEST(TopProcesses, anyWhiteSpaceSeparates) {
    EXPECT_EQ(parse("H\n\t1.5\t \tname\r\n"), (Rows{{1.5, "name"}}));
}

TEST(TopProcesses, headerAloneOrNothingIsEmpty) {
    EXPECT_TRUE(parse("").empty());
    EXPECT_TRUE(parse("9.9 looks-like-a-row").empty());
    EXPECT_TRUE(parse("%MEM COMMAND\n").empty());
}

TEST(TopProcesses, firstLineIsAHeaderWhateverItSays) {
    EXPECT_EQ(parse("9.9 header\n1.0 row"), (Rows{{1.0, "row"}}));
}

}  // namespace
}  // namespace kestrune::TopProcesses
