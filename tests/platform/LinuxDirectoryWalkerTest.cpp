#include "platform/linux/LinuxDirectoryWalker.h"

#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"
#include "tests/fakes/DeepTree.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr int combDepth = 1000;

/// The same measure taken the plain way: one full path at a time, by recursion.
void referenceMeasure(const std::string& folder, dev_t device, TreeSize& size) {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.c_str()), ::closedir);
    if (!listing) {
        ++size.unreadable;
        return;
    }
    while (const dirent* entry = ::readdir(listing.get())) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        const std::string path = folder + "/" + name;
        ++size.entries;

        struct stat status {};

        if (::lstat(path.c_str(), &status) != 0) {
            ++size.unreadable;
        } else if (S_ISDIR(status.st_mode)) {
            if (status.st_dev == device) {
                referenceMeasure(path, device, size);
            }
        } else if (S_ISREG(status.st_mode)) {
            size.allocatedBytes += status.st_blocks * 512;
        }
    }
}

TreeSize reference(const std::string& folder) {
    TreeSize size;
    size.opened = true;

    struct stat status {};

    EXPECT_EQ(0, ::stat(folder.c_str(), &status));
    referenceMeasure(folder, status.st_dev, size);
    return size;
}

TreeSize measured(const std::string& folder, const DirectoryWalker::Cancelled& cancelled = {}) {
    return LinuxDirectoryWalker().measure(folder, cancelled);
}

/// Runs in a child process without root's rights; answers whether the child was content.
bool asOrdinaryUser(const std::function<bool()>& check) {
    const pid_t child = ::fork();
    if (child == 0) {
        const bool dropped = ::geteuid() != 0 || (::setegid(65534) == 0 && ::seteuid(65534) == 0);
        ::_exit(dropped && check() ? 0 : 1);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class RandomTree {
public:
    explicit RandomTree(unsigned seed) : m_random(seed) {}

    void fill(const std::string& folder, int depth) {
        for (int entry = number(0, 9); entry > 0; --entry) {
            make(folder + "/" + name(entry), folder, depth);
        }
    }

private:
    int number(int least, int most) { return std::uniform_int_distribution<>(least, most)(m_random); }

    std::string name(int entry) {
        static const std::vector<std::string> kinds = {"plain", "\xFF\xFE", "new\nline", " ", "..a", "\xC3\xA9", "*?"};
        return kinds[static_cast<std::size_t>(number(0, 6))] + std::to_string(entry);
    }

    void make(const std::string& path, const std::string& folder, int depth) {
        switch (number(0, 8)) {
            case 0:
                ASSERT_EQ(0, ::symlink(folder.c_str(), path.c_str()));
                break;
            case 1:
                ASSERT_EQ(0, ::symlink("..", path.c_str()));
                break;
            case 2:
                ASSERT_EQ(0, ::mkfifo(path.c_str(), 0600));
                break;
            case 3:
                makeSparse(path);
                break;
            case 4:
                ASSERT_EQ(0, m_lastFile.empty() ? 0 : ::link(m_lastFile.c_str(), path.c_str()));
                break;
            case 5:
            case 6:
                ASSERT_EQ(0, ::mkdir(path.c_str(), 0755));
                if (depth > 0) {
                    fill(path, depth - 1);
                }
                break;
            default:
                std::ofstream(path) << std::string(static_cast<std::size_t>(number(0, 20000)), 'x');
                m_lastFile = path;
        }
    }

    void makeSparse(const std::string& path) {
        const LinuxFileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        ASSERT_EQ(0, ::ftruncate(file.get(), 1 << 30));
        ASSERT_EQ(1, ::pwrite(file.get(), "x", 1, 1 << 20));
    }

    std::mt19937 m_random;
    std::string m_lastFile;
};

TEST(LinuxDirectoryWalker, agreesWithAPlainWalkOnRandomTrees) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const TemporaryFolder root;
        RandomTree(seed).fill(root.path(), 4);
        EXPECT_EQ(reference(root.path()), measured(root.path())) << "seed " << seed;
    }
}

TEST(LinuxDirectoryWalker, anEmptyFolderIsOpenedAndHoldsNothing) {
    const TemporaryFolder root;
    EXPECT_EQ((TreeSize{true, 0, 0, 0, false}), measured(root.path()));
}

