#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <numeric>
#include <ostream>
#include <thread>
#include <utility>

#include "platform/ProcessRunner.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr ProcessLimits shortLimits{0.2, 0.4, 0.6};

/// One system's runner.
struct ProcessRunnerMaker {
    const char* system;
    std::unique_ptr<ProcessRunner> (*make)();

    friend void PrintTo(const ProcessRunnerMaker& maker, std::ostream* out) { *out << maker.system; }
};

/// What every ProcessRunner is held to. Each system's test names it with what makes its own.
class ProcessRunnerTest : public testing::TestWithParam<ProcessRunnerMaker> {
protected:
    ProcessResult shellScript(const std::string& script, const ProcessLimits& limits = {}) {
        return runner.run("/bin/sh", {"-c", script}, limits);
    }

    const std::unique_ptr<ProcessRunner> made = GetParam().make();
    ProcessRunner& runner = *made;
};

// Closes what it stands for.
class OpenDescriptor final {
public:
    explicit OpenDescriptor(int descriptor) : m_descriptor(descriptor) {}

    OpenDescriptor(OpenDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

    OpenDescriptor(const OpenDescriptor&) = delete;
    OpenDescriptor& operator=(const OpenDescriptor&) = delete;
    OpenDescriptor& operator=(OpenDescriptor&&) = delete;

    ~OpenDescriptor() { ::close(m_descriptor); }

    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::size_t openDescriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

// True when this process has no child, running or ended.
bool hasNoChildren() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
}

TEST_P(ProcessRunnerTest, executableThatDoesNotExistYieldsMinusOneAtOnce) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(runner.run("/does/not/exist", {}), (ProcessResult{-1, ""}));
    EXPECT_LT(secondsSince(start), 5);
    EXPECT_TRUE(hasNoChildren());
}

TEST_P(ProcessRunnerTest, whatCannotBeExecutedYieldsMinusOne) {
    const TemporaryFolder folder;
    const std::string plain = folder.write("plain", "#!/bin/sh\necho no\n");
    EXPECT_EQ(runner.run(plain, {}), ProcessResult{});
    EXPECT_EQ(runner.run(folder.path(), {}), ProcessResult{});
    EXPECT_EQ(runner.run("", {}), ProcessResult{});
    std::filesystem::permissions(plain, std::filesystem::perms::owner_all);
    EXPECT_EQ(runner.run(plain, {}), (ProcessResult{0, "no\n"}));
    const std::string garbage = folder.write("garbage", "neither a program nor a script");
    std::filesystem::permissions(garbage, std::filesystem::perms::owner_all);
    EXPECT_EQ(runner.run(garbage, {}), ProcessResult{});
}

TEST_P(ProcessRunnerTest, programIsNotSearchedForInThePath) {
    EXPECT_EQ(runner.run("ls", {"/"}), ProcessResult{});
}

TEST_P(ProcessRunnerTest, textWithANulByteIsNeverCutIntoAnotherCommand) {
    using namespace std::string_literals;
    EXPECT_EQ(runner.run("/bin/echo\0/x"s, {}), ProcessResult{});
    EXPECT_EQ(runner.run("/bin/echo", {"a\0b"s}), ProcessResult{});
}

TEST_P(ProcessRunnerTest, argumentsArriveAsTheyAre) {
    const std::vector<std::string> arguments{"a b", "", "$HOME", "`id`", "*", "it's", "\"\\", "\xFF\xFE", "-n", "a\nb"};
    const std::string expected =
        std::accumulate(arguments.begin(), arguments.end(), std::string{},
                        [](const std::string& text, const std::string& next) { return text + "[" + next + "]"; });
    std::vector<std::string> words{"[%s]"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(runner.run("/usr/bin/printf", words), (ProcessResult{0, expected}));
}

TEST_P(ProcessRunnerTest, commandThatWritesToStandardErrorOnlyYieldsThatText) {
    EXPECT_EQ(shellScript("echo oops >&2; exit 4"), (ProcessResult{4, "oops\n"}));
}

TEST_P(ProcessRunnerTest, bothStreamsComeInTheOrderTheyWereWritten) {
    EXPECT_EQ(shellScript("echo a; echo b >&2; echo c; echo d >&2").output, "a\nb\nc\nd\n");
}

TEST_P(ProcessRunnerTest, bytesAreNotInterpreted) {
    using namespace std::string_literals;
    EXPECT_EQ(shellScript("printf '\\377\\000\\n'; exit 3"), (ProcessResult{3, "\xFF\0\n"s}));
}

TEST_P(ProcessRunnerTest, exitStatusIsTheCommandsOwn) {
    for (const int status : {0, 1, 2, 126, 127, 128, 255}) {
        EXPECT_EQ(shellScript("exit " + std::to_string(status)).status, status);
    }
}

TEST_P(ProcessRunnerTest, endBySignalGivesItsNumber) {
    EXPECT_EQ(shellScript("echo before; kill -TERM $$").status, SIGTERM);
    EXPECT_EQ(shellScript("ulimit -c 0; kill -SEGV $$").status, SIGSEGV);
}

TEST_P(ProcessRunnerTest, commandThatRunsTooLongIsAskedToEnd) {
    const auto start = std::chrono::steady_clock::now();
    const ProcessResult result = shellScript("echo started; exec sleep 30", {0.2, 20, 25});
    EXPECT_EQ(result, (ProcessResult{SIGTERM, "started\n"}));
    EXPECT_GE(secondsSince(start), 0.2);
    EXPECT_LT(secondsSince(start), 15);
}

TEST_P(ProcessRunnerTest, commandThatEndsItselfOnTheSignalKeepsItsOwnStatus) {
    const ProcessResult result =
        shellScript("trap 'echo bye; exit 5' TERM; while :; do sleep 0.05; done", {0.2, 20, 25});
    EXPECT_EQ(result, (ProcessResult{5, "bye\n"}));
}

TEST_P(ProcessRunnerTest, commandThatIgnoresTheSignalIsKilled) {
    const auto start = std::chrono::steady_clock::now();
    const ProcessResult result = shellScript("trap '' TERM; echo stubborn; exec sleep 30", {0.1, 0.4, 25});
    EXPECT_EQ(result, (ProcessResult{SIGKILL, "stubborn\n"}));
    EXPECT_GE(secondsSince(start), 0.4);
    EXPECT_LT(secondsSince(start), 15);
}

TEST_P(ProcessRunnerTest, stoppedCommandIsKilledToo) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(shellScript("kill -STOP $$; exit 3", {0.1, 0.3, 25}).status, SIGKILL);
    EXPECT_LT(secondsSince(start), 15);
}

