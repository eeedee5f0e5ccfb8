#include "platform/PathText.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(PathText, placesCompareByWholeComponents) {
    EXPECT_TRUE(isAtOrBelow("/a/b", "/a"));
    EXPECT_TRUE(isAtOrBelow("/a", "/a"));
    EXPECT_TRUE(isAtOrBelow("/a", "/"));
    EXPECT_FALSE(isAtOrBelow("/ab", "/a"));
    EXPECT_FALSE(isAtOrBelow("/", "/a"));
}

TEST(PathText, aPathThatCouldLeaveItsFolderIsNotPlain) {
    for (const std::string path : {"a", "a/b", "...", ".a/b."}) {
        EXPECT_TRUE(isPlainRelativePath(path)) << path;
    }
    for (const std::string path : {"", ".", "..", "a/..", "../a", "a/./b", "/a", "a/", "a//b"}) {
        EXPECT_FALSE(isPlainRelativePath(path)) << path;
    }
    EXPECT_FALSE(isPlainRelativePath(std::string("a\0b", 3)));
}

TEST(PathText, whatLiesAtTheTopIsJoinedAndSplitWithOneSlash) {
    EXPECT_EQ(inFolder("/", "a"), "/a");
    EXPECT_EQ(inFolder("/a", "b/c"), "/a/b/c");
    EXPECT_EQ(folderOf("/a"), "/");
    EXPECT_EQ(folderOf("/a/b"), "/a");
}

}  // namespace
}  // namespace kestrune
