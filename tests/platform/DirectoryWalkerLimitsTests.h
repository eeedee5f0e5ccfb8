/// Every walker ends where it is asked to.
/// Included once by a program that says what WalkerUnderTest is.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/fakes/DeepTree.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr int mostThreads = 8;

TreeWalk walked(const WalkRequest& request) {
    return WalkerUnderTest().walk(request);
}

WalkRequest requestFor(const std::string& folder) {
    WalkRequest request;
    request.folder = folder;
    return request;
}

void makeFiles(const std::string& folder, int files) {
    const LinuxFileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int number = 0; number < files; ++number) {
        ASSERT_EQ(0, ::mknodat(descriptor.get(), std::to_string(number).c_str(), S_IFREG | 0600, 0));
    }
}

/// Enough folders and files for every worker: 40 folders of 40 files each.
struct Wide {
    static constexpr int folders = 40;
    static constexpr std::int64_t entries = folders + std::int64_t{folders} * folders;

    Wide() {
        for (int number = 0; number < folders; ++number) {
            const std::string path = root.path("folder" + std::to_string(number));
            std::filesystem::create_directory(path);
            makeFiles(path, folders);
        }
    }

    TemporaryFolder root{TemporaryFolder::fastBase()};
};

TEST(DirectoryWalkerLimits, tenOfAHundredFilesAreTheLimit) {
    const TemporaryFolder root;
    makeFiles(root.path(), 100);
    WalkRequest request = requestFor(root.path());
    request.entryLimit = 10;
    const TreeWalk found = walked(request);
    EXPECT_EQ(WalkEnd::entryLimit, found.end);
    EXPECT_EQ(10, found.entries);
    EXPECT_EQ(10, found.files);
    EXPECT_EQ(10U, found.children.size());
}

TEST(DirectoryWalkerLimits, aTreeWithExactlyAsManyEntriesAsTheLimitIsFinished) {
    const Wide wide;
    WalkRequest request = requestFor(wide.root.path());
    for (const std::int64_t limit : {Wide::entries - 1, Wide::entries, Wide::entries + 1}) {
        request.entryLimit = limit;
        const TreeWalk found = walked(request);
        EXPECT_EQ(limit < Wide::entries ? WalkEnd::entryLimit : WalkEnd::finished, found.end);
        EXPECT_EQ(std::min(limit, Wide::entries), found.entries);
    }
}

TEST(DirectoryWalkerLimits, aNegativeLimitIsNone) {
    const Wide wide;
    WalkRequest request = requestFor(wide.root.path());
    request.entryLimit = request.childLimit = request.largestLimit = -5;
    const TreeWalk found = walked(request);
    EXPECT_EQ(Wide::entries, found.entries);
    EXPECT_EQ(static_cast<std::size_t>(Wide::folders), found.children.size());
    EXPECT_EQ(static_cast<std::size_t>(Wide::entries - Wide::folders), found.largestFiles.size());
}

TEST(DirectoryWalkerLimits, aLimitOfNothingEndsBeforeTheFirstEntryAndLeavesAnEmptyFolderFinished) {
    const TemporaryFolder root;
    WalkRequest request = requestFor(root.path());
    request.entryLimit = 0;
    EXPECT_EQ(WalkEnd::finished, walked(request).end);
    root.write("file", "x");
    const TreeWalk found = walked(request);
    EXPECT_EQ(WalkEnd::entryLimit, found.end);
    EXPECT_EQ(0, found.entries);
}

TEST(DirectoryWalkerLimits, timeThatIsUpAtOnceLeavesNothingLookedAt) {
    const TemporaryFolder root;
    WalkRequest request = requestFor(root.path());
    request.timeIsUp = [] { return true; };
    EXPECT_EQ(WalkEnd::finished, walked(request).end);
    root.write("file", "x");
    const TreeWalk found = walked(request);
    EXPECT_TRUE(found.opened);
    EXPECT_EQ(WalkEnd::timeLimit, found.end);
    EXPECT_EQ(0, found.entries);
    EXPECT_TRUE(found.children.empty());
}

