/// Every walker survives a tree that changes under it.
/// Included once by a program that says what WalkerUnderTest is.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/fakes/DeepTree.h"
#include "tests/fakes/RandomTree.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

TreeWalk walked(const std::string& folder, const DirectoryWalker::Cancelled& asked) {
    WalkRequest request;
    request.folder = folder;
    request.cancelled = asked;
    return WalkerUnderTest().walk(request);
}

std::string levelsBelow(const std::string& folder, int levels) {
    std::string path = folder;
    for (int level = 0; level < levels; ++level) {
        path += "/d";
    }
    return path;
}

TEST(DirectoryWalkerChanges, aBranchMovedAwayAtAnyMomentLeadsNowhereElse) {
    constexpr int depth = 400;
    constexpr int entries = 3 * depth - 1;
    for (const int moment : {1, 50, 200, 390, 600, 900}) {
        const TemporaryFolder outside(TemporaryFolder::fastBase());
        makeChain(outside.path(), 60, makeTeethWithFiles);
        const TemporaryFolder root(TemporaryFolder::fastBase());
        makeChain(root.path(), depth, makeTeeth);
        const std::string from = levelsBelow(root.path(), 100);
        const std::string to = levelsBelow(outside.path(), 60) + "/moved";
        std::atomic<int> asked{0};
        const TreeWalk found = walked(root.path(), [&] {
            if (++asked == moment) {
                EXPECT_EQ(0, ::rename(from.c_str(), to.c_str()));
            }
            return false;
        });
        EXPECT_GE(asked, moment);
        EXPECT_TRUE(found.opened);
        EXPECT_EQ(WalkEnd::finished, found.end);
        EXPECT_LE(found.entries, entries);
        EXPECT_EQ(0, found.files);  // only what lies outside holds files
    }
}

TEST(DirectoryWalkerChanges, aTreeDeletedWhileItIsWalkedIsNoError) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const TemporaryFolder root(TemporaryFolder::fastBase());
        std::filesystem::create_directory(root.path("tree"));
        RandomTree random(seed);
        random.fill(root.path("tree"), 6);
        makeChain(root.path("tree"), 200, [](int folder, int) { ::mkdirat(folder, "side", 0755); });
        std::atomic<int> asked{0};
        std::thread deleting;
        const TreeWalk found = walked(root.path("tree"), [&] {
            if (++asked == 5) {
                deleting = std::thread([&root] {
                    std::error_code ignored;
                    std::filesystem::remove_all(root.path("tree"), ignored);
                });
            }
            return false;
        });
        deleting.join();
        EXPECT_TRUE(found.opened);
        EXPECT_GT(found.entries, 0);
        EXPECT_EQ(WalkEnd::finished, found.end);
    }
}

TEST(DirectoryWalkerChanges, aFolderSwappedForALinkIsNotFollowed) {
    const TemporaryFolder outside;
    outside.write("large", std::string(100000, 'x'));
    const TemporaryFolder root;
    std::filesystem::create_directory(root.path("a"));
    std::filesystem::create_directory(root.path("b"));
    int asked = 0;
    const TreeWalk found = walked(root.path(), [&] {
        if (++asked == 1) {  // both names were read from the folder, neither was opened
            for (const char* name : {"a", "b"}) {
                EXPECT_EQ(0, ::rmdir(root.path(name).c_str()));
                EXPECT_EQ(0, ::symlink(outside.path().c_str(), root.path(name).c_str()));
            }
        }
        return false;
    });
    EXPECT_EQ(2, found.entries);
    EXPECT_EQ(2, found.unreadable);
    EXPECT_EQ(0, found.bytes);
    EXPECT_TRUE(found.children.empty());
}

}  // namespace
}  // namespace kestrune
