/// How every system keeps small files.
/// Included once by a program that says what StoreUnderTest is.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr std::size_t plenty = 1 << 20;

using Names = std::set<std::string>;

/// No file may grow beyond this many bytes while it lives: write(2) then stops half-way.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

class FileStoreTest : public testing::Test {
protected:
    [[nodiscard]] Names names(const std::string& path) const {
        Names found;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            found.insert(entry.path().filename().string());
        }
        return found;
    }

    [[nodiscard]] static unsigned modeOf(const std::string& path) {
        struct stat status {};

        EXPECT_EQ(0, ::lstat(path.c_str(), &status));
        return status.st_mode & 07777U;
    }

    /// A file as a killed writer of "file" leaves it behind.
    [[nodiscard]] std::string leaveBehind(const std::string& suffix = "0123456789abcdef") const {
        std::string path = folder.write(".file.kestrune-" + suffix, "half");
        EXPECT_EQ(0, ::chmod(path.c_str(), 0600));
        return path;
    }

    TemporaryFolder folder{TemporaryFolder::fastBase()};
    const std::string file = folder.path("file");
    StoreUnderTest store;
};

TEST_F(FileStoreTest, whatWasReplacedIsReadBack) {
    const std::string bytes = std::string("a\0\xFF\n", 4) + std::string(300000, 'x');
    EXPECT_TRUE(store.replace(file, bytes));
    EXPECT_EQ(bytes, store.read(file, plenty).bytes);
    EXPECT_TRUE(store.replace(file, ""));
    EXPECT_EQ("", store.read(file, plenty).bytes);
    EXPECT_EQ(Names{"file"}, names(folder.path()));
}

TEST_F(FileStoreTest, filesAreTheUsersOwnAndSoAreTheFoldersMadeForThem) {
    const std::string deep = folder.path("a/b/c/file");
    EXPECT_TRUE(store.replace(deep, "x"));
    EXPECT_EQ(0600U, modeOf(deep));
    EXPECT_EQ(0700U, modeOf(folder.path("a")));
    EXPECT_EQ(0700U, modeOf(folder.path("a/b/c")));
    ASSERT_EQ(0, ::chmod(deep.c_str(), 0644));
    EXPECT_TRUE(store.replace(deep, "y"));
    EXPECT_EQ(0600U, modeOf(deep));
}

TEST_F(FileStoreTest, readingTellsMissingFromUnreadableFromTooLarge) {
    std::filesystem::create_directory(folder.path("directory"));
    ASSERT_EQ(0, ::mkfifo(folder.path("fifo").c_str(), 0600));
    ASSERT_EQ(0, ::symlink("nowhere", folder.path("dangling").c_str()));
    ASSERT_EQ(0, ::symlink("loop", folder.path("loop").c_str()));
    folder.write("ten", "0123456789");
    EXPECT_EQ(ReadFailure::missing, store.read(folder.path("missing"), plenty).failure);
    EXPECT_EQ(ReadFailure::missing, store.read(folder.path("ten/below"), plenty).failure);
    EXPECT_EQ(ReadFailure::missing, store.read(folder.path("dangling"), plenty).failure);
    EXPECT_EQ(ReadFailure::missing, store.read(folder.path("ten") + std::string("\0x", 2), plenty).failure);
    for (const char* name : {"directory", "fifo", "loop"}) {
        const FileContent content = store.read(folder.path(name), plenty);
        EXPECT_EQ(std::nullopt, content.bytes) << name;
        EXPECT_EQ(ReadFailure::unreadable, content.failure) << name;
    }
    EXPECT_EQ(ReadFailure::unreadable, store.read("/dev/zero", plenty).failure);
    EXPECT_EQ("0123456789", store.read(folder.path("ten"), 10).bytes);
    EXPECT_EQ(ReadFailure::tooLarge, store.read(folder.path("ten"), 9).failure);
    EXPECT_EQ(std::nullopt, store.read(folder.path("ten"), 9).bytes);
}

TEST_F(FileStoreTest, aFileThatIsLongerThanItSaysIsReadWholeAndBounded) {
    const FileContent content = store.read("/proc/self/limits", plenty);  // its length is given as 0
    ASSERT_TRUE(content.bytes);
    EXPECT_NE(std::string::npos, content.bytes->find("Max open files"));
    EXPECT_EQ(ReadFailure::tooLarge, store.read("/proc/self/limits", 100).failure);
}

