#include "platform/WalkTally.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrune {
namespace {

TEST(WalkTally, talliesOfSeveralThreadsAddUp) {
    WalkTally one(2);
    one.entries.add(3);
    one.bytes.add(100);
    one.files = 2;
    one.links = 1;
    one.offerFile(60, "folder", "a");
    one.offerFile(40, "", "b");
    WalkTally other(2);
    other.entries.add(4);
    other.bytes.add(50);
    other.files = 1;
    other.elsewhere = 2;
    other.unreadable = 1;
    other.offerFile(50, "folder/inner", "c");
    TreeWalk found;
    LargestItems largest(2);
    addTally(one, found, largest);
    addTally(other, found, largest);
    EXPECT_EQ(7, found.entries);
    EXPECT_EQ(150, found.bytes);
    EXPECT_EQ(3, found.files);
    EXPECT_EQ(1, found.links);
    EXPECT_EQ(2, found.elsewhere);
    EXPECT_EQ(1, found.unreadable);
    EXPECT_EQ((std::vector<WalkedItem>{{"folder/a", 60, false}, {"folder/inner/c", 50, false}}), largest.takeSorted());
}

TEST(WalkTallyDeathTest, aTotalBeyondTheRangeEndsTheProgram) {
    WatchedNumber number;
    number.add(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(std::numeric_limits<std::int64_t>::max(), number.value());
    EXPECT_DEATH(number.add(1), "");
}

}  // namespace
}  // namespace kestrune