TEST_P(ProcessRunnerTest, limitsHoldWhileOutputPoursIn) {
    const auto start = std::chrono::steady_clock::now();
    const ProcessResult result = runner.run("/usr/bin/yes", {}, {0.1, 20, 25});
    EXPECT_EQ(result.status, SIGTERM);
    EXPECT_FALSE(result.output.empty());
    EXPECT_LT(secondsSince(start), 15);
}

TEST_P(ProcessRunnerTest, grandchildThatHoldsThePipeDelaysOnlyToTheLastLimit) {
    const auto start = std::chrono::steady_clock::now();
    const ProcessResult result = shellScript("sleep 10 & echo done; exit 6", shortLimits);
    EXPECT_EQ(result, (ProcessResult{6, "done\n"}));
    EXPECT_GE(secondsSince(start), 0.6);
    EXPECT_LT(secondsSince(start), 8);
}

TEST_P(ProcessRunnerTest, whatAGrandchildStillWritesIsPartOfTheOutput) {
    EXPECT_EQ(shellScript("(sleep 0.1; echo late) & echo early"), (ProcessResult{0, "early\nlate\n"}));
}

TEST_P(ProcessRunnerTest, endOfOutputIsNotTakenForTheEndOfTheCommand) {
    EXPECT_EQ(shellScript("exec >&- 2>&-; sleep 0.2; exit 7"), (ProcessResult{7, ""}));
}

TEST_P(ProcessRunnerTest, commandThatClosedItsOutputIsStillMadeToEnd) {
    EXPECT_EQ(shellScript("exec >&- 2>&-; exec sleep 30", shortLimits).status, SIGTERM);
}

TEST_P(ProcessRunnerTest, commandThatCouldNotBeReapedInTimeIsKilledAndReapedLater) {
    EXPECT_EQ(shellScript("echo here; exec sleep 30", {20, 25, 0.3}), (ProcessResult{SIGKILL, "here\n"}));
    const auto start = std::chrono::steady_clock::now();
    while (!hasNoChildren() && secondsSince(start) < 15) {
        EXPECT_EQ(runner.run("/bin/true", {}).status, 0);
    }
    EXPECT_TRUE(hasNoChildren());
}

TEST_P(ProcessRunnerTest, commandGetsThreeDescriptorsHoweverManyAreOpenHere) {
    std::vector<OpenDescriptor> leaking;
    for (int i = 0; i < 300; ++i) {
        leaking.emplace_back(::open("/dev/null", O_RDONLY));  // NOLINT(android-cloexec-open)
        ASSERT_GE(leaking.back().get(), 0);
    }
    // The fourth is the one ls reads the folder through.
    EXPECT_EQ(runner.run("/bin/ls", {"/proc/self/fd"}), (ProcessResult{0, "0\n1\n2\n3\n"}));
}

TEST_P(ProcessRunnerTest, noDescriptorIsLeftBehind) {
    const std::size_t before = openDescriptors();
    EXPECT_EQ(shellScript("echo x").status, 0);
    EXPECT_EQ(runner.run("/does/not/exist", {}).status, -1);
    EXPECT_EQ(shellScript("exec sleep 30", shortLimits).status, SIGTERM);
    EXPECT_EQ(openDescriptors(), before);
}

