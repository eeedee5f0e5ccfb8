/// What every walker does with the entries of a tree.
/// Included once by a program that says what WalkerUnderTest is.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"
#include "tests/fakes/DeepTree.h"
#include "tests/fakes/OrdinaryUser.h"
#include "tests/fakes/ReferenceWalker.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr int combDepth = 1000;

TreeSize reference(const std::string& folder) {
    return ReferenceWalker().measure(folder, {});
}

TreeSize measured(const std::string& folder, const DirectoryWalker::Cancelled& cancelled = {}) {
    return WalkerUnderTest().measure(folder, cancelled);
}

TEST(DirectoryWalker, anEmptyFolderIsOpenedAndHoldsNothing) {
    const TemporaryFolder root;
    EXPECT_EQ((TreeSize{true, 0, 0, 0, false}), measured(root.path()));
}

TEST(DirectoryWalker, whatIsNoFolderIsNotOpened) {
    const TemporaryFolder root;
    ASSERT_EQ(0, ::mkfifo(root.path("fifo").c_str(), 0600));
    ASSERT_EQ(0, ::symlink("nowhere", root.path("dangling").c_str()));
    const std::string file = root.write("file", "x");
    for (const std::string& path :
         {file, root.path("fifo"), root.path("dangling"), root.path("missing"), std::string()}) {
        EXPECT_EQ(TreeSize{}, measured(path)) << path;
    }
}

TEST(DirectoryWalker, aPathWithANulByteIsNotCutShort) {
    const TemporaryFolder root;
    root.write("file", "x");
    EXPECT_FALSE(measured(root.path() + std::string("\0/etc", 5)).opened);
}

TEST(DirectoryWalker, aLinkGivenAsTheFolderIsFollowed) {
    const TemporaryFolder root;
    std::filesystem::create_directory(root.path("real"));
    root.write("real/file", std::string(10000, 'x'));
    ASSERT_EQ(0, ::symlink("real", root.path("link").c_str()));
    EXPECT_EQ(measured(root.path("real")), measured(root.path("link")));
    EXPECT_EQ(1, measured(root.path("link")).entries);
}

TEST(DirectoryWalker, linksBelowTheFolderAreSeenAndNeverFollowed) {
    const TemporaryFolder outside;
    outside.write("large", std::string(100000, 'x'));
    const TemporaryFolder root;
    ASSERT_EQ(0, ::symlink(outside.path().c_str(), root.path("away").c_str()));
    ASSERT_EQ(0, ::symlink(outside.path("large").c_str(), root.path("file").c_str()));
    ASSERT_EQ(0, ::symlink("loop2", root.path("loop1").c_str()));
    ASSERT_EQ(0, ::symlink("loop1", root.path("loop2").c_str()));
    ASSERT_EQ(0, ::symlink("..", root.path("parent").c_str()));
    EXPECT_EQ((TreeSize{true, 0, 5, 0, false}), measured(root.path()));
}

TEST(DirectoryWalker, namesAreBytes) {
    const TemporaryFolder root;
    for (const char* name : {"\xFF\xFE", "a\nb", "-rf", "\xE2\x80\xAE", "..."}) {
        std::filesystem::create_directory(root.path(name));
        root.write(std::string(name) + "/" + name, std::string(5000, 'x'));
    }
    EXPECT_EQ(reference(root.path()), measured(root.path()));
    EXPECT_EQ(10, measured(root.path()).entries);
}

TEST(DirectoryWalker, aFileWithSeveralLinksCountsPerLink) {
    const TemporaryFolder root;
    const std::string file = root.write("one", std::string(8192, 'x'));
    const std::int64_t alone = measured(root.path()).allocatedBytes;
    ASSERT_EQ(0, ::link(file.c_str(), root.path("two").c_str()));
    ASSERT_GT(alone, 0);
    EXPECT_EQ(2 * alone, measured(root.path()).allocatedBytes);
}

