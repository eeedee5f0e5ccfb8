#include "platform/macos/MacProcessRunner.h"

#include "tests/platform/ProcessRunnerExpectations.h"
#include "tests/platform/macos/fake_darwin/FakeEvents.h"

namespace kestrune {
namespace {

INSTANTIATE_TEST_SUITE_P(MacOS, ProcessRunnerTest,
                         testing::Values(ProcessRunnerMaker{"MacOS", []() -> std::unique_ptr<ProcessRunner> {
                                                                return std::make_unique<MacProcessRunner>();
                                                            }}));

class MacProcessRunnerTest : public testing::Test {
protected:
    ~MacProcessRunnerTest() override { FakeEvents::tellEnd(FakeEvents::EndTold::whenItEnded); }

    MacProcessRunner runner;
};

TEST_F(MacProcessRunnerTest, anEndThatCameBeforeItWasWatchedForIsNoticed) {
    FakeEvents::tellEnd(FakeEvents::EndTold::never);
    EXPECT_EQ(runner.run("/bin/sh", {"-c", "echo x; exit 3"}), (ProcessResult{3, "x\n"}));
    EXPECT_EQ(runner.run("/bin/sh", {"-c", "exec >&- 2>&-; sleep 0.2; exit 7"}), (ProcessResult{7, ""}));
    EXPECT_TRUE(hasNoChildren());
}

TEST_F(MacProcessRunnerTest, anEndThatIsToldTooEarlyIsWaitedForWithGrowingPauses) {
    FakeEvents::tellEnd(FakeEvents::EndTold::beforeItCanReap);
    static_cast<void>(FakeEvents::takeWaits());
    EXPECT_EQ(runner.run("/bin/sh", {"-c", "exec >&- 2>&-; sleep 0.5; exit 7"}), (ProcessResult{7, ""}));
    EXPECT_LT(FakeEvents::takeWaits(), 40);
    EXPECT_TRUE(hasNoChildren());
}

TEST_F(MacProcessRunnerTest, aToolWhoseEndIsNotToldIsEndedInTimeAllTheSame) {
    FakeEvents::tellEnd(FakeEvents::EndTold::never);
    EXPECT_EQ(runner.run("/bin/sh", {"-c", "exec sleep 30"}, shortLimits).status, SIGTERM);
    EXPECT_EQ(runner.run("/bin/sh", {"-c", "trap '' TERM; exec sleep 30"}, shortLimits).status, SIGKILL);
}

TEST_F(MacProcessRunnerTest, waitingForAQuietToolCostsNothing) {
    static_cast<void>(FakeEvents::takeWaits());
    EXPECT_EQ(runner.run("/bin/sh", {"-c", "sleep 0.5; echo x"}).output, "x\n");
    EXPECT_LT(FakeEvents::takeWaits(), 8);
}

}  // namespace
}  // namespace kestrune