TEST(DirectoryWalkerLimits, theTimeIsNotAskedForOnceTheEntryLimitIsReached) {
    const TemporaryFolder root;
    makeFiles(root.path(), 10);
    WalkRequest request = requestFor(root.path());
    request.entryLimit = 0;
    int asked = 0;
    request.timeIsUp = [&asked] { return ++asked > 0; };
    EXPECT_EQ(WalkEnd::entryLimit, walked(request).end);
    EXPECT_EQ(0, asked);
}

TEST(DirectoryWalkerLimits, cancelledComesBeforeEveryOtherEnd) {
    const Wide wide;
    WalkRequest request = requestFor(wide.root.path());
    request.entryLimit = 0;
    request.cancelled = request.timeIsUp = [] { return true; };
    EXPECT_EQ(WalkEnd::cancelled, walked(request).end);
}

TEST(DirectoryWalkerLimits, cancelledIsAskedForAtMostSixtyFourEntriesAndEndsTheWalkWhenever) {
    const Wide wide;
    WalkRequest request = requestFor(wide.root.path());
    std::atomic<int> asked{0};
    request.cancelled = [&asked] { return ++asked < 0; };
    EXPECT_EQ(Wide::entries, walked(request).entries);
    const int inAll = asked;
    EXPECT_GE(inAll, Wide::entries / 64);
    for (int last = 1; last <= Wide::folders; ++last) {
        asked = 0;
        request.cancelled = [&asked, last] { return ++asked >= last; };
        const TreeWalk part = walked(request);
        EXPECT_TRUE(part.opened);
        EXPECT_EQ(WalkEnd::cancelled, part.end);
        EXPECT_LE(asked, last + mostThreads);
        EXPECT_LE(part.entries, std::int64_t{64} * (last - 1));
        EXPECT_LE(part.files, part.entries);
    }
}

TEST(DirectoryWalkerLimits, cancellingWhileOneHugeFolderIsReadLeavesTheRest) {
    constexpr int files = 20000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeFiles(root.path(), files);
    WalkRequest request = requestFor(root.path());
    std::atomic<int> asked{0};
    request.cancelled = [&asked] { return ++asked >= 20; };
    const TreeWalk part = walked(request);
    EXPECT_EQ(WalkEnd::cancelled, part.end);
    EXPECT_GT(part.entries, 0);
    EXPECT_LE(part.entries, 20 * 64);
    EXPECT_EQ(part.files, static_cast<std::int64_t>(part.children.size()));
}

TEST(DirectoryWalkerLimits, cancellingIsAnsweredAmongFoldersThatHoldNothing) {
    constexpr int folders = 2000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    for (int number = 0; number < folders; ++number) {
        ASSERT_EQ(0, ::mkdir(root.path(std::to_string(number)).c_str(), 0700));
    }
    WalkRequest request = requestFor(root.path());
    std::atomic<int> asked{0};
    request.cancelled = [&asked] { return ++asked >= folders / 2; };
    const TreeWalk found = walked(request);
    EXPECT_EQ(WalkEnd::cancelled, found.end);
    EXPECT_LE(found.entries, folders);
}

TEST(DirectoryWalkerLimits, timeIsNoticedAmongFoldersThatHoldNothing) {
    constexpr int folders = 2000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    for (int number = 0; number < folders; ++number) {
        ASSERT_EQ(0, ::mkdir(root.path(std::to_string(number)).c_str(), 0700));
    }
    WalkRequest request = requestFor(root.path());
    std::atomic<int> asked{0};
    request.timeIsUp = [&asked] { return ++asked >= folders / 2; };
    EXPECT_EQ(WalkEnd::timeLimit, walked(request).end);
    EXPECT_LE(asked, folders / 2 + mostThreads);
    asked = 0;
    request.entryLimit = folders;
    EXPECT_EQ(WalkEnd::timeLimit, walked(request).end);
    EXPECT_LE(asked, folders / 2 + mostThreads);
}

