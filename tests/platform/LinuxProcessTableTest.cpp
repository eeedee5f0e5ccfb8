#include "platform/linux/LinuxProcessTable.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/linux/LinuxFileDescriptor.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/ChildProgram.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t someUser = 4321;

// A tree in the shape of /proc with 200 seconds since boot. It has no "self", so no process is known to stand still.
class LinuxProcessTableTest : public testing::Test {
protected:
    struct Process {
        std::string name = "tool";
        std::uint64_t ticks = 0;
        std::uint64_t startTime = 10'000;
        std::uint64_t code = 4096;
        std::uint32_t realOwner = someUser;
        std::int64_t pages = 3;
    };

    LinuxProcessTableTest() { static_cast<void>(proc.write("uptime", "200.00 400.00\n")); }

    void write(const std::string& number, const Process& process) const {
        fs::create_directories(proc.path(number));
        static_cast<void>(proc.write(number + "/status", "Name:\ttool\nUmask:\t0022\nUid:\t" +
                                                             std::to_string(process.realOwner) + "\t0\t0\t0\n"));
        static_cast<void>(proc.write(number + "/stat", number + " (" + process.name + ") S 1 1 1 0 -1 0 0 0 0 0 " +
                                                           std::to_string(process.ticks) + " 0 0 0 20 0 1 0 " +
                                                           std::to_string(process.startTime) + " 0 0 0 " +
                                                           std::to_string(process.code) + " 5000 6000 0 0 0\n"));
        static_cast<void>(proc.write(number + "/statm", "9 " + std::to_string(process.pages) + " 1 1 0 1 0\n"));
    }

    void link(const std::string& number, const std::string& executable) const {
        fs::remove(proc.path(number + "/exe"));
        fs::create_symlink(executable, proc.path(number + "/exe"));
    }

