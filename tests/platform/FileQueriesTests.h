/// What every system answers about single paths.
/// Included once by a program that says what QueriesUnderTest is.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

class FileQueriesTest : public testing::Test {
protected:
    FileQueriesTest() : real(std::filesystem::canonical(folder.path())) {
        std::filesystem::create_directory(folder.path("directory"));
        folder.write("directory/file", "12345");
        link("directory", "link");
        link("nowhere", "dangling");
        link("loop2", "loop1");
        link("loop1", "loop2");
    }

    void link(const std::string& target, const std::string& name) const {
        EXPECT_EQ(0, ::symlink(target.c_str(), folder.path(name).c_str()));
    }

    TemporaryFolder folder;
    const std::string real;
    const QueriesUnderTest queries;
};

TEST_F(FileQueriesTest, kindFollowsLinks) {
    EXPECT_EQ(FileKind::directory, queries.kind(folder.path("directory")));
    EXPECT_EQ(FileKind::directory, queries.kind(folder.path("link")));
    EXPECT_EQ(FileKind::other, queries.kind(folder.path("link/file")));
    EXPECT_EQ(FileKind::other, queries.kind("/dev/null"));
}

TEST_F(FileQueriesTest, whatLeadsNowhereHasNoKind) {
    for (const std::string& path :
         {folder.path("missing"), folder.path("dangling"), folder.path("loop1"), folder.path("directory/file/below"),
          std::string(), folder.path("directory") + std::string("\0x", 2), std::string(9000, 'x')}) {
        EXPECT_EQ(std::nullopt, queries.kind(path)) << path;
        EXPECT_FALSE(queries.isReadable(path)) << path;
    }
}

TEST_F(FileQueriesTest, fileSizeIsTheLengthInBytes) {
    EXPECT_EQ(5, queries.fileSize(folder.path("directory/file")));
    EXPECT_EQ(5, queries.fileSize(folder.path("link/file")));
    ASSERT_EQ(0, ::truncate(folder.path("directory/file").c_str(), std::int64_t{5} << 32));
    EXPECT_EQ(std::int64_t{5} << 32, queries.fileSize(folder.path("directory/file")));
    EXPECT_EQ(std::nullopt, queries.fileSize(folder.path("missing")));
    EXPECT_EQ(std::nullopt, queries.fileSize(folder.path("directory/file") + std::string("\0x", 2)));
}

TEST_F(FileQueriesTest, fileSizeOfALinkIsTheLinksOwn) {
    link("directory/file", "fileLink");
    EXPECT_EQ(14, queries.fileSize(folder.path("fileLink")));
}

TEST_F(FileQueriesTest, readableIsWhatTheUserMayRead) {
    EXPECT_TRUE(queries.isReadable(folder.path("directory")));
    EXPECT_TRUE(queries.isReadable(folder.path("link/file")));
    ASSERT_EQ(0, ::chmod(folder.path().c_str(), 0755));
    ASSERT_EQ(0, ::chmod(folder.path("directory/file").c_str(), 0));
    const pid_t child = ::fork();
    if (child == 0) {
        const bool dropped = ::getuid() != 0 || ::setuid(65534) == 0;
        ::_exit(dropped && queries.isReadable(folder.path("directory")) &&
                        !queries.isReadable(folder.path("directory/file"))
                    ? 0
                    : 1);
    }
    int status = -1;
    ASSERT_EQ(child, ::waitpid(child, &status, 0));
    EXPECT_EQ(0, status);
}

TEST_F(FileQueriesTest, everyLinkIsResolved) {
    EXPECT_EQ(real + "/directory", queries.resolvingLinks(folder.path("link")));
    EXPECT_EQ(real + "/directory/file", queries.resolvingLinks(folder.path("link/file")));
    EXPECT_EQ(real + "/directory", queries.resolvingLinks(folder.path("./directory//")));
    EXPECT_EQ(real, queries.resolvingLinks(folder.path("link/..")));
    EXPECT_EQ("/", queries.resolvingLinks("/"));
}

TEST_F(FileQueriesTest, whatDoesNotExistIsKeptAsSpelled) {
    EXPECT_EQ(real + "/directory/new/file", queries.resolvingLinks(folder.path("link/new/file")));
    EXPECT_EQ(real + "/missing/", queries.resolvingLinks(folder.path("missing/")));
    EXPECT_EQ(real + "/dangling", queries.resolvingLinks(folder.path("dangling")));
    EXPECT_EQ(real + "/loop1/below", queries.resolvingLinks(folder.path("loop1/below")));
    EXPECT_EQ(real + "/directory/file/below", queries.resolvingLinks(folder.path("link/file/below")));
    EXPECT_EQ("/no such folder/x", queries.resolvingLinks("/no such folder/x"));
    EXPECT_EQ("no such name", queries.resolvingLinks("no such name"));
    EXPECT_EQ("", queries.resolvingLinks(""));
    const std::string withNul("/tmp\0x", 6);
    EXPECT_EQ(withNul, queries.resolvingLinks(withNul));
}

TEST_F(FileQueriesTest, namesThatAreNotUtf8AreResolved) {
    std::filesystem::create_directory(folder.path("\xFF\xFE"));
    link("\xFF\xFE", "bytes");
    EXPECT_EQ(real + "/\xFF\xFE", queries.resolvingLinks(folder.path("bytes")));
}

}  // namespace
}  // namespace kestrune
