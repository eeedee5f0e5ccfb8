#include "platform/linux/LinuxPinnedProcess.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/platform/ChildProgram.h"

namespace kestrune {
namespace {

TEST(LinuxPinnedProcess, runningProgramIsTheSameByStartAndCommand) {
    const ChildProgram child;
    const auto pinned = LinuxPinnedProcess::open(child.pid());
    ASSERT_TRUE(pinned);
    EXPECT_FALSE(pinned->hasEnded());
    EXPECT_TRUE(pinned->startedAt(child.startTime()));
    EXPECT_TRUE(pinned->isSame(child.startTime(), child.command()));
    EXPECT_TRUE(pinned->isSame(0, child.command()));
    EXPECT_EQ(pinned->realOwner(), ::getuid());
}

TEST(LinuxPinnedProcess, anotherStartOrCommandIsAnotherProcess) {
    const ChildProgram child;
    const auto pinned = LinuxPinnedProcess::open(child.pid());
    ASSERT_TRUE(pinned);
    EXPECT_FALSE(pinned->startedAt(child.startTime() + 1));
    EXPECT_FALSE(pinned->startedAt(0));
    EXPECT_FALSE(pinned->isSame(child.startTime() - 1, child.command()));
    EXPECT_FALSE(pinned->isSame(child.startTime(), "cat"));
    EXPECT_FALSE(pinned->isSame(child.startTime(), child.command() + " "));
    EXPECT_FALSE(pinned->isSame(child.startTime(), ""));
}

TEST(LinuxPinnedProcess, programThatBecameAnotherIsNotTheSame) {
    const ChildProgram child({"/bin/sh", "-c", "read line; exec /bin/cat"});
    const std::string command = child.command();
    const auto pinned = LinuxPinnedProcess::open(child.pid());
    ASSERT_TRUE(pinned);
    EXPECT_TRUE(pinned->isSame(child.startTime(), command));
    child.write("go\n");
    ASSERT_TRUE(child.echoes());
    EXPECT_FALSE(pinned->isSame(child.startTime(), command));
    EXPECT_TRUE(pinned->startedAt(child.startTime()));
}

TEST(LinuxPinnedProcess, endedProcessIsNoLongerTheSameReapedOrNot) {
    ChildProgram child;
    const std::string command = child.command();
    const std::uint64_t startTime = child.startTime();
    const auto pinned = LinuxPinnedProcess::open(child.pid());
    ASSERT_TRUE(pinned);
    child.endUnreaped();
    EXPECT_TRUE(pinned->hasEnded());
    EXPECT_FALSE(pinned->startedAt(startTime));
    EXPECT_FALSE(pinned->isSame(startTime, command));
    EXPECT_FALSE(pinned->isSame(startTime, "cat"));
    static_cast<void>(child.endingSignal());
    EXPECT_TRUE(pinned->hasEnded());
    EXPECT_FALSE(pinned->startedAt(startTime));
    EXPECT_EQ(pinned->realOwner(), std::nullopt);
    EXPECT_FALSE(pinned->send(SIGKILL));
}

TEST(LinuxPinnedProcess, signalReachesTheProcess) {
    ChildProgram child;
    const auto pinned = LinuxPinnedProcess::open(child.pid());
    ASSERT_TRUE(pinned);
    EXPECT_TRUE(pinned->send(SIGUSR1));
    EXPECT_EQ(child.endingSignal(), SIGUSR1);
}

TEST(LinuxPinnedProcess, numbersThatStandForNoSingleProcessAreRefused) {
    for (const std::int32_t pid : {1, 0, -1, -4711, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_FALSE(LinuxPinnedProcess::open(pid)) << pid;
    }
}

TEST(LinuxPinnedProcess, numberThatNobodyHasIsRefused) {
    // Above the largest number that any kernel gives out.
    EXPECT_FALSE(LinuxPinnedProcess::open(std::numeric_limits<std::int32_t>::max()));
}

TEST(LinuxPinnedProcess, descriptorsAreClosedAgain) {
    const ChildProgram child;
    const int before = LinuxFileDescriptor(::dup(STDIN_FILENO)).get();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(LinuxPinnedProcess::open(child.pid()));
    }
    EXPECT_EQ(LinuxFileDescriptor(::dup(STDIN_FILENO)).get(), before);
}

}  // namespace
}  // namespace kestrune