TEST(DirectoryWalker, sparseFilesCountWhatTheyOccupy) {
    const TemporaryFolder root;
    const std::string file = root.write("sparse", "x");
    ASSERT_EQ(0, ::truncate(file.c_str(), std::int64_t{1} << 40));
    const TreeSize size = measured(root.path());
    EXPECT_EQ(reference(root.path()), size);
    EXPECT_LT(size.allocatedBytes, 1 << 20);
}

TEST(DirectoryWalker, fifosAndSocketsAreNeverOpened) {
    const TemporaryFolder root;
    ASSERT_EQ(0, ::mkfifo(root.path("fifo").c_str(), 0600));
    const LinuxFileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, root.path("socket").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(0, ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
    EXPECT_EQ((TreeSize{true, 0, 2, 0, false}), measured(root.path()));
}

TEST(DirectoryWalker, foldersThatCannotBeListedAreCounted) {
    const TemporaryFolder root;
    ASSERT_EQ(0, ::chmod(root.path().c_str(), 0755));
    for (const char* name : {"closed", "noEntry", "open"}) {
        std::filesystem::create_directory(root.path(name));
        root.write(std::string(name) + "/file", std::string(5000, 'x'));
    }
    ASSERT_EQ(0, ::chmod(root.path("closed").c_str(), 0));
    ASSERT_EQ(0, ::chmod(root.path("noEntry").c_str(), 0744));  // lists names, gives no status
    EXPECT_TRUE(asOrdinaryUser([&root] {
        const TreeSize size = measured(root.path());
        return size.opened && size.entries == 5 && size.unreadable == 2 && size.allocatedBytes >= 5000 &&
               size.allocatedBytes < 10000;
    }));
    EXPECT_TRUE(asOrdinaryUser([&root] { return measured(root.path("closed")) == TreeSize{}; }));
}

TEST(DirectoryWalker, aChainThreeThousandDeepNeedsFewDescriptors) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), 3000, [](int folder, int) { makeFileAt(folder, "file", 5000); });
    DescriptorWatch watch;
    const TreeSize size = measured(root.path(), watch.every(50));
    EXPECT_EQ((TreeSize{true, size.allocatedBytes, 6000, 0, false}), size);
    EXPECT_GE(size.allocatedBytes, 3000 * 5000);
    EXPECT_LE(watch.most, 3);
    EXPECT_EQ(watch.before, openDescriptors());
}

TEST(DirectoryWalker, everyFolderOfADeepCombIsFoundAgainOnTheWayBack) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), combDepth, makeTeethWithFiles);
    DescriptorWatch watch;
    const TreeSize size = measured(root.path(), watch.every(50));
    EXPECT_EQ((TreeSize{true, size.allocatedBytes, combDepth + 2 * (2 * combDepth - 1), 0, false}), size);
    EXPECT_GE(size.allocatedBytes, (2 * combDepth - 1) * 512);
    EXPECT_LE(watch.most, descriptorsAtMost);
    EXPECT_EQ(watch.before, openDescriptors());
}

TEST(DirectoryWalker, readsAFolderOfManyFilesWhole) {
    constexpr int files = 9000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    const LinuxFileDescriptor folder(::open(root.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int number = 0; number < files; ++number) {
        const std::string name = "a file with a name of some length, number " + std::to_string(number);
        const LinuxFileDescriptor file(::openat(folder.get(), name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    }
    EXPECT_EQ((TreeSize{true, 0, files, 0, false}), measured(root.path()));
}

TEST(DirectoryWalker, outOfDescriptorsItCountsWhatItCannotOpen) {
    const TemporaryFolder root;
    makeChain(root.path(), 5, [](int folder, int) { ASSERT_EQ(0, ::mkdirat(folder, "side", 0755)); });
    rlimit before{};
    ASSERT_EQ(0, ::getrlimit(RLIMIT_NOFILE, &before));
    rlimit few = before;
    few.rlim_cur = static_cast<rlim_t>(openDescriptors()) + 3;
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &few));
    const TreeSize size = measured(root.path());
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &before));
    EXPECT_TRUE(size.opened);
    EXPECT_GT(size.unreadable, 0);
}

}  // namespace
}  // namespace kestrune
