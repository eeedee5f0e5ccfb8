#include "platform/ProcessDeadlines.h"

#include <gtest/gtest.h>

#include <csignal>

namespace kestrune {
namespace {

using namespace std::chrono_literals;

class ProcessDeadlinesTest : public testing::Test {
protected:
    const ProcessDeadlines::Clock::time_point start = ProcessDeadlines::Clock::now();
    ProcessDeadlines deadlines{{}, start};
};

TEST_F(ProcessDeadlinesTest, aToolIsAskedAfterAMinuteAndKilledTwoSecondsLater) {
    EXPECT_EQ(deadlines.takeDueSignal(start + 59999ms), std::nullopt);
    EXPECT_EQ(deadlines.takeDueSignal(start + 60s), SIGTERM);
    EXPECT_EQ(deadlines.takeDueSignal(start + 61999ms), std::nullopt);
    EXPECT_EQ(deadlines.takeDueSignal(start + 62s), SIGKILL);
    EXPECT_EQ(deadlines.takeDueSignal(start + 70s), std::nullopt);
}

TEST_F(ProcessDeadlinesTest, aMachineThatSleptGivesBothSignalsInTheirOrder) {
    EXPECT_EQ(deadlines.takeDueSignal(start + 1h), SIGTERM);
    EXPECT_EQ(deadlines.takeDueSignal(start + 1h), SIGKILL);
    EXPECT_EQ(deadlines.takeDueSignal(start + 1h), std::nullopt);
}

TEST_F(ProcessDeadlinesTest, theCallerGoesOnAfterSixtyFiveSeconds) {
    EXPECT_FALSE(deadlines.isOver(start + 64999ms));
    EXPECT_TRUE(deadlines.isOver(start + 65s));
}

TEST_F(ProcessDeadlinesTest, aWaitEndsWhenSomethingIsDue) {
    EXPECT_EQ(deadlines.untilNext(false, start), 60s);
    EXPECT_EQ(deadlines.untilNext(false, start + 59s + 1ns), 1000ms);
    EXPECT_EQ(deadlines.untilNext(true, start), 65s);
    EXPECT_EQ(deadlines.takeDueSignal(start + 60s), SIGTERM);
    EXPECT_EQ(deadlines.untilNext(false, start + 60s), 2s);
    EXPECT_EQ(deadlines.takeDueSignal(start + 62s), SIGKILL);
    EXPECT_EQ(deadlines.untilNext(false, start + 62s), 3s);
    EXPECT_EQ(deadlines.untilNext(false, start + 80s), 0s);
}

}  // namespace
}  // namespace kestrune
