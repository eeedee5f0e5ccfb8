/// How the branches above a worker are kept and found again, on every system.
/// Included once by a program that says what SystemUnderTest is.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "platform/WalkPath.h"
#include "tests/fakes/DeepTree.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr int depth = 10;
constexpr std::size_t openAtMost = 3;

using Path = WalkPath<SystemUnderTest>;

SystemUnderTest::Folder openRoot(const TemporaryFolder& root) {
    return SystemUnderTest::Folder(::open(root.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

SystemUnderTest systemAt(const TemporaryFolder& root) {
    return *SystemUnderTest::around(openRoot(root).get());
}

/// A walk that went down a chain and left one name waiting on every level.
struct Chain {
    Chain() {
        makeChain(root.path(), depth, [](int, int) {});
        SystemUnderTest::Folder folder = openRoot(root);
        for (std::size_t level = 0; level < depth; ++level) {
            SystemUnderTest::Folder below = system.openBelow(folder.get(), "d");
            path.push({std::move(folder), level, 2 * level}, std::string("waiting\0", 8));
            folder = std::move(below);
        }
        here = {std::move(folder), depth, 2 * depth};
    }

    const TemporaryFolder root;
    const SystemUnderTest system = systemAt(root);
    const int before = openDescriptors();
    Path path{system, openAtMost};
    Path::Place here;
};

TEST(WalkPath, fewBranchesStayOpenAndTheOthersAreFoundByClimbing) {
    Chain chain;
    EXPECT_EQ(static_cast<int>(openAtMost) + 1, openDescriptors() - chain.before);
    for (std::size_t level = depth; level-- > 0;) {
        ASSERT_EQ(0, chain.path.reachInnermost(chain.here));
        chain.here = chain.path.popInnermost();
        EXPECT_TRUE(chain.here.folder);
        EXPECT_EQ(level, chain.here.depth);
    }
    EXPECT_TRUE(chain.path.isEmpty());
}

TEST(WalkPath, branchesOfAMovedTreeAreGivenUpAndCounted) {
    const TemporaryFolder outside;
    Chain chain;
    ASSERT_EQ(0, ::rename((chain.root.path() + "/d/d/d/d").c_str(), outside.path("moved").c_str()));
    std::int64_t givenUp = 0;
    while (givenUp == 0) {
        givenUp = chain.path.reachInnermost(chain.here);
        if (givenUp == 0) {
            chain.here = chain.path.popInnermost();
        }
    }
    EXPECT_EQ(3, givenUp);
    EXPECT_EQ(0U, chain.path.innermost().place.depth);
    EXPECT_TRUE(chain.path.innermost().place.folder);
}

TEST(WalkPath, halfOfTheOutermostNamesAreCutOffWithADescriptorOfTheirOwn) {
    const TemporaryFolder root;
    Path path(systemAt(root), openAtMost);
    path.push({openRoot(root), 0, 0}, std::string("one\0two\0three\0four\0", 19));
    const auto half = path.cutOff(true);
    ASSERT_TRUE(half);
    EXPECT_TRUE(half->place.folder);
    EXPECT_NE(half->place.folder.get(), path.innermost().place.folder.get());
    EXPECT_EQ(19U, half->names.size() + path.innermost().names.size());
    EXPECT_EQ('\0', half->names.back());
    EXPECT_EQ(std::string("four\0", 5), path.innermost().names.substr(path.innermost().names.size() - 5));
}

TEST(WalkPath, aNameThatIsLongerThanAllOthersIsOnePart) {
    for (const auto& names :
         {std::string("a\0", 2) + std::string(255, 'x') + '\0', std::string(255, 'x') + '\0' + std::string("a\0", 2)}) {
        const TemporaryFolder root;
        Path path(systemAt(root), openAtMost);
        path.push({openRoot(root), 0, 0}, names);
        const auto half = path.cutOff(true);
        ASSERT_TRUE(half);
        EXPECT_EQ(names, half->names + path.innermost().names);
        EXPECT_EQ(1, std::count(half->names.begin(), half->names.end(), '\0'));
    }
}

TEST(WalkPath, theOutermostBranchStaysWhileTheNextOneIsClosed) {
    Chain chain;
    Path path(chain.system, openAtMost);
    std::string names = std::string("a\0", 2) + std::string(255, 'x') + '\0';
    SystemUnderTest::Folder folder = openRoot(chain.root);
    for (std::size_t level = 0; level < depth; ++level) {
        SystemUnderTest::Folder below = chain.system.openBelow(folder.get(), "d");
        path.push({std::move(folder), level, 2 * level}, std::exchange(names, std::string("waiting\0", 8)));
        folder = std::move(below);
    }
    Path::Place here{std::move(folder), depth, 2 * depth};
    const auto half = path.cutOff(false);
    ASSERT_TRUE(half);
    EXPECT_EQ(std::string("a\0", 2), half->names);
    while (path.cutOff(false)) {
    }
    std::size_t left = 0;
    for (; !path.isEmpty(); ++left) {
        ASSERT_EQ(0, path.reachInnermost(here));
        here = path.popInnermost();
        EXPECT_TRUE(here.folder);
    }
    EXPECT_EQ(depth - 2, left);
}

TEST(WalkPath, theLastNameOfTheInnermostBranchIsKeptWhereTheWorkerNeedsIt) {
    const TemporaryFolder root;
    Path path(systemAt(root), openAtMost);
    path.push({openRoot(root), 0, 0}, std::string("one\0", 4));
    EXPECT_FALSE(path.cutOff(true));
    EXPECT_TRUE(path.cutOff(false));
    EXPECT_TRUE(path.isEmpty());
    EXPECT_FALSE(path.cutOff(false));
}

TEST(WalkPath, theWayBackIsKeptWhenBranchesAreCutOff) {
    Chain chain;
    std::size_t cut = 0;
    while (chain.path.cutOff(true)) {
        ++cut;
    }
    EXPECT_EQ(1U, cut);  // of the two innermost ones that are open, the outer
    std::size_t left = 0;
    for (; !chain.path.isEmpty(); ++left) {
        ASSERT_EQ(0, chain.path.reachInnermost(chain.here));
        chain.here = chain.path.popInnermost();
    }
    EXPECT_EQ(depth - cut, left);
}

TEST(WalkPath, aFolderWithAPathTooLongToCarryIsNotCutOff) {
    const TemporaryFolder root;
    Path path(systemAt(root), openAtMost);
    path.push({openRoot(root), 0, Path::longestPath + 1}, std::string("a\0b\0", 4));
    EXPECT_FALSE(path.cutOff(false));
}

}  // namespace
}  // namespace kestrune
