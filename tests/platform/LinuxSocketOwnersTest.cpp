#include "platform/linux/LinuxSocketOwners.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/linux/LinuxFileDescriptor.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;
using Holder = LinuxSocketOwners::Holder;

// A tree in the shape of /proc, whose links lead nowhere.
class LinuxSocketOwnersTest : public testing::Test {
protected:
    void open(int pid, int descriptor, const std::string& target) const {
        const std::string folder = std::to_string(pid) + "/fd";
        fs::create_directories(proc.path(folder));
        close(pid, descriptor);
        fs::create_symlink(target, proc.path(folder + "/" + std::to_string(descriptor)));
    }

    void openSocket(int pid, int descriptor, std::uint64_t inode) const {
        open(pid, descriptor, "socket:[" + std::to_string(inode) + "]");
    }

    void close(int pid, int descriptor) const {
        fs::remove(proc.path(std::to_string(pid) + "/fd/" + std::to_string(descriptor)));
    }

    void run(int pid, std::uint64_t startTime = 1) { processes.push_back({pid, 0, "", "", startTime}); }

    const std::vector<Holder>& refresh(bool isThorough = false) {
        const LinuxFileDescriptor folder(::open(proc.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        owners.refresh({folder.get(), inodes, processes, active, isThorough});
        return owners.holders();
    }

    TemporaryFolder proc;
    std::vector<std::uint64_t> inodes;
    std::vector<ProcessRecord> processes;
    std::vector<std::int32_t> active;
    LinuxSocketOwners owners;
};

TEST_F(LinuxSocketOwnersTest, eachSocketIsFoundAtItsHolder) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    openSocket(20, 4, 88);
    openSocket(20, 5, 99);
    inodes = {77, 88};
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}, {20, 4, 88}}));
}

TEST_F(LinuxSocketOwnersTest, socketOfSeveralProcessesBelongsToEachOfThemOnce) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    openSocket(20, 3, 77);
    openSocket(20, 9, 77);
    inodes = {77};
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}, {20, 3, 77}}));
}

TEST_F(LinuxSocketOwnersTest, descriptorsThatAreNoSocketsAreLeftOut) {
    run(10);
    open(10, 0, "/dev/null");
    open(10, 1, "pipe:[77]");
    open(10, 2, "socket:[77");
    open(10, 3, "socket:[]");
    open(10, 4, "socket:[99999999999999999999]");
    open(10, 5, "socket:[77]x");
    open(10, 6, "/tmp/socket:[77]");
    inodes = {77};
    EXPECT_TRUE(refresh().empty());
}

TEST_F(LinuxSocketOwnersTest, closedSocketIsGone) {
    run(10);
    openSocket(10, 3, 77);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 1U);
    inodes = {};
    EXPECT_TRUE(refresh().empty());
}

TEST_F(LinuxSocketOwnersTest, endedHolderIsGoneAndTheOtherStays) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    openSocket(20, 3, 77);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 2U);
    processes.erase(processes.begin());
    EXPECT_EQ(refresh(), (std::vector<Holder>{{20, 3, 77}}));
}

TEST_F(LinuxSocketOwnersTest, newProcessThatInheritedASocketIsFound) {
    run(10);
    openSocket(10, 3, 77);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 1U);
    run(20);
    openSocket(20, 3, 77);
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}, {20, 3, 77}}));
}

TEST_F(LinuxSocketOwnersTest, nextHolderOfANumberIsLookedThroughAnew) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    openSocket(20, 3, 77);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 2U);
    processes[1].startTime = 2;
    close(20, 3);
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}}));
}

TEST_F(LinuxSocketOwnersTest, processThatClosedItsDescriptorHoldsNothingAnyMore) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    openSocket(20, 3, 77);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 2U);
    close(20, 3);
    active = {20};
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}}));
}

TEST_F(LinuxSocketOwnersTest, descriptorThatMovedIsFoundAgain) {
    run(10);
    openSocket(10, 3, 77);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 1U);
    open(10, 3, "/dev/null");
    openSocket(10, 8, 77);
    active = {10};
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 8, 77}}));
}

TEST_F(LinuxSocketOwnersTest, socketThatWasHandedOnIsFoundAtItsNewHolder) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    open(20, 0, "/dev/null");
    inodes = {77};
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}}));
    close(10, 3);
    openSocket(20, 5, 77);
    active = {10, 20};
    EXPECT_EQ(refresh(), (std::vector<Holder>{{20, 5, 77}}));
}

TEST_F(LinuxSocketOwnersTest, newSocketOfAKnownProcessIsFoundAtAllItsHolders) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    openSocket(20, 3, 88);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 1U);
    inodes = {77, 88};
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}, {20, 3, 88}}));
}

TEST_F(LinuxSocketOwnersTest, socketSharedWithAKnownProcessIsFoundByAThoroughLook) {
    run(10);
    run(20);
    openSocket(10, 3, 77);
    inodes = {77};
    EXPECT_EQ(refresh().size(), 1U);
    openSocket(20, 3, 77);
    active = {20};
    EXPECT_EQ(refresh().size(), 1U);
    active = {};
    EXPECT_EQ(refresh(true), (std::vector<Holder>{{10, 3, 77}, {20, 3, 77}}));
}

TEST_F(LinuxSocketOwnersTest, nothingIsLookedAtAgainWhileNothingRuns) {
    run(10);
    openSocket(10, 3, 77);
    inodes = {77, 99};
    EXPECT_EQ(refresh().size(), 1U);
    // Nobody here holds 99; that is no reason to go on looking for it.
    fs::remove_all(proc.path("10"));
    EXPECT_EQ(refresh(), (std::vector<Holder>{{10, 3, 77}}));
}

TEST_F(LinuxSocketOwnersTest, processWhoseDescriptorsCannotBeReadHoldsNothing) {
    run(10);
    inodes = {77};
    EXPECT_TRUE(refresh().empty());
}

}  // namespace
}  // namespace kestrune
