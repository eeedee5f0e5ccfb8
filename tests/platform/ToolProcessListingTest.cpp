#include "platform/ToolProcessListing.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeProcessRunner.h"
#include "tests/fakes/FakeSystemTools.h"
#include "tests/fakes/ManualQueues.h"

namespace kestrune {
namespace {

const std::string portTool = "/usr/sbin/lsof";
const std::string processTool = "/bin/ps";

class ToolProcessListingTest : public testing::Test {
protected:
    // The port tool takes this long.
    void portToolTakes(double seconds) {
        runner.answer(portTool, [this, seconds](const FakeProcessRunner::Call&) {
            clock.advance(Seconds{seconds});
            return ProcessResult{0, "p5\nn*:80\n"};
        });
    }

    FakeProcessRunner runner;
    FakeSystemTools tools;
    ManualClock clock;
    ToolProcessListing listing{runner, tools, clock};
};

TEST_F(ToolProcessListingTest, portsAreAskedForBeforeProcesses) {
    runner.answer(portTool, {0, "p5\nn*:80\n"});
    runner.answer(processTool, {0, " 5 2048 1.5 /opt/my server\n"});
    EXPECT_EQ(listing.snapshot(), (ProcessSnapshot{{{5, 2048, "1.5", "/opt/my server", 0}}, {{5, {"*:80"}}}}));
    ASSERT_EQ(runner.calls.size(), 2U);
    EXPECT_EQ(runner.calls[0].executable, portTool);
    EXPECT_EQ(runner.calls[0].arguments, (std::vector<std::string>{"-nP", "-iTCP", "-sTCP:LISTEN", "-Fpn"}));
    EXPECT_EQ(runner.calls[1].executable, processTool);
    EXPECT_EQ(runner.calls[1].arguments, (std::vector<std::string>{"-U", "501", "-o", "pid=,rss=,pcpu=,comm="}));
}

TEST_F(ToolProcessListingTest, toolThatFailsLeavesItsShareEmpty) {
    EXPECT_EQ(listing.snapshot(), ProcessSnapshot{});
    runner.answer(portTool, {0, "p5\nn*:80\n"});
    EXPECT_EQ(listing.snapshot(), (ProcessSnapshot{{}, {{5, {"*:80"}}}}));
    runner.answer(portTool, {-1, ""});
    runner.answer(processTool, {0, "5 1 0.0 x\n"});
    EXPECT_EQ(listing.snapshot(), (ProcessSnapshot{{{5, 1, "0.0", "x", 0}}, {}}));
}

TEST_F(ToolProcessListingTest, whatAToolWroteBeforeItFailedIsUsed) {
    runner.answer(portTool, {1, "p5\nn*:80\n"});
    runner.answer(processTool, {15, "5 1 0.0 x\n"});
    EXPECT_EQ(listing.snapshot(), (ProcessSnapshot{{{5, 1, "0.0", "x", 0}}, {{5, {"*:80"}}}}));
}

TEST_F(ToolProcessListingTest, nameThatIsNoTextDoesNotEmptyTheListing) {
    runner.answer(processTool, {0, "5 1 0.0 /bin/\xFF\n6 1 0.0 node\n"});
    EXPECT_EQ(listing.snapshot().processes,
              (std::vector<ProcessRecord>{{5, 1, "0.0", "/bin/\xFF", 0}, {6, 1, "0.0", "node", 0}}));
}

TEST_F(ToolProcessListingTest, toolsGetTheUsualTimeWhenTheFirstIsQuick) {
    portToolTakes(0);
    static_cast<void>(listing.snapshot());
    ASSERT_EQ(runner.calls.size(), 2U);
    EXPECT_DOUBLE_EQ(runner.calls[0].limits.terminateAfterSeconds, 60);
    EXPECT_DOUBLE_EQ(runner.calls[0].limits.killAfterSeconds, 62);
    EXPECT_DOUBLE_EQ(runner.calls[1].limits.terminateAfterSeconds, 60);
    EXPECT_DOUBLE_EQ(runner.calls[1].limits.killAfterSeconds, 62);
    EXPECT_DOUBLE_EQ(runner.calls[1].limits.abandonAfterSeconds, 65);
}

TEST_F(ToolProcessListingTest, bothToolsTogetherKeepTheCallerNoLongerThanOne) {
    for (const double seconds : {0.0, 1.0, 30.0, 60.0, 62.0, 64.0}) {
        runner.calls.clear();
        portToolTakes(seconds);
        static_cast<void>(listing.snapshot());
        ASSERT_EQ(runner.calls.size(), 2U);
        EXPECT_LE(runner.calls[0].limits.abandonAfterSeconds, 64);
        EXPECT_LE(seconds + runner.calls[1].limits.abandonAfterSeconds, 65.0);
        EXPECT_GE(runner.calls[1].limits.abandonAfterSeconds, 1.0);
    }
}

TEST_F(ToolProcessListingTest, secondToolIsEndedInTheUsualOrderHoweverLittleTimeIsLeft) {
    for (const double seconds : {0.0, 60.0, 64.5, 1000.0}) {
        runner.calls.clear();
        portToolTakes(seconds);
        static_cast<void>(listing.snapshot());
        ASSERT_EQ(runner.calls.size(), 2U);
        const ProcessLimits& limits = runner.calls[1].limits;
        EXPECT_GT(limits.terminateAfterSeconds, 0.9);
        EXPECT_LT(limits.terminateAfterSeconds, limits.killAfterSeconds);
        EXPECT_LT(limits.killAfterSeconds, limits.abandonAfterSeconds);
    }
}

}  // namespace
}  // namespace kestrune
