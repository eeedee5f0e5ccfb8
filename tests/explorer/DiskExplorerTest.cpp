#include "explorer/DiskExplorer.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "tests/fakes/FakeDirectoryWalker.h"
#include "tests/fakes/ManualQueues.h"

namespace kestrune {

namespace {

const std::string root = "/home/anna/code";

TreeWalk walkOf(std::int64_t entries, std::int64_t bytes) {
    TreeWalk walk;
    walk.exists = walk.opened = true;
    walk.entries = walk.files = entries;
    walk.bytes = bytes;
    return walk;
}

DiskExplorerResult scanned(FakeDirectoryWalker& walker, const std::string& folder,
                           const DiskExplorerRequest& request = {}) {
    return DiskExplorer::scan(walker, ManualClock(), folder, request);
}

}  // namespace

TEST(DiskExplorer, anEmptyFolderYieldsTheEmptyResult) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(0, 0);
    EXPECT_EQ(scanned(walker, root), DiskExplorerResult{});
}

TEST(DiskExplorer, aFolderThatDoesNotExistYieldsTheEmptyResult) {
    FakeDirectoryWalker walker;
    EXPECT_EQ(scanned(walker, root), DiskExplorerResult{});
    EXPECT_EQ(walker.measured, (std::vector<std::string>{root}));
}

TEST(DiskExplorer, aFolderThatCannotBeListedIsOneSkippedLocation) {
    FakeDirectoryWalker walker;
    walker.walks[root].exists = true;
    DiskExplorerResult expected;
    expected.skippedLocations = 1;
    EXPECT_EQ(scanned(walker, root), expected);
}

TEST(DiskExplorer, whatTheWalkFoundIsToldWithWholePaths) {
    FakeDirectoryWalker walker;
    TreeWalk& walk = walker.walks[root];
    walk = walkOf(9, 700);
    walk.files = 5;
    walk.children = {{"build", 400, true}, {".hidden", 200, false}};
    walk.otherChildren = 2;
    walk.otherBytes = 100;
    walk.largestFiles = {{"build/a/b/core", 300, false}, {".hidden", 200, false}};
    DiskExplorerResult expected;
    expected.folders = {{root + "/build", 400, true}, {root + "/.hidden", 200, false}};
    expected.largestFiles = {{root + "/build/a/b/core", 300, false}, {root + "/.hidden", 200, false}};
    expected.inspectedFiles = 9;
    expected.regularFiles = 5;
    expected.otherItems = 2;
    expected.otherBytes = 100;
    EXPECT_EQ(scanned(walker, root), expected);
}

TEST(DiskExplorer, linksOtherDrivesAndWhatCannotBeReadAreSkippedLocations) {
    FakeDirectoryWalker walker;
    TreeWalk& walk = walker.walks[root];
    walk = walkOf(1000, 0);
    walk.links = 1;
    walk.elsewhere = 20;
    walk.unreadable = 300;
    EXPECT_EQ(scanned(walker, root).skippedLocations, 321);
}

TEST(DiskExplorer, namesAreBytesAndTwoThatLookAlikeStayTwo) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(2, 2);
    walker.walks[root].children = {{"\xFE", 1, false}, {"\xFF", 1, false}};
    const auto result = scanned(walker, root);
    ASSERT_EQ(result.folders.size(), 2U);
    EXPECT_EQ(result.folders[0].path, root + "/\xFE");
    EXPECT_EQ(result.folders[1].path, root + "/\xFF");
}

TEST(DiskExplorer, theRootOfAllIsNotFollowedByASecondSlash) {
    FakeDirectoryWalker walker;
    walker.walks["/"] = walkOf(1, 5);
    walker.walks["/"].children = {{"usr", 5, true}};
    walker.walks["/"].largestFiles = {{"usr/lib", 5, false}};
    const auto result = scanned(walker, "/");
    EXPECT_EQ(result.folders, (std::vector<DiskExplorerItem>{{"/usr", 5, true}}));
    EXPECT_EQ(result.largestFiles, (std::vector<DiskExplorerItem>{{"/usr/lib", 5, false}}));
}

TEST(DiskExplorer, theFolderIsScannedUnderTheStandardFormOfItsPath) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(1, 5);
    walker.walks[root].children = {{"file", 5, false}};
    const auto result = scanned(walker, "/home//anna/./docs/../code/");
    EXPECT_EQ(result.folders, (std::vector<DiskExplorerItem>{{root + "/file", 5, false}}));
}

TEST(DiskExplorer, aPathThatIsNotAbsoluteIsNotWalked) {
    FakeDirectoryWalker walker;
    EXPECT_EQ(scanned(walker, "work"), DiskExplorerResult{});
    EXPECT_EQ(scanned(walker, ""), DiskExplorerResult{});
    EXPECT_TRUE(walker.measured.empty());
}

