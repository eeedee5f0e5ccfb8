#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/LinuxDirectoryWalker.h"
#include "tests/fakes/DeepTree.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr int deepest = 50000;

TreeSize measured(const std::string& folder, const DirectoryWalker::Cancelled& cancelled = {}) {
    return LinuxDirectoryWalker().measure(folder, cancelled);
}

/// Entries, bytes, entries of other file systems, and what could not be read.
std::vector<std::int64_t> seenOf(const std::string& folder) {
    WalkRequest request;
    request.folder = folder;
    const TreeWalk found = LinuxDirectoryWalker().walk(request);
    return {found.entries, found.bytes, found.elsewhere, found.unreadable};
}

/// The most memory this process ever had resident.
std::int64_t peakKibibytes() {
    rusage usage{};
    EXPECT_EQ(0, ::getrusage(RUSAGE_SELF, &usage));
    return usage.ru_maxrss;
}

TEST(DeepWalk, fiftyThousandFoldersInsideEachOtherAreMeasured) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), deepest, [](int, int) {});
    DescriptorWatch watch;
    EXPECT_EQ((TreeSize{true, 0, deepest, 0, false}), measured(root.path(), watch.every(100)));
    EXPECT_LE(watch.most, descriptorsAtMost);
    EXPECT_EQ(watch.before, openDescriptors());
}

TEST(DeepWalk, everyWaitingFolderOfAChainFiftyThousandDeepIsVisited) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), deepest, makeTeethWithFiles);
    DescriptorWatch watch;
    const TreeSize size = measured(root.path(), watch.every(100));
    EXPECT_EQ((TreeSize{true, size.allocatedBytes, deepest + 2 * (2 * deepest - 1), 0, false}), size);
    EXPECT_EQ((2 * deepest - 1) * std::int64_t{4096}, size.allocatedBytes);
    EXPECT_LE(watch.most, descriptorsAtMost);
    EXPECT_EQ(watch.before, openDescriptors());
}

TEST(DeepWalk, aMillionFilesInOneFolderAreMeasuredAndTheLargestNamed) {
    constexpr int files = 1'000'000;
    constexpr std::int64_t named = 200;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    const LinuxFileDescriptor folder(::open(root.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int number = 0; number < files; ++number) {
        const std::string name = std::to_string(number);
        ASSERT_EQ(0, ::mknodat(folder.get(), name.c_str(), S_IFREG | 0600, 0));
    }
    makeFileAt(folder.get(), "large", 10000);
    WalkRequest request;
    request.folder = root.path();
    request.childLimit = named;
    request.largestLimit = 50;
    const std::int64_t before = peakKibibytes();
    const TreeWalk found = LinuxDirectoryWalker().walk(request);
    EXPECT_LE(peakKibibytes() - before, 16 * 1024);
    EXPECT_EQ(WalkEnd::finished, found.end);
    EXPECT_EQ(files + 1, found.entries);
    EXPECT_EQ(files + 1, found.files);
    ASSERT_EQ(static_cast<std::size_t>(named), found.children.size());
    EXPECT_EQ((WalkedItem{"large", found.bytes, false}), found.children[0]);
    EXPECT_EQ("0", found.children[1].path);
    EXPECT_EQ(files + 1 - named, found.otherChildren);
    EXPECT_EQ(50U, found.largestFiles.size());
}

TEST(DeepWalk, twoHundredThousandFoldersInOneFolderAreMeasured) {
    constexpr int folders = 200000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    const LinuxFileDescriptor folder(::open(root.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int number = 0; number < folders; ++number) {
        ASSERT_EQ(0, ::mkdirat(folder.get(), std::to_string(number).c_str(), 0700));
    }
    EXPECT_EQ((TreeSize{true, 0, folders, 0, false}), measured(root.path()));
}

TEST(DeepWalk, mountedFoldersAndFilesAddNothing) {
    const TemporaryFolder root;
    std::filesystem::create_directory(root.path("mounted"));
    std::filesystem::create_directory(root.path("bound"));
    const std::string file = root.write("file", "");
    const TemporaryFolder outside;
    const std::string large = outside.write("large", std::string(100000, 'x'));
    const pid_t child = ::fork();
    if (child == 0) {
        const bool mounted =
            ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
            ::mount("tmpfs", root.path("mounted").c_str(), "tmpfs", 0, nullptr) == 0 &&
            ::mount(outside.path().c_str(), root.path("bound").c_str(), nullptr, MS_BIND, nullptr) == 0 &&
            ::mount(large.c_str(), file.c_str(), nullptr, MS_BIND, nullptr) == 0;
        root.write("mounted/inside", std::string(100000, 'x'));
        ::_exit(!mounted ? 1 : seenOf(root.path()) == std::vector<std::int64_t>{3, 0, 3, 0} ? 0 : 2);
    }
    int status = -1;
    ASSERT_EQ(child, ::waitpid(child, &status, 0));
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(0, WEXITSTATUS(status));
}

}  // namespace
}  // namespace kestrune