TEST_F(FileStoreTest, whatIsNoRegularFileIsNotReplaced) {
    std::filesystem::create_directory(folder.path("directory"));
    ASSERT_EQ(0, ::mkfifo(folder.path("fifo").c_str(), 0600));
    const Names before = names(folder.path());
    for (const std::string& path : {folder.path("directory"), folder.path("fifo"), folder.path("directory/"),
                                    folder.path("directory/."), folder.path("directory/.."), std::string(),
                                    folder.path(std::string(255, 'n')), folder.path("file") + std::string("\0x", 2)}) {
        EXPECT_FALSE(store.replace(path, "x")) << path;
    }
    EXPECT_EQ(before, names(folder.path()));
    EXPECT_TRUE(std::filesystem::is_fifo(folder.path("fifo")));
}

TEST_F(FileStoreTest, theUsersLinkStaysAndTheFileItLeadsToIsReplaced) {
    std::filesystem::create_directory(folder.path("dotfiles"));
    folder.write("dotfiles/real", "old");
    ASSERT_EQ(0, ::symlink("dotfiles/real", file.c_str()));
    EXPECT_TRUE(store.replace(file, "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ("new", TemporaryFolder::contentOf(folder.path("dotfiles/real")));
    EXPECT_EQ((Names{"dotfiles", "file"}), names(folder.path()));
    EXPECT_EQ(Names{"real"}, names(folder.path("dotfiles")));
}

TEST_F(FileStoreTest, linksThatLeadNowhereOrOnwardAreNotFollowed) {
    folder.write("real", "old");
    ASSERT_EQ(0, ::symlink("real", folder.path("one").c_str()));
    ASSERT_EQ(0, ::symlink("one", folder.path("two").c_str()));
    ASSERT_EQ(0, ::symlink("nowhere", folder.path("dangling").c_str()));
    ASSERT_EQ(0, ::symlink("/dev/null", folder.path("null").c_str()));
    ASSERT_EQ(0, ::symlink("loop", folder.path("loop").c_str()));
    const Names before = names(folder.path());
    for (const char* name : {"two", "dangling", "null", "loop"}) {
        EXPECT_FALSE(store.replace(folder.path(name), "new")) << name;
        EXPECT_TRUE(std::filesystem::is_symlink(folder.path(name))) << name;
    }
    EXPECT_EQ("old", TemporaryFolder::contentOf(folder.path("real")));
    EXPECT_EQ(before, names(folder.path()));
}

TEST_F(FileStoreTest, aDiskThatFillsUpLeavesTheOldFileWhole) {
    const std::string old(100, 'o');
    ASSERT_TRUE(store.replace(file, old));
    for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{4096}, rlim_t{99999}}) {
        const FileSizeLimit limit(room);
        EXPECT_FALSE(store.replace(file, std::string(100000, 'n'))) << room;
        EXPECT_FALSE(store.replace(folder.path("new/folder/file"), std::string(100000, 'n'))) << room;
    }
    EXPECT_EQ(old, store.read(file, plenty).bytes);
    EXPECT_EQ(Names{"file"}, names(folder.path()));
}

TEST_F(FileStoreTest, aFileWhereAFolderShouldBeIsAFailure) {
    folder.write("plain", "text");
    EXPECT_FALSE(store.replace(folder.path("plain/below/file"), "x"));
    EXPECT_EQ("text", TemporaryFolder::contentOf(folder.path("plain")));
    EXPECT_EQ(Names{"plain"}, names(folder.path()));
}

TEST_F(FileStoreTest, whatAKilledRunLeftIsCleanedUpByTheNextReplace) {
    const std::string first = leaveBehind();
    const std::string second = leaveBehind("fedcba9876543210");
    EXPECT_TRUE(store.replace(file, "new"));
    EXPECT_EQ(Names{"file"}, names(folder.path()));
}