TEST_P(ProcessRunnerTest, blockedAndIgnoredSignalsAreNotInherited) {
    sigset_t blocked;
    sigset_t previous;
    sigfillset(&blocked);
    ::pthread_sigmask(SIG_SETMASK, &blocked, &previous);
    const auto previousPipe = std::signal(SIGPIPE, SIG_IGN);
    const auto previousHangUp = std::signal(SIGHUP, SIG_IGN);
    const std::string status = runner.run("/bin/cat", {"/proc/self/status"}).output;
    std::signal(SIGPIPE, previousPipe);
    std::signal(SIGHUP, previousHangUp);
    ::pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    EXPECT_NE(status.find("\nSigBlk:\t0000000000000000\n"), std::string::npos) << status;
    EXPECT_NE(status.find("\nSigIgn:\t0000000000000000\n"), std::string::npos) << status;
    EXPECT_NE(status.find("\nSigCgt:\t0000000000000000\n"), std::string::npos) << status;
}

TEST_P(ProcessRunnerTest, dispositionsOfThisProcessStayAsTheyWere) {
    const auto before = std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGPIPE, before);
    EXPECT_EQ(shellScript("echo x").status, 0);
    const auto after = std::signal(SIGPIPE, before);
    EXPECT_EQ(after, before);
    const auto child = std::signal(SIGCHLD, SIG_DFL);
    EXPECT_EQ(child, SIG_DFL);
}

TEST_P(ProcessRunnerTest, brokenPipeEndsTheCommandAsInAnyTerminal) {
    const auto previous = std::signal(SIGPIPE, SIG_IGN);
    const ProcessResult result = shellScript("yes 2>&1 | head -n 1");
    std::signal(SIGPIPE, previous);
    EXPECT_EQ(result, (ProcessResult{0, "y\n"}));
}

TEST_P(ProcessRunnerTest, exitStatusSurvivesAnIgnoredChildSignal) {
    const auto previous = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(GetParam().make()->run("/bin/false", {}).status, 1);
    std::signal(SIGCHLD, previous);
}

TEST_P(ProcessRunnerTest, environmentAndWorkingFolderAreInherited) {
    ::setenv("KESTRUNE_PROBE", "a value", 1);
    const ProcessResult result = shellScript("printf '%s|' \"$KESTRUNE_PROBE\"; pwd -P");
    ::unsetenv("KESTRUNE_PROBE");
    EXPECT_EQ(result.output, "a value|" + std::filesystem::current_path().string() + "\n");
}

TEST_P(ProcessRunnerTest, standardInputIsInherited) {
    const TemporaryFolder folder;
    const std::string input = folder.write("input", "typed\n");
    const OpenDescriptor saved(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3));
    const OpenDescriptor file(::open(input.c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::dup2(file.get(), STDIN_FILENO), STDIN_FILENO);
    const ProcessResult result = runner.run("/bin/cat", {});
    ::dup2(saved.get(), STDIN_FILENO);
    EXPECT_EQ(result, (ProcessResult{0, "typed\n"}));
}

TEST_P(ProcessRunnerTest, outputLargerThanAPipeArrivesWhole) {
    const ProcessResult result = runner.run("/usr/bin/seq", {"1", "300000"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.size(), 1'988'895U);
    EXPECT_EQ(result.output.substr(result.output.size() - 7), "300000\n");
}

std::atomic<int> alarms{0};

TEST_P(ProcessRunnerTest, interruptedCallsGoOn) {
    struct sigaction action {};

    struct sigaction previous {};

    action.sa_handler = [](int) { ++alarms; };
    ASSERT_EQ(::sigaction(SIGALRM, &action, &previous), 0);
    const itimerval often{{0, 500}, {0, 500}};
    ASSERT_EQ(::setitimer(ITIMER_REAL, &often, nullptr), 0);
    const ProcessResult result = shellScript("echo a; sleep 0.1; echo b");
    const itimerval never{};
    ::setitimer(ITIMER_REAL, &never, nullptr);
    ::sigaction(SIGALRM, &previous, nullptr);
    EXPECT_EQ(result, (ProcessResult{0, "a\nb\n"}));
    EXPECT_GT(alarms, 10);
}

TEST_P(ProcessRunnerTest, manyThreadsRunToolsAtOnce) {
    const std::size_t before = openDescriptors();
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 12; ++thread) {
        threads.emplace_back([this, thread, &right] {
            for (int run = 0; run < 10; ++run) {
                const std::string word = std::to_string(thread) + "." + std::to_string(run);
                const ProcessResult result = shellScript("echo " + word + "; exit " + std::to_string(run));
                right += result == ProcessResult{run, word + "\n"} ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, 120);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(hasNoChildren());
}

TEST_P(ProcessRunnerTest, oneHangingToolDoesNotHoldUpAnother) {
    std::thread hanging([this] { EXPECT_EQ(shellScript("exec sleep 30", {2, 20, 25}).status, SIGTERM); });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(shellScript("echo quick"), (ProcessResult{0, "quick\n"}));
    EXPECT_LT(secondsSince(start), 2);
    hanging.join();
}

}  // namespace
}  // namespace kestrune
