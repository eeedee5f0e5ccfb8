#include "platform/macos/MacProcessListing.h"

#include <gtest/gtest.h>

#include "platform/macos/MacSystemTools.h"
#include "tests/fakes/FakeProcessRunner.h"
#include "tests/fakes/ManualQueues.h"
#include "tests/platform/macos/fake_darwin/FakeProcesses.h"

namespace kestrune {
namespace {

const std::string portTool = "/usr/sbin/lsof";
const std::string processTool = "/bin/ps";

class MacProcessListingTest : public testing::Test {
protected:
    MacProcessListingTest() {
        FakeProcesses::reset();
        FakeProcesses::set(5, {100, 7, 501});
        runner.answer(portTool, {0, "p5\nn*:3000\n"});
        runner.answer(processTool, {0, "    5   2048  12.5 /opt/my server\n    6     64   0.0 -zsh\n"});
    }

    // Runs change while the process tool runs.
    void duringTheListing(std::function<void()> change) {
        runner.answer(processTool, [change = std::move(change)](const FakeProcessRunner::Call&) {
            change();
            return ProcessResult{0, "5 2048 12.5 node\n"};
        });
    }

    [[nodiscard]] std::uint64_t startTimeOfFirst() { return listing.snapshot().processes.at(0).startTime; }

    FakeProcessRunner runner;
    MacSystemTools tools{501};
    ManualClock clock;
    MacProcessListing listing{runner, tools, clock, 501};
};

TEST_F(MacProcessListingTest, rowsOfTheToolsGetTheirStartTimes) {
    FakeProcesses::set(6, {100, 8, 501});
    EXPECT_EQ(listing.snapshot(),
              (ProcessSnapshot{{{5, 2048, "12.5", "/opt/my server", 100'000'007}, {6, 64, "0.0", "-zsh", 100'000'008}},
                               {{5, {"*:3000"}}}}));
}

TEST_F(MacProcessListingTest, theToolsAreAskedForThisUserWithTheAgreedArguments) {
    static_cast<void>(listing.snapshot());
    ASSERT_EQ(runner.calls.size(), 2U);
    EXPECT_EQ(runner.calls[0].executable, portTool);
    EXPECT_EQ(runner.calls[0].arguments, (std::vector<std::string>{"-nP", "-iTCP", "-sTCP:LISTEN", "-Fpn"}));
    EXPECT_EQ(runner.calls[1].executable, processTool);
    EXPECT_EQ(runner.calls[1].arguments, (std::vector<std::string>{"-U", "501", "-o", "pid=,rss=,pcpu=,comm="}));
}

TEST_F(MacProcessListingTest, aProcessTheKernelDoesNotTellOfHasNoStartTime) {
    EXPECT_EQ(listing.snapshot().processes.at(1).startTime, 0U);
}

TEST_F(MacProcessListingTest, aNumberThatWasTakenOverMeanwhileHasNoStartTime) {
    duringTheListing([] { FakeProcesses::set(5, {200, 0, 501}); });
    EXPECT_EQ(startTimeOfFirst(), 0U);
}

TEST_F(MacProcessListingTest, aProcessThatBeganMeanwhileHasNoStartTimeYet) {
    FakeProcesses::remove(5);
    duringTheListing([] { FakeProcesses::set(5, {200, 0, 501}); });
    EXPECT_EQ(startTimeOfFirst(), 0U);
    EXPECT_EQ(startTimeOfFirst(), 200'000'000U);
}

TEST_F(MacProcessListingTest, aProcessThatEndedMeanwhileHasNoStartTime) {
    duringTheListing([] { FakeProcesses::remove(5); });
    EXPECT_EQ(startTimeOfFirst(), 0U);
}

TEST_F(MacProcessListingTest, aToolThatFailsLeavesItsShareEmpty) {
    runner.answer(processTool, {-1, ""});
    EXPECT_EQ(listing.snapshot(), (ProcessSnapshot{{}, {{5, {"*:3000"}}}}));
}

}  // namespace
}  // namespace kestrune
