#include "platform/linux/LinuxProcessControl.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <limits>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/ChildProgram.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

constexpr uid_t anotherUser = 65534;

ProcessReference referenceTo(const ChildProgram& child) {
    return {child.pid(), child.command(), child.startTime()};
}

// Runs test in a process of its own that restrict() has taken rights from; true when it came to its end with true.
bool isTrueWhen(const std::function<bool()>& restrict, const std::function<bool()>& test) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        const bool result = restrict() && test();
        // The plain call: it is all that the strictest of the restrictions leaves.
        ::syscall(SYS_exit, result ? 0 : 1);
    }
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// From here on every system call but read, write and exit kills this process.
bool forbidSystemCalls() {
    return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT) == 0;
}

// From here on this process runs on a kernel without process descriptors.
bool forgetProcessDescriptors() {
    // clang-format off
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pidfd_open, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    // clang-format on
    const sock_fprog filter{std::size(program), program};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

class LinuxProcessControlTest : public testing::Test {
protected:
    LinuxProcessControl control;
};

TEST_F(LinuxProcessControlTest, requestReachesExactlyTheProcessMeant) {
    const ChildProgram before;
    ChildProgram meant;
    const ChildProgram after;
    EXPECT_TRUE(control.requestTermination(referenceTo(meant)));
    EXPECT_EQ(meant.endingSignal(), SIGTERM);
    EXPECT_TRUE(before.echoes());
    EXPECT_TRUE(after.echoes());
}

TEST_F(LinuxProcessControlTest, startTimeIsCheckedOnlyWhenItIsKnown) {
    ChildProgram child;
    ProcessReference process = referenceTo(child);
    for (const std::uint64_t another : {process.startTime + 1, process.startTime - 1, ~std::uint64_t{0}}) {
        EXPECT_FALSE(control.requestTermination({process.pid, process.command, another}));
    }
    EXPECT_TRUE(child.echoes());
    process.startTime = 0;
    EXPECT_TRUE(control.requestTermination(process));
    EXPECT_EQ(child.endingSignal(), SIGTERM);
}

TEST_F(LinuxProcessControlTest, anotherCommandUnderThatNumberIsNotSignalled) {
    const ChildProgram child;
    const ProcessReference process = referenceTo(child);
    for (const std::string& command : {std::string(), std::string("cat"), process.command + " ", process.command + "x",
                                       process.command + " (deleted)", process.command.substr(1)}) {
        EXPECT_FALSE(control.requestTermination({process.pid, command, process.startTime})) << command;
    }
    EXPECT_TRUE(child.echoes());
}

TEST_F(LinuxProcessControlTest, programThatBecameAnotherSinceItWasListedIsNotSignalled) {
    const ChildProgram child({"/bin/sh", "-c", "read line; exec /bin/cat"});
    const ProcessReference listed = referenceTo(child);
    child.write("go\n");
    ASSERT_TRUE(child.echoes());
    EXPECT_FALSE(control.requestTermination(listed));
    EXPECT_TRUE(child.echoes());
}

TEST_F(LinuxProcessControlTest, programWhoseFileWasReplacedIsStillSignalled) {
    const TemporaryFolder folder;
    const std::string program = fs::canonical(folder.path()).string() + "/my server";
    fs::copy_file("/bin/cat", program);
    ChildProgram child({program});
    const ProcessReference listed = referenceTo(child);
    fs::remove(program);
    EXPECT_EQ(listed.command, program);
    EXPECT_TRUE(control.requestTermination(listed));
    EXPECT_EQ(child.endingSignal(), SIGTERM);
}

TEST_F(LinuxProcessControlTest, anotherUsersProcessIsNotSignalled) {
    if (::getuid() != 0) {
        // Without the right to start a process for somebody else, every process of somebody else is one.
        for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
            const LinuxFileDescriptor folder(::open(entry.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
            const auto owner = LinuxProcessIdentity::realOwnerOf(folder.get());
            const auto command = LinuxProcessIdentity::commandOf(folder.get());
            if (owner && command && *owner != ::getuid()) {
                EXPECT_FALSE(control.requestTermination({std::atoi(entry.path().filename().c_str()), *command, 0}));
            }
        }
        return;
    }
    const ChildProgram child({"/bin/cat"}, anotherUser);
    EXPECT_FALSE(control.requestTermination(referenceTo(child)));
    EXPECT_EQ(control.details(referenceTo(child)), std::nullopt);
    EXPECT_TRUE(child.echoes());
}

TEST_F(LinuxProcessControlTest, stoppedProcessGetsTheRequestAndEndsOnceItGoesOn) {
    ChildProgram child;
    child.stop();
    EXPECT_TRUE(control.requestTermination(referenceTo(child)));
    ASSERT_EQ(::kill(child.pid(), SIGCONT), 0);
    EXPECT_EQ(child.endingSignal(), SIGTERM);
}

TEST_F(LinuxProcessControlTest, endedProcessThatNobodyReapedIsNotSignalled) {
    const ChildProgram child;
    const ProcessReference listed = referenceTo(child);
    child.endUnreaped();
    EXPECT_FALSE(control.requestTermination(listed));
    EXPECT_FALSE(control.requestTermination({listed.pid, "cat", listed.startTime}));
    EXPECT_EQ(control.details(listed), std::nullopt);
}

TEST_F(LinuxProcessControlTest, endedProcessIsNotSignalled) {
    ChildProgram child;
    const ProcessReference listed = referenceTo(child);
    ASSERT_EQ(::kill(child.pid(), SIGKILL), 0);
    ASSERT_EQ(child.endingSignal(), SIGKILL);
    EXPECT_FALSE(control.requestTermination(listed));
    EXPECT_EQ(control.details(listed), std::nullopt);
}

TEST_F(LinuxProcessControlTest, numbersBelowTwoAreRefusedWithoutASystemCall) {
    ProcessReference process = referenceTo(ChildProgram());
    for (const std::int32_t pid : {1, 0, -1, -4711, std::numeric_limits<std::int32_t>::min()}) {
        process.pid = pid;
        EXPECT_TRUE(isTrueWhen(forbidSystemCalls, [&] { return !control.requestTermination(process); })) << pid;
        EXPECT_TRUE(isTrueWhen(forbidSystemCalls, [&] { return !control.details(process); })) << pid;
    }
    process.pid = 2;
    EXPECT_FALSE(isTrueWhen(forbidSystemCalls, [&] { return !control.requestTermination(process); }));
}

TEST_F(LinuxProcessControlTest, kernelThatCannotHoldAProcessEndsNone) {
    const ChildProgram child;
    const ProcessReference process = referenceTo(child);
    EXPECT_TRUE(isTrueWhen(forgetProcessDescriptors, [&] { return !control.requestTermination(process); }));
    EXPECT_TRUE(child.echoes());
}

TEST_F(LinuxProcessControlTest, detailsTellTheWorkingFolderAndHowLong) {
    const TemporaryFolder folder;
    const std::string place = fs::canonical(folder.path()).string() + "/my project";
    fs::create_directory(place);
    const ChildProgram child({"/bin/sh", "-c", "cd \"$0\" && exec /bin/cat", place});
    ASSERT_TRUE(child.echoes());
    const auto details = control.details(referenceTo(child));
    ASSERT_TRUE(details);
    EXPECT_EQ(details->workingDirectory, place);
    ASSERT_TRUE(details->secondsRunning);
    EXPECT_GE(*details->secondsRunning, 0);
    EXPECT_LT(*details->secondsRunning, 600);
}

TEST_F(LinuxProcessControlTest, detailsOfAnotherProcessAreNotTold) {
    const ChildProgram child;
    const ProcessReference process = referenceTo(child);
    EXPECT_TRUE(control.details(process));
    EXPECT_EQ(control.details({process.pid, "/bin/another", process.startTime}), std::nullopt);
    EXPECT_EQ(control.details({process.pid, process.command, process.startTime + 1}), std::nullopt);
}

}  // namespace
}  // namespace kestrune