/// Leaves the program so many free descriptors.
class FewDescriptors final {
public:
    explicit FewDescriptors(int free) {
        EXPECT_EQ(0, ::getrlimit(RLIMIT_NOFILE, &m_before));
        const LinuxFileDescriptor next(::open("/", O_PATH | O_CLOEXEC));
        rlimit few = m_before;
        few.rlim_cur = static_cast<rlim_t>(next.get() + free);
        EXPECT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &few));
    }

    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

    ~FewDescriptors() { ::setrlimit(RLIMIT_NOFILE, &m_before); }

private:
    rlimit m_before{};
};

TEST(DirectoryWalkerLimits, aProgramWithFewDescriptorsLeftIsToldTheSame) {
    constexpr int chains = 40;
    constexpr int levels = 12;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    for (int chain = 0; chain < chains; ++chain) {
        std::string path = root.path(std::to_string(chain));
        for (int level = 0; level < levels; ++level) {
            std::filesystem::create_directories(path + "/empty");
            path += "/d";
        }
    }
    const TreeWalk whole = walked(requestFor(root.path()));
    for (const int free : {8, 12, 16, 30}) {
        const FewDescriptors few(free);
        EXPECT_EQ(whole, walked(requestFor(root.path()))) << free;
    }
}

TEST(DirectoryWalkerLimits, aFolderOfTenFilesTakesNoFurtherThread) {
    const TemporaryFolder root;
    makeFiles(root.path(), 10);
    WalkRequest request = requestFor(root.path());
    const auto caller = std::this_thread::get_id();
    bool elsewhere = false;
    request.cancelled = [&] {
        elsewhere = elsewhere || std::this_thread::get_id() != caller;
        return false;
    };
    EXPECT_EQ(10, walked(request).entries);
    EXPECT_FALSE(elsewhere);
}

TEST(DirectoryWalkerLimits, progressGrowsAndIsToldByOneThreadAtATime) {
    const Wide wide;
    WalkRequest request = requestFor(wide.root.path());
    request.childLimit = 5;
    const auto start = std::chrono::steady_clock::now();
    std::atomic<int> telling{0};
    std::vector<WalkProgress> told;
    request.progress = [&](const WalkProgress& progress) {
        EXPECT_EQ(1, ++telling);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds{200} * (told.size() + 1));
        told.push_back(progress);
        --telling;
    };
    std::atomic<int> asked{0};
    request.cancelled = [&] {
        if (++asked % 20 == 1) {  // outlasts a report, whichever worker is held up
            const auto held = std::chrono::steady_clock::now();
            while (std::chrono::steady_clock::now() - held < std::chrono::milliseconds{210}) {
                std::this_thread::yield();
            }
        }
        return false;
    };
    const TreeWalk found = walked(request);
    ASSERT_FALSE(told.empty());
    for (std::size_t call = 0; call < told.size(); ++call) {
        EXPECT_LE(told[call].entries, found.entries);
        EXPECT_LE(told[call].children.size(), 5U);
        EXPECT_TRUE(call == 0 || told[call - 1].entries <= told[call].entries);
        EXPECT_TRUE(told[call].folder.empty() || told[call].folder.starts_with("folder"));
    }
}

TEST(DirectoryWalkerLimits, pathsOfLargestFilesAreBelowTheFolderHoweverDeep) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), 3000, [](int folder, int level) {
        if (level % 500 == 499) {
            makeFileAt(folder, "file", static_cast<std::size_t>(level) * 100);
        }
    });
    WalkRequest request = requestFor(root.path());
    request.largestLimit = 2;
    const TreeWalk found = walked(request);
    ASSERT_EQ(2U, found.largestFiles.size());
    EXPECT_EQ(2 * std::size_t{2999} + 4, found.largestFiles[0].path.size());
    EXPECT_TRUE(found.largestFiles[0].path.starts_with("d/d/"));
    EXPECT_TRUE(found.largestFiles[0].path.ends_with("/d/file"));
    EXPECT_GT(found.largestFiles[0].bytes, found.largestFiles[1].bytes);
    ASSERT_EQ(1U, found.children.size());
    EXPECT_EQ((WalkedItem{"d", found.bytes, true}), found.children[0]);
}

}  // namespace
}  // namespace kestrune
