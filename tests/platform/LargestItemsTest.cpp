#include "platform/LargestItems.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace kestrune {
namespace {

TEST(LargestItems, keepsWhatSortingAndCuttingWouldKeep) {
    std::mt19937 random(1);
    for (std::int64_t limit = -1; limit < 12; ++limit) {
        LargestItems items(limit);
        std::vector<WalkedItem> all;
        for (int number = 0; number < 100; ++number) {
            all.push_back({std::to_string(random() % 1000) + "/" + std::to_string(number),
                           static_cast<std::int64_t>(random() % 8), false});
            items.offer(all.back());
        }
        std::sort(all.begin(), all.end(), isNamedBefore);
        const std::size_t kept = limit < 0 ? all.size() : static_cast<std::size_t>(limit);
        std::int64_t otherBytes = 0;
        for (std::size_t left = kept; left < all.size(); ++left) {
            otherBytes += all[left].bytes;
        }
        EXPECT_EQ(static_cast<std::int64_t>(all.size() - kept), items.otherItems());
        EXPECT_EQ(otherBytes, items.otherBytes());
        all.resize(kept);
        EXPECT_EQ(all, items.takeSorted());
    }
}

TEST(LargestItems, amongEqualSizesTheFirstPathByBytesIsKept) {
    LargestItems items(1);
    items.offer({"b/c", 10, false});
    EXPECT_FALSE(items.keeps(9, "a", "a"));
    EXPECT_TRUE(items.keeps(11, "z", "z"));
    EXPECT_TRUE(items.keeps(10, "b", "a"));
    EXPECT_FALSE(items.keeps(10, "b", "c"));
    EXPECT_FALSE(items.keeps(10, "b", "d"));
    EXPECT_TRUE(items.keeps(10, "", "b"));
    EXPECT_FALSE(items.keeps(10, "", "b\xFF"));
    EXPECT_FALSE(items.keeps(10, "b\xFF", "a"));
    EXPECT_TRUE(items.keeps(10, "b!", "z"));  // "!" comes before "/"
    EXPECT_FALSE(items.keeps(10, "b/c", "a"));
}

TEST(LargestItems, theLeastSizeThatCountsIsKnownOnceItIsFull) {
    LargestItems items(2);
    items.offer({"a", 5, false});
    EXPECT_EQ(0, items.leastBytes());
    items.offer({"b", 7, false});
    EXPECT_EQ(5, items.leastBytes());
    items.offer({"c", 6, false});
    EXPECT_EQ(6, items.leastBytes());
    EXPECT_FALSE(LargestItems(0).keeps(1, "", "a"));
    EXPECT_EQ(0, LargestItems(-1).leastBytes());
}

}  // namespace
}  // namespace kestrune
