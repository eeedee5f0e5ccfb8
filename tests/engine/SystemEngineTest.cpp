#include "engine/SystemEngine.h"

#include "tests/engine/EngineFixture.h"

namespace kestrune {
namespace {

using CommandResult = SystemEngine::CommandResult;
using SystemEngineTest = EngineFixture;

TEST_F(SystemEngineTest, toolRunsWithItsArgumentsAndTheUsualLimits) {
    runner.answer("/bin/ps", {0, "text\n"});
    EXPECT_EQ(engine.runProc("/bin/ps", {"-a", "b c"}), (CommandResult{0, "text\n"}));
    ASSERT_EQ(runner.calls.size(), 1U);
    EXPECT_EQ(runner.calls[0].executable, "/bin/ps");
    EXPECT_EQ(runner.calls[0].arguments, (std::vector<std::string>{"-a", "b c"}));
    EXPECT_EQ(runner.calls[0].limits.terminateAfterSeconds, 60);
    EXPECT_EQ(runner.calls[0].limits.killAfterSeconds, 62);
    EXPECT_LE(runner.calls[0].limits.abandonAfterSeconds, 65.5);
}

TEST_F(SystemEngineTest, executableThatDoesNotExistYieldsMinusOneAndNoOutput) {
    EXPECT_EQ(engine.runProc("/does/not/exist", {}), (CommandResult{-1, ""}));
    EXPECT_EQ(runner.calls.size(), 1U);
}

TEST_F(SystemEngineTest, outputThatIsNotUtf8IsEmptyButKeepsItsExitStatus) {
    runner.answer("/bin/tool", {3, "good \xFF bad"});
    EXPECT_EQ(engine.runProc("/bin/tool", {}), (CommandResult{3, ""}));
    runner.answer("/bin/tool", {3, "gr\xC3\xBC\xC3\x9F"});
    EXPECT_EQ(engine.runProc("/bin/tool", {}), (CommandResult{3, "gr\xC3\xBC\xC3\x9F"}));
    runner.answer("/bin/tool", {0, "cut in the middle \xC3"});
    EXPECT_EQ(engine.shell("/bin/tool", {}), "");
}

TEST_F(SystemEngineTest, outputIsMovedAndNotCopied) {
    const char* written = nullptr;
    runner.answer("/bin/tool", [&written](const FakeProcessRunner::Call&) {
        ProcessResult result{0, std::string(1000, 'x')};
        written = result.output.data();
        return result;
    });
    const CommandResult result = engine.runProc("/bin/tool", {});
    EXPECT_EQ(result.output.data(), written);
}

TEST_F(SystemEngineTest, shellGivesTheOutputWhateverTheStatus) {
    runner.answer("/bin/tool", {9, "said before it failed"});
    EXPECT_EQ(engine.shell("/bin/tool", {}), "said before it failed");
}

TEST_F(SystemEngineTest, privilegedCommandThatSucceedsWithoutRightsNeverAsks) {
    runner.answer("/usr/sbin/purge", {0, ""});
    EXPECT_TRUE(engine.runPrivileged("/usr/sbin/purge", {}));
    ASSERT_EQ(runner.calls.size(), 1U);
    EXPECT_EQ(runner.calls[0].executable, "/usr/sbin/purge");
}

TEST_F(SystemEngineTest, privilegedCommandThatFailsIsRunAgainThroughTheAdministratorPrompt) {
    runner.answer("/usr/sbin/purge", {1, "Unable to purge disk buffers"});
    runner.answer("/usr/bin/osascript", {0, ""});
    EXPECT_TRUE(engine.runPrivileged("/usr/sbin/purge", {}));
    ASSERT_EQ(runner.calls.size(), 2U);
    EXPECT_EQ(runner.calls[1].executable, "/usr/bin/osascript");
    EXPECT_EQ(runner.calls[1].arguments,
              (std::vector<std::string>{"-e", "do shell script \"'/usr/sbin/purge'\" with administrator privileges"}));
}

TEST_F(SystemEngineTest, argumentsOfThePrivilegedRunAreQuotedTwice) {
    runner.answer("/usr/bin/osascript", {0, ""});
    EXPECT_TRUE(engine.runPrivileged("/bin/echo", {"it's", "\"\\"}));
    EXPECT_EQ(runner.calls.at(1).arguments.at(1),
              "do shell script \"'/bin/echo' 'it'\\\\''s' '\\\"\\\\'\" with administrator privileges");
}

TEST_F(SystemEngineTest, declinedPrivilegesReadAsFailure) {
    runner.answer("/usr/sbin/purge", {1, ""});
    runner.answer("/usr/bin/osascript", {1, "execution error: User canceled. (-128)"});
    EXPECT_FALSE(engine.runPrivileged("/usr/sbin/purge", {}));
}

TEST_F(SystemEngineTest, privilegedRunFailsWhereThereIsNoPrompt) {
    EXPECT_FALSE(engine.runPrivileged("/usr/sbin/purge", {}));
    EXPECT_EQ(runner.calls.size(), 2U);
}

TEST_F(SystemEngineTest, memoryIsReadOnceACall) {
    host.memoryPages = MemoryPages{
        .free = 1, .active = 3, .wired = 0, .inactive = 0, .speculative = 0, .compressed = 0, .pageSize = 1U << 20U};
    EXPECT_EQ(engine.getMemorySummary(), (MemorySummary{1, 4, 75}));
    EXPECT_EQ(host.memoryReads, 1);
    EXPECT_EQ(engine.getVMStat(),
              (VMStat{.free = 1, .active = 3, .wired = 0, .inactive = 0, .spec = 0, .compressed = 0}));
}

TEST_F(SystemEngineTest, unreadableMemoryIsZeros) {
    EXPECT_EQ(engine.getVMStat(), VMStat{});
    EXPECT_EQ(engine.getMemorySummary(), MemorySummary{});
}

TEST_F(SystemEngineTest, firstProcessorQueryIsTheAverageSinceBootAndASecondRightAfterIsZero) {
    host.ticks = CpuTicks{20, 10, 60, 10};
    EXPECT_EQ(engine.getCPULoadPercentage(), 40);
    EXPECT_EQ(engine.getCPULoadPercentage(), 0);
}

TEST_F(SystemEngineTest, failedProcessorQueryIsZeroAndKeepsTheLastSample) {
    host.ticks = CpuTicks{20, 10, 60, 10};
    EXPECT_EQ(engine.getCPULoadPercentage(), 40);
    host.ticks.reset();
    EXPECT_EQ(engine.getCPULoadPercentage(), 0);
    host.ticks = CpuTicks{30, 10, 90, 10};
    EXPECT_EQ(engine.getCPULoadPercentage(), 25);
}

TEST_F(SystemEngineTest, diskComesFromTheStartUpVolumeWithoutATool) {
    volumes.volumes["/"] = {2'000'000'000, 500'000'000};
    EXPECT_EQ(engine.getDiskSummary(), (DiskSummary{1, 2, 50, 0}));
    EXPECT_TRUE(runner.calls.empty());
}

TEST_F(SystemEngineTest, diskFallsBackToDfWhenTheQueryFails) {
    runner.answer("/bin/df", {0, "Filesystem 1K-blocks Used Available\n/dev/root 4000000 1000000 3000000 25% /\n"});
    EXPECT_EQ(engine.getDiskSummary(), (DiskSummary{1, 4, 25, 3}));
    ASSERT_EQ(runner.calls.size(), 1U);
    EXPECT_EQ(runner.calls[0].executable, "/bin/df");
    EXPECT_EQ(runner.calls[0].arguments, (std::vector<std::string>{"-k", "/"}));
}

TEST_F(SystemEngineTest, diskIsZerosWhenTheToolIsMissingToo) {
    EXPECT_EQ(engine.getDiskSummary(), DiskSummary{});
}

TEST_F(SystemEngineTest, uptimeCountsFromBootToNow) {
    host.bootSeconds = 1'800'000'000 - 86'399;
    EXPECT_EQ(engine.getUptimeString(), "23h 59m");
    clock.advance(Seconds{0.9});
    EXPECT_EQ(engine.getUptimeString(), "23h 59m");
    clock.advance(Seconds{0.1});
    EXPECT_EQ(engine.getUptimeString(), "1d 0h 0m");
}

TEST_F(SystemEngineTest, uptimeWithoutABootTimeIsZero) {
    EXPECT_EQ(engine.getUptimeString(), "0h 0m");
}

TEST_F(SystemEngineTest, networkAndBatteryAreAbsentWhenTheSystemTellsNothing) {
    EXPECT_EQ(engine.networkCounters(), std::nullopt);
    EXPECT_EQ(engine.battery(), std::nullopt);
}

TEST_F(SystemEngineTest, networkAndBatteryComeFromTheSystem) {
    host.interfaces = {{"eth0", true, true, InterfaceBytes{5, 6}}};
    power.batteries = {{30, 60, "Battery Power"}};
    EXPECT_EQ(engine.networkCounters(), (NetworkCounters{5, 6}));
    EXPECT_EQ(engine.battery(), (BatteryReading{50, "On battery"}));
}

TEST_F(SystemEngineTest, withoutAnIdentityNothingIsAskedShownOrPlayed) {
    center.identity = false;
    center.authorization = NotificationAuthorization::denied;
    engine.requestNotificationPermission();
    engine.notify("Kestrune", "text");
    EXPECT_EQ(center.queries + center.requests + center.beeps, 0);
    EXPECT_TRUE(center.delivered.empty());
    EXPECT_TRUE(center.sounds.empty());
}

TEST_F(SystemEngineTest, permissionIsAskedOnceAndItsAnswerNotUsed) {
    center.granted = false;
    engine.requestNotificationPermission();
    EXPECT_EQ(center.requests, 1);
    EXPECT_TRUE(center.sounds.empty());
    EXPECT_TRUE(center.delivered.empty());
}

TEST_F(SystemEngineTest, allowedNotificationsAreDelivered) {
    for (const auto status : {NotificationAuthorization::authorized, NotificationAuthorization::provisional,
                              NotificationAuthorization::ephemeral}) {
        center.authorization = status;
        engine.notify("Kestrune", "text");
    }
    EXPECT_EQ(center.delivered,
              std::vector<FakeNotificationCenter::Delivered>(3, FakeNotificationCenter::Delivered{"Kestrune", "text"}));
    EXPECT_EQ(center.requests, 0);
    EXPECT_TRUE(center.sounds.empty());
}

TEST_F(SystemEngineTest, undecidedPermissionIsAskedForAndThenDelivered) {
    center.authorization = NotificationAuthorization::notDetermined;
    engine.notify("Kestrune", "text");
    EXPECT_EQ(center.requests, 1);
    EXPECT_EQ(center.delivered.size(), 1U);
    EXPECT_TRUE(center.sounds.empty());
}

TEST_F(SystemEngineTest, permissionThatIsRefusedFallsBackToTheSound) {
    center.authorization = NotificationAuthorization::notDetermined;
    center.granted = false;
    engine.notify("Kestrune", "text");
    EXPECT_TRUE(center.delivered.empty());
    EXPECT_EQ(center.sounds, std::vector<std::string>{"Pop"});
    EXPECT_EQ(center.beeps, 0);
}

TEST_F(SystemEngineTest, deniedNotificationsPlayPopOnceEachAndShowNothing) {
    center.authorization = NotificationAuthorization::denied;
    engine.notify("Kestrune", "one");
    engine.notify("Kestrune", "two");
    EXPECT_EQ(center.sounds, (std::vector<std::string>{"Pop", "Pop"}));
    EXPECT_TRUE(center.delivered.empty());
    EXPECT_EQ(center.beeps, 0);
}

TEST_F(SystemEngineTest, soundThatCannotBePlayedBecomesABeep) {
    center.authorization = NotificationAuthorization::denied;
    center.soundPlays = false;
    engine.notify("Kestrune", "text");
    EXPECT_EQ(center.beeps, 1);
}

TEST_F(SystemEngineTest, answersThatComeAfterTheEngineIsGoneDoNothing) {
    center.holdAnswers = true;
    {
        SystemEngine shortLived(parts);
        shortLived.notify("Kestrune", "text");
    }
    center.answerHeld();
    EXPECT_TRUE(center.delivered.empty());

    center.authorization = NotificationAuthorization::notDetermined;
    {
        SystemEngine shortLived(parts);
        shortLived.notify("Kestrune", "text");
        center.answerHeld();
        EXPECT_EQ(center.requests, 1);
    }
    center.answerHeld();
    EXPECT_TRUE(center.delivered.empty());
    EXPECT_TRUE(center.sounds.empty());
}

}  // namespace
}  // namespace kestrune
