#include "platform/macos/MacProcessControl.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <limits>

#include "platform/macos/MacChildProcess.h"
#include "platform/macos/MacSystemTools.h"
#include "tests/fakes/FakeProcessRunner.h"
#include "tests/platform/macos/fake_darwin/FakeProcesses.h"

namespace kestrune {
namespace {

constexpr std::uint64_t start = 1'700'000'000'250'000;

// A real process, which the kernel's stand-in describes as it likes.
class MacProcessControlTest : public testing::Test {
protected:
    MacProcessControlTest() {
        FakeProcesses::reset();
        FakeProcesses::set(pid, node);
        ownerIs("  501 /usr/local/bin/node\n");
    }

    ~MacProcessControlTest() override { static_cast<void>(endingSignal(SIGKILL)); }

    void ownerIs(
        const std::string& line, std::function<void()> meanwhile = [] {}) {
        runner.answer("/bin/ps", [line, meanwhile = std::move(meanwhile)](const FakeProcessRunner::Call&) {
            meanwhile();
            return ProcessResult{0, line};
        });
    }

    [[nodiscard]] bool request(std::uint64_t startTime = start) {
        return control.requestTermination({pid, "/usr/local/bin/node", startTime});
    }

    // Sends signal as well, and tells which one ended the process: an earlier one comes first.
    [[nodiscard]] int endingSignal(int signal) {
        if (!isReaped) {
            ::kill(pid, signal);
            ::waitpid(pid, &status, 0);
            isReaped = true;
        }
        return WTERMSIG(status);
    }

    // No signal was sent but the one sent here.
    [[nodiscard]] bool isUntouched() { return endingSignal(SIGUSR1) == SIGUSR1; }

    const FakeProcess node{1'700'000'000, 250'000, 501, "/opt/node/bin/node", "/Users/u/app"};
    MacChildProcess child =
        MacChildProcess::start("/bin/sleep", {"60"}, MacFileDescriptor(::open("/dev/null", O_WRONLY | O_CLOEXEC)))
            .value();
    const pid_t pid = child.pid();
    int status = 0;
    bool isReaped = false;
    FakeProcessRunner runner;
    MacSystemTools tools{501};
    MacProcessControl control{runner, tools, 501};
};

TEST_F(MacProcessControlTest, theProcessMeantGetsTheRequest) {
    EXPECT_TRUE(request());
    ::waitpid(pid, &status, 0);
    isReaped = true;
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    ASSERT_EQ(runner.calls.size(), 1U);
    EXPECT_EQ(runner.calls[0].arguments, (std::vector<std::string>{"-p", std::to_string(pid), "-o", "uid=,comm="}));
}

TEST_F(MacProcessControlTest, aStartTimeThatIsNotKnownIsNotChecked) {
    EXPECT_TRUE(request(0));
}

TEST_F(MacProcessControlTest, anotherStartIsAnotherProcess) {
    EXPECT_FALSE(request(start + 1));
    EXPECT_FALSE(request(start - 1));
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, aNumberThatNowBelongsToAnotherCommandIsNotSignalled) {
    ownerIs("501 /usr/bin/python3\n");
    EXPECT_FALSE(request());
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, aNumberThatChangesHandsWhileTheToolRunsIsNotSignalled) {
    FakeProcess other = node;
    other.startSeconds += 1;
    ownerIs("501 /usr/local/bin/node\n", [&] { FakeProcesses::set(pid, other); });
    EXPECT_FALSE(request());
    FakeProcesses::set(pid, node);
    EXPECT_FALSE(request(0));
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, aProcessThatBecomesAnotherProgramWhileTheToolRunsIsNotSignalled) {
    FakeProcess other = node;
    other.executable = "/usr/bin/vim";
    ownerIs("501 /usr/local/bin/node\n", [&] { FakeProcesses::set(pid, other); });
    EXPECT_FALSE(request());
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, aProcessThatEndsWhileTheToolRunsIsNotSignalled) {
    ownerIs("501 /usr/local/bin/node\n", [&] { FakeProcesses::remove(pid); });
    EXPECT_FALSE(request());
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, anotherUsersProcessIsNotSignalled) {
    ownerIs("0 /usr/local/bin/node\n");
    EXPECT_FALSE(request());
    ownerIs("501 /usr/local/bin/node\n");
    FakeProcess other = node;
    other.user = 0;
    FakeProcesses::set(pid, other);
    EXPECT_FALSE(request());
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, aToolThatFailsSignalsNothing) {
    runner.answer("/bin/ps", {1, "501 /usr/local/bin/node\n"});
    EXPECT_FALSE(request());
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, numbersBelowTwoAreRefusedWithoutALook) {
    for (const std::int32_t number : {1, 0, -1, -4711, std::numeric_limits<std::int32_t>::min()}) {
        FakeProcesses::set(number, node);
        EXPECT_FALSE(control.requestTermination({number, "/usr/local/bin/node", start})) << number;
        EXPECT_EQ(control.details({number, "/usr/local/bin/node", start}), std::nullopt) << number;
    }
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_TRUE(isUntouched());
}

TEST_F(MacProcessControlTest, aSignalThatCannotBeDeliveredIsTold) {
    static_cast<void>(endingSignal(SIGKILL));
    EXPECT_FALSE(request());
}

TEST_F(MacProcessControlTest, detailsAreTheWorkingFolderAndTheTimeSinceTheStart) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now).count();
    FakeProcesses::set(pid, {seconds - 90, 0, 501, "/bin/cat", "/Users/u/my app"});
    const auto startTime = static_cast<std::uint64_t>(seconds - 90) * 1'000'000;
    const auto details = control.details({pid, "node", startTime});
    ASSERT_TRUE(details);
    EXPECT_EQ(details->workingDirectory, "/Users/u/my app");
    EXPECT_GE(details->secondsRunning, 90);
    EXPECT_LT(details->secondsRunning, 150);
}

TEST_F(MacProcessControlTest, aClockThatWasSetBackGivesNoNegativeTime) {
    FakeProcesses::set(pid, {32'000'000'000, 0, 501, "/bin/cat", ""});
    EXPECT_EQ(control.details({pid, "node", 32'000'000'000'000'000}), (ProcessDetails{"", 0}));
}

TEST_F(MacProcessControlTest, detailsOfAnotherProcessAreNotTold) {
    EXPECT_EQ(control.details({pid, "node", start + 1}), std::nullopt);
    EXPECT_EQ(control.details({pid, "node", 0}), std::nullopt);
    FakeProcess other = node;
    other.user = 0;
    FakeProcesses::set(pid, other);
    EXPECT_EQ(control.details({pid, "node", start}), std::nullopt);
    FakeProcesses::remove(pid);
    EXPECT_EQ(control.details({pid, "node", start}), std::nullopt);
    EXPECT_TRUE(runner.calls.empty());
}

}  // namespace
}  // namespace kestrune
