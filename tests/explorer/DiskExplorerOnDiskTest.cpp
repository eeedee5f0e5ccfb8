#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "explorer/DiskExplorer.h"
#include "platform/linux/LinuxDirectoryWalker.h"
#include "tests/fakes/DeepTree.h"
#include "tests/fakes/TemporaryFolder.h"

/// Scans of folders that are there, with the walker of this system.
namespace kestrune {

namespace {

constexpr std::size_t large = 1'000'000;

DiskExplorerResult scanned(const std::string& folder, const DiskExplorerRequest& request = {}) {
    LinuxDirectoryWalker walker;
    return DiskExplorer::scan(walker, SystemClock(), folder, request);
}

std::int64_t allocatedBytesOf(const std::string& path) {
    struct stat status {};

    EXPECT_EQ(0, ::lstat(path.c_str(), &status)) << path;
    return status.st_blocks * 512;
}

std::string content(std::size_t bytes) {
    return std::string(bytes, 'x');
}

std::int64_t pathsBelow(const std::vector<DiskExplorerItem>& items, std::string_view folder) {
    return std::count_if(items.begin(), items.end(),
                         [folder](const DiskExplorerItem& item) { return item.path.starts_with(folder); });
}

void makeFiles(const TemporaryFolder& folder, int count) {
    for (int number = 0; number < count; ++number) {
        folder.write(std::to_string(number), "x");
    }
}

}  // namespace

TEST(DiskExplorerOnDisk, anEmptyFolderYieldsTheEmptyResult) {
    const TemporaryFolder root;
    EXPECT_EQ(scanned(root.path()), DiskExplorerResult{});
}

TEST(DiskExplorerOnDisk, aFolderThatDoesNotExistYieldsTheEmptyResult) {
    const TemporaryFolder root;
    EXPECT_EQ(scanned(root.path("nothing")), DiskExplorerResult{});
}

TEST(DiskExplorerOnDisk, aFileIsNoFolderToScan) {
    const TemporaryFolder root;
    EXPECT_EQ(scanned(root.write("file", "x")).inspectedFiles, 0);
}

TEST(DiskExplorerOnDisk, everyFileCountsForTheDirectChildThatHoldsIt) {
    const TemporaryFolder root;
    std::filesystem::create_directories(root.path("deep/er/still"));
    std::filesystem::create_directories(root.path("empty/too"));
    const auto deep = allocatedBytesOf(root.write("deep/er/still/file", content(300'000))) +
                      allocatedBytesOf(root.write("deep/.hidden", content(100'000)));
    const auto own = allocatedBytesOf(root.write("file", content(200'000)));
    const auto result = scanned(root.path());
    EXPECT_EQ(result.folders,
              (std::vector<DiskExplorerItem>{{root.path("deep"), deep, true}, {root.path("file"), own, false}}));
    EXPECT_EQ(result.inspectedFiles, 8);
    EXPECT_EQ(result.regularFiles, 3);
    EXPECT_EQ(result.skippedLocations, 0);
    EXPECT_EQ(result.totalBytes(), deep + own);
}

TEST(DiskExplorerOnDisk, aLinkToALargeFolderElsewhereIsSkippedAndNotCounted) {
    const TemporaryFolder elsewhere;
    elsewhere.write("large", content(large));
    const TemporaryFolder root;
    const auto own = allocatedBytesOf(root.write("small", "x"));
    std::filesystem::create_directory_symlink(elsewhere.path(), root.path("link"));
    const auto result = scanned(root.path());
    EXPECT_EQ(result.folders, (std::vector<DiskExplorerItem>{{root.path("small"), own, false}}));
    EXPECT_EQ(result.inspectedFiles, 2);
    EXPECT_EQ(result.skippedLocations, 1);
}

TEST(DiskExplorerOnDisk, aLinkGivenAsTheFolderItselfIsFollowed) {
    const TemporaryFolder elsewhere;
    const auto bytes = allocatedBytesOf(elsewhere.write("large", content(large)));
    const TemporaryFolder root;
    std::filesystem::create_directory_symlink(elsewhere.path(), root.path("link"));
    EXPECT_EQ(scanned(root.path("link")).folders,
              (std::vector<DiskExplorerItem>{{root.path("link/large"), bytes, false}}));
}

TEST(DiskExplorerOnDisk, aMountedVolumeBelowTheRootIsNotEntered) {
    const TemporaryFolder mounted("/dev/shm");
    mounted.write("large", content(large));
    const auto outside = scanned("/dev");
    EXPECT_EQ(pathsBelow(outside.folders, "/dev/shm"), 0);
    EXPECT_EQ(pathsBelow(outside.largestFiles, "/dev/shm"), 0);
    EXPECT_GE(outside.skippedLocations, 1);
    EXPECT_EQ(scanned(mounted.path()).folders.size(), 1U);
}

TEST(DiskExplorerOnDisk, aHundredFilesWithALimitOfTenInspectExactlyTen) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeFiles(root, 100);
    DiskExplorerRequest request;
    request.fileLimit = 10;
    const auto result = scanned(root.path(), request);
    EXPECT_TRUE(result.limitReached);
    EXPECT_FALSE(result.stopped);
    EXPECT_EQ(result.inspectedFiles, 10);
    EXPECT_EQ(result.folders.size(), 10U);
}

TEST(DiskExplorerOnDisk, aLimitThatIsJustEnoughIsNotReached) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeFiles(root, 100);
    DiskExplorerRequest request;
    request.fileLimit = 100;
    EXPECT_FALSE(scanned(root.path(), request).limitReached);
    request.fileLimit = 99;
    EXPECT_TRUE(scanned(root.path(), request).limitReached);
    request.fileLimit = -1;
    const auto unlimited = scanned(root.path(), request);
    EXPECT_FALSE(unlimited.limitReached);
    EXPECT_EQ(unlimited.inspectedFiles, 100);
}

TEST(DiskExplorerOnDisk, aLimitOfNothingIsReachedWhereThereIsSomething) {
    const TemporaryFolder root;
    DiskExplorerRequest request;
    request.fileLimit = 0;
    EXPECT_FALSE(scanned(root.path(), request).limitReached);
    root.write("file", "x");
    const auto result = scanned(root.path(), request);
    EXPECT_TRUE(result.limitReached);
    EXPECT_EQ(result.inspectedFiles, 0);
}

TEST(DiskExplorerOnDisk, aTimeThatIsUpEndsTheScanAtItsFirstEntry) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeFiles(root, 100);
    DiskExplorerRequest request;
    request.timeLimit = Seconds{-1};
    const auto result = scanned(root.path(), request);
    EXPECT_TRUE(result.limitReached);
    EXPECT_EQ(result.inspectedFiles, 0);
}

TEST(DiskExplorerOnDisk, cancellingGivesThePartialResultAsStopped) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeFiles(root, 2000);
    std::atomic<int> asked = 0;
    DiskExplorerRequest request;
    request.cancelled = [&asked] { return ++asked > 3; };
    const auto result = scanned(root.path(), request);
    EXPECT_TRUE(result.stopped);
    EXPECT_FALSE(result.limitReached);
    EXPECT_LT(result.inspectedFiles, 2000);
    EXPECT_EQ(result.folders.size(), static_cast<std::size_t>(result.inspectedFiles));
}

TEST(DiskExplorerOnDisk, aScanThatIsCancelledBeforeItBeginsFindsNothing) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeFiles(root, 100);
    DiskExplorerRequest request;
    request.fileLimit = 0;
    request.cancelled = [] { return true; };
    const auto result = scanned(root.path(), request);
    EXPECT_TRUE(result.stopped);
    EXPECT_FALSE(result.limitReached);
    EXPECT_EQ(result.inspectedFiles, 0);
}

TEST(DiskExplorerOnDisk, siblingsWhoseNamesAreNoTextAreTwoRows) {
    const TemporaryFolder root;
    const auto first = allocatedBytesOf(root.write("\xFF", content(10'000)));
    const auto second = allocatedBytesOf(root.write("\xFE", content(50'000)));
    EXPECT_EQ(scanned(root.path()).folders,
              (std::vector<DiskExplorerItem>{{root.path("\xFE"), second, false}, {root.path("\xFF"), first, false}}));
}

TEST(DiskExplorerOnDisk, theLargestFilesAreTheFiftyLargestFromAnywhereBelow) {
    const TemporaryFolder root;
    std::filesystem::create_directories(root.path("a/b/c"));
    const std::vector<std::string> places = {"", "a/", "a/b/", "a/b/c/"};
    std::vector<DiskExplorerItem> all;
    for (std::size_t number = 0; number < 80; ++number) {
        const auto path =
            root.write(places[number % places.size()] + std::to_string(number), content((number + 1) * 8192));
        all.push_back({path, allocatedBytesOf(path), false});
    }
    std::reverse(all.begin(), all.end());
    all.resize(50);
    EXPECT_EQ(scanned(root.path()).largestFiles, all);
}

TEST(DiskExplorerOnDisk, theListOfFoldersIsCutAndWhatItLeavesOutIsKnown) {
    const TemporaryFolder root;
    std::int64_t all = 0;
    for (std::size_t number = 1; number <= 20; ++number) {
        all += allocatedBytesOf(root.write(std::to_string(number), content(number * 8192)));
    }
    DiskExplorerRequest request;
    request.folderLimit = 5;
    const auto result = scanned(root.path(), request);
    ASSERT_EQ(result.folders.size(), 5U);
    EXPECT_EQ(result.folders[0].path, root.path("20"));
    EXPECT_EQ(result.folders[4].path, root.path("16"));
    EXPECT_EQ(result.otherItems, 15);
    EXPECT_EQ(result.measuredBytes(), all);
}

TEST(DiskExplorerOnDisk, aFileInAChainDeeperThanAnyPathCountsForTheFirstFolder) {
    constexpr int depth = 3000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), depth, [](int folder, int level) {
        if (level == depth - 1) {
            makeFileAt(folder, "file", 100'000);
        }
    });
    const auto result = scanned(root.path());
    EXPECT_EQ(result.inspectedFiles, depth + 1);
    ASSERT_EQ(result.folders.size(), 1U);
    EXPECT_EQ(result.folders[0].path, root.path("d"));
    EXPECT_GE(result.folders[0].bytes, 100'000);
    ASSERT_EQ(result.largestFiles.size(), 1U);
    EXPECT_EQ(result.largestFiles[0].path.size(), root.path().size() + 2 * (depth - 1) + std::string("/file").size());
}

}  // namespace kestrune