    std::vector<ProcessRecord> refresh(bool isThorough = false) {
        const LinuxFileDescriptor folder(::open(proc.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        return table.refresh(folder.get(), isThorough);
    }

    TemporaryFolder proc;
    LinuxProcessTable table{someUser, 100, 4};
};

TEST_F(LinuxProcessTableTest, processesOfTheUserAreListedByNumber) {
    write("1000", {"tool", 50, 10'000});
    link("1000", "/opt/some tool/bin/tool");
    write("200", {"other", 0, 19'000, 4096, someUser, 0});
    write("300", {"foreign", 0, 10'000, 4096, someUser + 1});
    static_cast<void>(proc.write("version", "Linux"));
    fs::create_directories(proc.path("400x"));
    EXPECT_EQ(refresh(), (std::vector<ProcessRecord>{{200, 0, "0.0", "other", 19'000},
                                                     {1000, 12, "0.5", "/opt/some tool/bin/tool", 10'000}}));
    EXPECT_EQ(table.active(), (std::vector<std::int32_t>{200, 1000}));
}

TEST_F(LinuxProcessTableTest, oddNamesAreWholeWhereNoExecutableIsSeen) {
    const std::vector<std::string> names{"two words", "a) S 1 (b", "line\nend", "\xff\xfe bad", ")", " "};
    for (std::size_t i = 0; i < names.size(); ++i) {
        write(std::to_string(100 + i), {names[i]});
    }
    const std::vector<ProcessRecord> records = refresh();
    ASSERT_EQ(records.size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(records[i].command, names[i]);
    }
}

TEST_F(LinuxProcessTableTest, executableThatWasDeletedKeepsItsName) {
    write("100", {});
    link("100", "/home/u/target/debug/server (deleted)");
    EXPECT_EQ(refresh().front().command, "/home/u/target/debug/server");
}

TEST_F(LinuxProcessTableTest, figuresFollowTheProcess) {
    write("100", {});
    link("100", "/bin/tool");
    EXPECT_EQ(refresh().front(), (ProcessRecord{100, 12, "0.0", "/bin/tool", 10'000}));
    write("100", {"tool", 25, 10'000, 4096, someUser, 7});
    EXPECT_EQ(refresh().front(), (ProcessRecord{100, 28, "0.2", "/bin/tool", 10'000}));
}

TEST_F(LinuxProcessTableTest, anotherImageIsAnotherCommand) {
    write("100", {});
    link("100", "/bin/sh");
    EXPECT_EQ(refresh().front().command, "/bin/sh");
    write("100", {"tool", 0, 10'000, 8192});
    link("100", "/bin/server");
    EXPECT_EQ(refresh().front().command, "/bin/server");
}

TEST_F(LinuxProcessTableTest, nextHolderOfANumberIsAnotherProcess) {
    write("100", {});
    link("100", "/bin/old");
    EXPECT_EQ(refresh().front().command, "/bin/old");
    write("100", {"tool", 0, 15'000});
    link("100", "/bin/new");
    EXPECT_EQ(refresh().front(), (ProcessRecord{100, 12, "0.0", "/bin/new", 15'000}));
}

TEST_F(LinuxProcessTableTest, processThatShowsNoImageIsReadWholeEachTime) {
    fs::create_directories(proc.path("100"));
    write("100", {});
    static_cast<void>(proc.write("100/stat", "100 (tool) Z 1 1 1 0 -1 0 0 0 0 0 0 0 0 0 20 0 1 0 10000 0 0 0 0 0 0\n"));
    EXPECT_EQ(refresh().front().command, "tool");
    link("100", "/bin/server");
    EXPECT_EQ(refresh().front().command, "/bin/server");
    static_cast<void>(proc.write("100/status", "Name:\ttool\nUid:\t0\t0\t0\t0\n"));
    EXPECT_TRUE(refresh().empty());
}

TEST_F(LinuxProcessTableTest, renamedExecutableIsSeenByAThoroughLook) {
    write("100", {});
    link("100", "/bin/old");
    EXPECT_EQ(refresh().front().command, "/bin/old");
    link("100", "/bin/renamed");
    EXPECT_EQ(refresh(true).front().command, "/bin/renamed");
}

TEST_F(LinuxProcessTableTest, processOfAnotherThatBecomesTheUsersIsSeenByAThoroughLook) {
    write("100", {"login", 0, 10'000, 4096, 0});
    EXPECT_TRUE(refresh().empty());
    write("100", {"login"});
    EXPECT_EQ(refresh(true).size(), 1U);
}

TEST_F(LinuxProcessTableTest, endedProcessesAndThoseEndingMeanwhileAreLeftOut) {
    write("100", {});
    write("200", {});
    fs::remove(proc.path("200/statm"));
    fs::create_directories(proc.path("300"));
    EXPECT_EQ(refresh().size(), 1U);
    fs::remove_all(proc.path("100"));
    EXPECT_TRUE(refresh().empty());
    EXPECT_TRUE(table.active().empty());
}

TEST_F(LinuxProcessTableTest, textThatIsNoneIsNoProcess) {
    write("100", {});
    static_cast<void>(proc.write("100/stat", ""));
    write("200", {});
    static_cast<void>(proc.write("200/stat", "200 (tool) S 1 1"));
    write("300", {});
    static_cast<void>(proc.write("300/status", "Name:\ttool\n"));
    write("400", {});
    static_cast<void>(proc.write("400/statm", "\n"));
    EXPECT_TRUE(refresh().empty());
}

// The real /proc, where a stopped child is one that did not run.
class RealProcessTable : public testing::Test {
protected:
    std::vector<ProcessRecord> refresh(bool isThorough = false) { return table.refresh(folder.get(), isThorough); }

    [[nodiscard]] bool isActive(pid_t pid) const {
        return std::binary_search(table.active().begin(), table.active().end(), pid);
    }

    LinuxFileDescriptor folder{::open("/proc", O_PATH | O_DIRECTORY | O_CLOEXEC)};
    LinuxProcessTable table{::getuid(), 100, 4};
};

TEST_F(RealProcessTable, processThatDidNotRunIsNotActive) {
    const ChildProgram child;
    child.stop();
    const std::vector<ProcessRecord> first = refresh();
    EXPECT_TRUE(isActive(child.pid()));
    // The last steps to a standstill may come after the stop was told.
    std::vector<ProcessRecord> second = refresh();
    for (int turn = 0; turn < 100 && isActive(child.pid()); ++turn) {
        second = refresh();
    }
    EXPECT_FALSE(isActive(child.pid()));
    EXPECT_TRUE(isActive(::getpid()));
    const auto isChild = [&](const ProcessRecord& record) { return record.pid == child.pid(); };
    const auto before = std::find_if(first.begin(), first.end(), isChild);
    const auto after = std::find_if(second.begin(), second.end(), isChild);
    ASSERT_NE(before, first.end());
    ASSERT_NE(after, second.end());
    EXPECT_EQ(before->command, after->command);
    EXPECT_EQ(before->residentKilobytes, after->residentKilobytes);
}

TEST_F(RealProcessTable, processThatRanIsActive) {
    const ChildProgram child;
    static_cast<void>(refresh());
    EXPECT_TRUE(child.echoes());
    static_cast<void>(refresh());
    EXPECT_TRUE(isActive(child.pid()));
}

}  // namespace
}  // namespace kestrune