TEST(LinuxDirectoryWalker, whatIsNoFolderIsNotOpened) {
    const TemporaryFolder root;
    ASSERT_EQ(0, ::mkfifo(root.path("fifo").c_str(), 0600));
    ASSERT_EQ(0, ::symlink("nowhere", root.path("dangling").c_str()));
    const std::string file = root.write("file", "x");
    for (const std::string& path :
         {file, root.path("fifo"), root.path("dangling"), root.path("missing"), std::string()}) {
        EXPECT_EQ(TreeSize{}, measured(path)) << path;
    }
}

TEST(LinuxDirectoryWalker, aPathWithANulByteIsNotCutShort) {
    const TemporaryFolder root;
    root.write("file", "x");
    EXPECT_FALSE(measured(root.path() + std::string("\0/etc", 5)).opened);
}

TEST(LinuxDirectoryWalker, aLinkGivenAsTheFolderIsFollowed) {
    const TemporaryFolder root;
    std::filesystem::create_directory(root.path("real"));
    root.write("real/file", std::string(10000, 'x'));
    ASSERT_EQ(0, ::symlink("real", root.path("link").c_str()));
    EXPECT_EQ(measured(root.path("real")), measured(root.path("link")));
    EXPECT_EQ(1, measured(root.path("link")).entries);
}

TEST(LinuxDirectoryWalker, linksBelowTheFolderAreSeenAndNeverFollowed) {
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

TEST(LinuxDirectoryWalker, namesAreBytes) {
    const TemporaryFolder root;
    for (const char* name : {"\xFF\xFE", "a\nb", "-rf", "\xE2\x80\xAE", "..."}) {
        std::filesystem::create_directory(root.path(name));
        root.write(std::string(name) + "/" + name, std::string(5000, 'x'));
    }
    EXPECT_EQ(reference(root.path()), measured(root.path()));
    EXPECT_EQ(10, measured(root.path()).entries);
}

TEST(LinuxDirectoryWalker, fileSystemsMountedBelowTheFolderAreSeenAndNotEntered) {
    EXPECT_EQ(reference("/dev"), measured("/dev"));
}

TEST(LinuxDirectoryWalker, aFileWithSeveralLinksCountsPerLink) {
    const TemporaryFolder root;
    const std::string file = root.write("one", std::string(8192, 'x'));
    const std::int64_t alone = measured(root.path()).allocatedBytes;
    ASSERT_EQ(0, ::link(file.c_str(), root.path("two").c_str()));
    ASSERT_GT(alone, 0);
    EXPECT_EQ(2 * alone, measured(root.path()).allocatedBytes);
}

TEST(LinuxDirectoryWalker, sparseFilesCountWhatTheyOccupy) {
    const TemporaryFolder root;
    const std::string file = root.write("sparse", "x");
    ASSERT_EQ(0, ::truncate(file.c_str(), std::int64_t{1} << 40));
    const TreeSize size = measured(root.path());
    EXPECT_EQ(reference(root.path()), size);
    EXPECT_LT(size.allocatedBytes, 1 << 20);
}

TEST(LinuxDirectoryWalker, fifosAndSocketsAreNeverOpened) {
    const TemporaryFolder root;
    ASSERT_EQ(0, ::mkfifo(root.path("fifo").c_str(), 0600));
    const LinuxFileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, root.path("socket").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(0, ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
    EXPECT_EQ((TreeSize{true, 0, 2, 0, false}), measured(root.path()));
}

TEST(LinuxDirectoryWalker, foldersThatCannotBeListedAreCounted) {
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

TEST(LinuxDirectoryWalker, cancelledIsAskedOncePerEntryAndEndsTheWalk) {
    const TemporaryFolder root;
    makeChain(root.path(), 12, [](int folder, int) {
        makeFileAt(folder, "file", 5000);
        ASSERT_EQ(0, ::mkdirat(folder, "side", 0755));
    });
    std::int64_t asked = 0;
    const TreeSize whole = measured(root.path(), [&asked] { return ++asked < 0; });
    EXPECT_EQ(whole.entries, asked);
    ASSERT_EQ(36, whole.entries);
    for (std::int64_t last = 1; last <= whole.entries; ++last) {
        asked = 0;
        const TreeSize part = measured(root.path(), [&asked, last] { return ++asked == last; });
        EXPECT_TRUE(part.opened && part.cancelled);
        EXPECT_EQ(last, asked);
        EXPECT_EQ(last - 1, part.entries);
        EXPECT_LE(part.allocatedBytes, whole.allocatedBytes);
    }
}

TEST(LinuxDirectoryWalker, aChainThreeThousandDeepNeedsFewDescriptors) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), 3000, [](int folder, int) { makeFileAt(folder, "file", 5000); });
    DescriptorWatch watch;
    const TreeSize size = measured(root.path(), watch.every(50));
    EXPECT_EQ((TreeSize{true, size.allocatedBytes, 6000, 0, false}), size);
    EXPECT_GE(size.allocatedBytes, 3000 * 5000);
    EXPECT_LE(watch.most, 3);
    EXPECT_EQ(watch.before, openDescriptors());
}