TEST_F(FileStoreTest, filesOfOthersAreNotTakenForLeftovers) {
    folder.write(".file.kestrune-0123456789abcde", "short suffix");
    folder.write(".file.kestrune-0123456789abcdeF", "other digits");
    folder.write(".other.kestrune-0123456789abcdef", "of another file");
    folder.write("file.tmp", "of another program");
    folder.write(".file.kestrune-1111111111111111", "readable by others");
    ASSERT_EQ(0, ::chmod(folder.path(".file.kestrune-1111111111111111").c_str(), 0644));
    std::filesystem::create_directory(folder.path(".file.kestrune-2222222222222222"));
    ASSERT_EQ(0, ::symlink("file.tmp", folder.path(".file.kestrune-3333333333333333").c_str()));
    const std::string linked = leaveBehind("4444444444444444");
    ASSERT_EQ(0, ::link(linked.c_str(), folder.path("kept").c_str()));
    ASSERT_EQ(0, ::mkfifo(folder.path(".file.kestrune-5555555555555555").c_str(), 0600));
    Names before = names(folder.path());
    EXPECT_TRUE(store.replace(file, "new"));
    before.insert("file");
    EXPECT_EQ(before, names(folder.path()));
    EXPECT_EQ("half", TemporaryFolder::contentOf(linked));
    EXPECT_EQ("of another program", TemporaryFolder::contentOf(folder.path("file.tmp")));
}

TEST_F(FileStoreTest, theFileOfALivingWriterIsNoLeftover) {
    const std::string path = leaveBehind();
    LinuxFileDescriptor writer(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(0, ::flock(writer.get(), LOCK_EX));
    EXPECT_TRUE(store.replace(file, "new"));
    EXPECT_TRUE(std::filesystem::exists(path));
    writer.reset();
    EXPECT_TRUE(store.replace(file, "newer"));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(FileStoreTest, writersOfOneFileNeverDisturbEachOther) {
    constexpr int writers = 4;
    constexpr int rounds = 50;
    std::vector<int> failures(writers, 0);
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer) {
        threads.emplace_back([this, writer, &failures] {
            const std::string bytes(5000, static_cast<char>('a' + writer));
            for (int round = 0; round < rounds; ++round) {
                failures[static_cast<std::size_t>(writer)] += StoreUnderTest().replace(file, bytes) ? 0 : 1;
                const auto seen = store.read(file, plenty).bytes;
                const bool isWhole =
                    seen && seen->size() == 5000 && seen->find_first_not_of(seen->front()) == std::string::npos;
                failures[static_cast<std::size_t>(writer)] += isWhole ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::vector<int>(writers, 0), failures);
    EXPECT_EQ(Names{"file"}, names(folder.path()));
}

TEST_F(FileStoreTest, settingAsideTakesTheNextFreeName) {
    folder.write("file.unreadable-2", "taken");
    for (const char* bytes : {"first", "second"}) {
        folder.write("file", bytes);
        EXPECT_TRUE(store.setAside(file));
    }
    EXPECT_EQ((Names{"file.unreadable-1", "file.unreadable-2", "file.unreadable-3"}), names(folder.path()));
    EXPECT_EQ("first", TemporaryFolder::contentOf(folder.path("file.unreadable-1")));
    EXPECT_EQ("taken", TemporaryFolder::contentOf(folder.path("file.unreadable-2")));
    EXPECT_EQ("second", TemporaryFolder::contentOf(folder.path("file.unreadable-3")));
    EXPECT_FALSE(store.setAside(file));
    EXPECT_FALSE(store.setAside(folder.path("no/folder")));
}

TEST_F(FileStoreTest, aLinkIsSetAsideItself) {
    folder.write("real", "text");
    ASSERT_EQ(0, ::symlink("real", file.c_str()));
    EXPECT_TRUE(store.setAside(file));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("file.unreadable-1")));
    EXPECT_EQ("text", TemporaryFolder::contentOf(folder.path("real")));
}

TEST_F(FileStoreTest, namesAreBytes) {
    const std::string odd = folder.path("\xFF\xFE/new\nline");
    EXPECT_TRUE(store.replace(odd, "x"));
    EXPECT_EQ("x", store.read(odd, plenty).bytes);
    EXPECT_TRUE(store.setAside(odd));
}

}  // namespace
}  // namespace kestrune
