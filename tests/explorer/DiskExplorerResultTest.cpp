#include "explorer/DiskExplorerResult.h"

#include <gtest/gtest.h>

namespace kestrune {

TEST(DiskExplorerResult, theEmptyResultHoldsNothing) {
    const DiskExplorerResult result;
    EXPECT_TRUE(result.folders.empty());
    EXPECT_TRUE(result.largestFiles.empty());
    EXPECT_EQ(result.inspectedFiles, 0);
    EXPECT_EQ(result.skippedLocations, 0);
    EXPECT_FALSE(result.stopped);
    EXPECT_FALSE(result.limitReached);
    EXPECT_EQ(result.totalBytes(), 0);
    EXPECT_EQ(result.measuredBytes(), 0);
}

TEST(DiskExplorerResult, theTotalIsTheSumOverItsFolders) {
    DiskExplorerResult result;
    result.folders = {{"/a", 30, true}, {"/b", 12, false}};
    result.largestFiles = {{"/a/x", 29, false}};
    EXPECT_EQ(result.totalBytes(), 42);
}

TEST(DiskExplorerResult, whatTheListLeavesOutWasMeasuredToo) {
    DiskExplorerResult result;
    result.folders = {{"/a", 30, true}};
    result.otherItems = 2;
    result.otherBytes = 12;
    EXPECT_EQ(result.totalBytes(), 30);
    EXPECT_EQ(result.measuredBytes(), 42);
}

}  // namespace kestrune
