/// Every walker finds what a plain walk finds.
/// Included once by a program that says what WalkerUnderTest is.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>

#include "tests/fakes/OrdinaryUser.h"
#include "tests/fakes/RandomTree.h"
#include "tests/fakes/ReferenceWalker.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr unsigned trees = 200;

WalkRequest requestFor(const std::string& folder) {
    WalkRequest request;
    request.folder = folder;
    request.largestLimit = 20;
    return request;
}

/// A random tree in its folder, which goes away with it.
struct Grown {
    explicit Grown(unsigned seed) : random(seed) {
        EXPECT_EQ(0, ::chmod(folder.path().c_str(), 0755));
        random.fill(folder.path(), static_cast<int>(seed % 6));
    }

    TemporaryFolder folder{TemporaryFolder::fastBase()};
    RandomTree random;
};

void expectSame(const TreeWalk& expected, const TreeWalk& found) {
    EXPECT_EQ(expected.exists, found.exists);
    EXPECT_EQ(expected.opened, found.opened);
    EXPECT_EQ(expected.end, found.end);
    EXPECT_EQ(expected.entries, found.entries);
    EXPECT_EQ(expected.files, found.files);
    EXPECT_EQ(expected.bytes, found.bytes);
    EXPECT_EQ(expected.links, found.links);
    EXPECT_EQ(expected.elsewhere, found.elsewhere);
    EXPECT_EQ(expected.unreadable, found.unreadable);
    EXPECT_EQ(expected.children, found.children);
    EXPECT_EQ(expected.otherChildren, found.otherChildren);
    EXPECT_EQ(expected.otherBytes, found.otherBytes);
    EXPECT_EQ(expected.largestFiles, found.largestFiles);
}

TEST(DirectoryWalkerAgreement, everyFigureAndNameIsThatOfAPlainWalk) {
    for (unsigned seed = 1; seed <= trees; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Grown grown(seed);
        WalkRequest request = requestFor(grown.folder.path());
        expectSame(ReferenceWalker().walk(request), WalkerUnderTest().walk(request));
        request.childLimit = seed % 4;
        request.largestLimit = seed % 3;
        expectSame(ReferenceWalker().walk(request), WalkerUnderTest().walk(request));
    }
}

TEST(DirectoryWalkerAgreement, anOrdinaryUserIsToldTheSameOfClosedFolders) {
    for (unsigned seed = 1; seed <= trees; seed += 5) {
        const Grown grown(seed);
        const WalkRequest request = requestFor(grown.folder.path());
        EXPECT_TRUE(asOrdinaryUser([&request] {
            return ReferenceWalker().walk(request) == WalkerUnderTest().walk(request);
        })) << "seed "
            << seed;
    }
}

TEST(DirectoryWalkerAgreement, anEntryLimitIsMetExactlyAndNothingIsInvented) {
    for (unsigned seed = 1; seed <= trees; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Grown grown(seed);
        WalkRequest request = requestFor(grown.folder.path());
        const TreeWalk whole = WalkerUnderTest().walk(request);
        for (const std::int64_t limit : {std::int64_t{0}, whole.entries / 3, whole.entries - 1, whole.entries}) {
            request.entryLimit = std::max<std::int64_t>(limit, 0);
            const TreeWalk part = WalkerUnderTest().walk(request);
            EXPECT_EQ(request.entryLimit, part.entries);
            EXPECT_EQ(request.entryLimit < whole.entries ? WalkEnd::entryLimit : WalkEnd::finished, part.end);
            EXPECT_LE(part.files, whole.files);
            EXPECT_LE(part.bytes, whole.bytes);
            EXPECT_LE(part.children.size(), whole.children.size());
            std::int64_t ofChildren = 0;
            for (const WalkedItem& child : part.children) {
                ofChildren += child.bytes;
            }
            EXPECT_EQ(part.bytes, ofChildren);
        }
    }
}

TEST(DirectoryWalkerAgreement, fileSystemsMountedBelowAreSeenAndNotEntered) {
    const WalkRequest request = requestFor("/dev");
    expectSame(ReferenceWalker().walk(request), WalkerUnderTest().walk(request));
}

}  // namespace
}  // namespace kestrune