TEST(LinuxDirectoryWalker, everyFolderOfADeepCombIsFoundAgainOnTheWayBack) {
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), combDepth, makeTeethWithFiles);
    DescriptorWatch watch;
    const TreeSize size = measured(root.path(), watch.every(50));
    EXPECT_EQ((TreeSize{true, size.allocatedBytes, combDepth + 2 * (2 * combDepth - 1), 0, false}), size);
    EXPECT_GE(size.allocatedBytes, (2 * combDepth - 1) * 512);
    EXPECT_LE(watch.most, descriptorsAtMost);
    EXPECT_EQ(watch.before, openDescriptors());
}

TEST(LinuxDirectoryWalker, aBranchMovedAwayIsCountedAndNothingElseIsEntered) {
    constexpr int depth = 400;
    constexpr int entries = 3 * depth - 1;
    constexpr int movedLevel = 100;
    const TemporaryFolder outside(TemporaryFolder::fastBase());
    makeChain(outside.path(), 60, makeTeethWithFiles);
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeChain(root.path(), depth, makeTeeth);
    std::string from = root.path();
    for (int level = 0; level < movedLevel; ++level) {
        from += "/d";
    }
    std::string to = outside.path();
    for (int level = 0; level < 60; ++level) {
        to += "/d";
    }
    to += "/moved";
    int asked = 0;
    const TreeSize size = measured(root.path(), [&] {
        if (++asked == entries) {  // the innermost folder is being read
            EXPECT_EQ(0, ::rename(from.c_str(), to.c_str()));
        }
        return false;
    });
    EXPECT_TRUE(size.opened);
    EXPECT_EQ(entries, size.entries);
    EXPECT_EQ(0, size.allocatedBytes);
    EXPECT_GT(size.unreadable, 0);
}

TEST(LinuxDirectoryWalker, aTreeDeletedWhileItIsWalkedIsNoError) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const TemporaryFolder root(TemporaryFolder::fastBase());
        std::filesystem::create_directory(root.path("tree"));
        RandomTree(seed).fill(root.path("tree"), 6);
        makeChain(root.path("tree"), 200, [](int folder, int) { ::mkdirat(folder, "side", 0755); });
        std::int64_t asked = 0;
        std::thread deleting;
        const TreeSize size = measured(root.path("tree"), [&] {
            if (++asked == 20) {
                deleting = std::thread([&root] {
                    std::error_code ignored;
                    std::filesystem::remove_all(root.path("tree"), ignored);
                });
            }
            return false;
        });
        deleting.join();
        EXPECT_TRUE(size.opened);
        EXPECT_EQ(asked, size.entries);
        EXPECT_FALSE(size.cancelled);
    }
}

TEST(LinuxDirectoryWalker, aFolderSwappedForALinkIsNotFollowed) {
    const TemporaryFolder outside;
    outside.write("large", std::string(100000, 'x'));
    const TemporaryFolder root;
    std::filesystem::create_directory(root.path("a"));
    std::filesystem::create_directory(root.path("b"));
    int asked = 0;
    const TreeSize size = measured(root.path(), [&] {
        if (++asked == 2) {  // both names were read from the folder, neither was opened
            for (const char* name : {"a", "b"}) {
                EXPECT_EQ(0, ::rmdir(root.path(name).c_str()));
                EXPECT_EQ(0, ::symlink(outside.path().c_str(), root.path(name).c_str()));
            }
        }
        return false;
    });
    EXPECT_EQ((TreeSize{true, 0, 2, 2, false}), size);
}

TEST(LinuxDirectoryWalker, readsAFolderOfManyFilesWhole) {
    constexpr int files = 9000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    const LinuxFileDescriptor folder(::open(root.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int number = 0; number < files; ++number) {
        const std::string name = "a file with a name of some length, number " + std::to_string(number);
        const LinuxFileDescriptor file(::openat(folder.get(), name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    }
    EXPECT_EQ((TreeSize{true, 0, files, 0, false}), measured(root.path()));
}

TEST(LinuxDirectoryWalker, outOfDescriptorsItCountsWhatItCannotOpen) {
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