TEST(DiskExplorer, itsLimitsAreAQuarterMillionEntriesFiftyFilesAndFortyFiveSeconds) {
    FakeDirectoryWalker walker;
    ManualClock clock;
    static_cast<void>(DiskExplorer::scan(walker, clock, root));
    ASSERT_EQ(walker.requests.size(), 1U);
    EXPECT_EQ(walker.requests[0].entryLimit, 250'000);
    EXPECT_EQ(walker.requests[0].childLimit, -1);
    EXPECT_EQ(walker.requests[0].largestLimit, 50);
    EXPECT_EQ(DiskExplorerRequest{}.timeLimit, Seconds{45});
}

TEST(DiskExplorer, negativeLimitsMeanNoneButForTimeAndTheLargestFiles) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(3, 0);
    DiskExplorerRequest request;
    request.fileLimit = -7;
    request.folderLimit = -1;
    request.largestLimit = -1;
    request.timeLimit = Seconds{-1};
    const auto result = scanned(walker, root, request);
    EXPECT_LT(walker.requests[0].entryLimit, 0);
    EXPECT_LT(walker.requests[0].childLimit, 0);
    EXPECT_EQ(walker.requests[0].largestLimit, 0);
    EXPECT_TRUE(result.limitReached);
    EXPECT_EQ(result.inspectedFiles, 0);
}

TEST(DiskExplorer, withoutTimeNothingIsInspectedAndTheLimitIsReached) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(3, 0);
    DiskExplorerRequest request;
    request.timeLimit = Seconds::zero();
    const auto result = scanned(walker, root, request);
    EXPECT_TRUE(result.limitReached);
    EXPECT_FALSE(result.stopped);
    EXPECT_EQ(result.inspectedFiles, 0);
}

TEST(DiskExplorer, theTimeLimitIsReachedAtTheDeadlineOfTheUptime) {
    FakeDirectoryWalker walker;
    ManualClock clock;
    walker.whileMeasuring = [&clock](const std::string&) {
        clock.wall += std::chrono::hours(24);
        clock.up += Seconds{44.9};
    };
    walker.walks[root] = walkOf(3, 0);
    EXPECT_FALSE(DiskExplorer::scan(walker, clock, root).limitReached);
    walker.whileMeasuring = [&clock](const std::string&) { clock.up += Seconds{45}; };
    EXPECT_TRUE(DiskExplorer::scan(walker, clock, root).limitReached);
}

TEST(DiskExplorer, anUnlimitedTimeIsNeverUp) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(3, 0);
    DiskExplorerRequest request;
    request.timeLimit = Seconds{std::numeric_limits<double>::infinity()};
    EXPECT_FALSE(scanned(walker, root, request).limitReached);
}

TEST(DiskExplorer, eachEndOfAWalkHasItsFlag) {
    FakeDirectoryWalker walker;
    const auto flagsAt = [&walker](WalkEnd end) {
        walker.walks[root] = walkOf(2, 0);
        walker.walks[root].end = end;
        const auto result = scanned(walker, root);
        return std::pair(result.stopped, result.limitReached);
    };
    EXPECT_EQ(flagsAt(WalkEnd::finished), std::pair(false, false));
    EXPECT_EQ(flagsAt(WalkEnd::cancelled), std::pair(true, false));
    EXPECT_EQ(flagsAt(WalkEnd::entryLimit), std::pair(false, true));
    EXPECT_EQ(flagsAt(WalkEnd::timeLimit), std::pair(false, true));
}

TEST(DiskExplorer, cancellingGivesThePartialResultAsStopped) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(10, 1000);
    int asked = 0;
    DiskExplorerRequest request;
    request.cancelled = [&asked] { return ++asked == 5; };
    const auto result = scanned(walker, root, request);
    EXPECT_TRUE(result.stopped);
    EXPECT_FALSE(result.limitReached);
    EXPECT_EQ(result.inspectedFiles, 4);
}

TEST(DiskExplorer, progressIsAPartialResultAndTheFolderThatIsRead) {
    FakeDirectoryWalker walker;
    walker.walks[root] = walkOf(2, 0);
    walker.steps = {{0, 0, "", {}, 0, 0}, {70, 50, "a/b", {{"a", 30, true}}, 3, 20}};
    std::vector<DiskExplorerProgress> told;
    DiskExplorerRequest request;
    request.progress = [&told](const DiskExplorerProgress& step) { told.push_back(step); };
    static_cast<void>(scanned(walker, root, request));
    DiskExplorerProgress first;
    first.folder = root;
    DiskExplorerProgress second;
    second.folder = root + "/a/b";
    second.found.folders = {{root + "/a", 30, true}};
    second.found.inspectedFiles = 70;
    second.found.otherItems = 3;
    second.found.otherBytes = 20;
    EXPECT_EQ(told, (std::vector<DiskExplorerProgress>{first, second}));
    EXPECT_EQ(told[1].found.measuredBytes(), 50);
}

TEST(DiskExplorer, aScanWithoutAListenerAsksForNoProgress) {
    FakeDirectoryWalker walker;
    static_cast<void>(scanned(walker, root));
    EXPECT_FALSE(walker.requests[0].progress);
}

}  // namespace kestrune
