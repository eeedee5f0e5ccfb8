#include "update/UpdateSchedule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/ManualQueues.h"

namespace kestrune {

namespace {

using std::chrono::hours;
using std::chrono::minutes;

constexpr const char* lastCheckKey = "kestrune_update_last_check";

class UpdateScheduleTest : public testing::Test {
protected:
    UpdateScheduleTest()
        : schedule(
              {.preferences = preferences, .mainQueue = queue, .clock = clock, .random = [this] { return random; }},
              [this] { due(); }) {}

    void due() {
        ++checks;
        if (outcome == Outcome::made) {
            schedule.checkEnded();
        } else if (outcome == Outcome::failed) {
            schedule.checkFailed();
        }
    }

    /// Time passes on both clocks.
    void pass(minutes time) {
        for (minutes passed{0}; passed < time; ++passed) {
            clock.advance(minutes{1});
            queue.advance(minutes{1});
        }
    }

    void checkedAgo(Seconds time) { preferences.values[lastCheckKey] = clock.wall - time; }

    /// Starts with a last check that long ago; how many checks the first looks bring.
    int checksAfterStart(Seconds lastCheckAgo) {
        checkedAgo(lastCheckAgo);
        schedule.start();
        pass(minutes{20});
        return checks;
    }

    enum class Outcome { made, failed, pending };

    FakePreferences preferences;
    ManualMainQueue queue;
    ManualClock clock;
    std::uint32_t random = 0;
    Outcome outcome = Outcome::made;
    int checks = 0;
    UpdateSchedule schedule;
};

constexpr std::uint32_t highest = std::numeric_limits<std::uint32_t>::max();

}  // namespace

TEST_F(UpdateScheduleTest, nothingIsDueBeforeTheStart) {
    pass(hours{2});
    EXPECT_EQ(checks, 0);
    EXPECT_EQ(queue.timers(), 0U);
}

TEST_F(UpdateScheduleTest, theFirstCheckComesFiveMinutesAfterTheStartAtTheEarliest) {
    schedule.start();
    pass(minutes{4});
    EXPECT_EQ(checks, 0);
    pass(minutes{1});
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, theFirstCheckComesFifteenMinutesAfterTheStartAtTheLatest) {
    random = highest;
    schedule.start();
    pass(minutes{14});
    EXPECT_EQ(checks, 0);
    pass(minutes{1});
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, theTimeOfACheckIsRemembered) {
    schedule.start();
    pass(minutes{5});
    EXPECT_EQ(preferences.date(lastCheckKey), clock.wall);
}

TEST_F(UpdateScheduleTest, aDayBringsOneCheck) {
    schedule.start();
    pass(hours{24});
    EXPECT_EQ(checks, 1);
    pass(minutes{20});
    EXPECT_EQ(checks, 2);
    pass(hours{24} * 7);
    EXPECT_GE(checks, 8);
    EXPECT_LE(checks, 9);
}

TEST_F(UpdateScheduleTest, theDailyCheckIsPutOffByAtMostTwoHours) {
    random = highest;
    schedule.start();
    pass(minutes{15} + hours{26} - minutes{1});
    EXPECT_EQ(checks, 1);
    pass(minutes{16});
    EXPECT_EQ(checks, 2);
}

TEST_F(UpdateScheduleTest, machinesThatStartTogetherCheckAtDifferentTimes) {
    std::set<Seconds> times;
    for (std::uint32_t machine = 0; machine < 100; ++machine) {
        ManualMainQueue ownQueue;
        FakePreferences ownPreferences;
        int ownChecks = 0;
        UpdateSchedule own({.preferences = ownPreferences,
                            .mainQueue = ownQueue,
                            .clock = clock,
                            .random = [machine] { return machine * (highest / 100); }},
                           [&] { ++ownChecks; });
        own.start();
        std::chrono::seconds waited{0};
        while (ownChecks == 0) {
            ownQueue.advance(std::chrono::seconds{1});
            ++waited;
        }
        times.insert(waited);
        EXPECT_GE(waited, minutes{5});
        EXPECT_LE(waited, minutes{15});
    }
    EXPECT_EQ(times.size(), 100U);
}

TEST_F(UpdateScheduleTest, theProgramWakesUpOnceInFifteenMinutes) {
    outcome = Outcome::pending;
    schedule.start();
    EXPECT_EQ(queue.timers(), 1U);
    pass(hours{10});
    EXPECT_EQ(checks, 40);
    EXPECT_EQ(queue.timers(), 1U);
}

TEST_F(UpdateScheduleTest, aCheckOfTheDayBeforeTheStartIsEnough) {
    EXPECT_EQ(checksAfterStart(hours{20}), 0);
}

TEST_F(UpdateScheduleTest, aCheckOfLongAgoIsDueAfterTheStart) {
    EXPECT_EQ(checksAfterStart(hours{24}), 1);
}

TEST_F(UpdateScheduleTest, howeverLongTheProgramWasClosedOneCheckIsMade) {
    EXPECT_EQ(checksAfterStart(hours{24} * 365), 1);
}

TEST_F(UpdateScheduleTest, aClockThatGoesForwardMakesACheckDue) {
    EXPECT_EQ(checksAfterStart(hours{1}), 0);
    clock.wall += hours{48};
    pass(minutes{15});
    EXPECT_EQ(checks, 1);
    pass(hours{12});
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, aComputerThatSleptADayChecksWithinFifteenMinutes) {
    schedule.start();
    pass(minutes{5});
    ASSERT_EQ(checks, 1);
    clock.wall += hours{30};  // neither the uptime nor the timers ran
    pass(minutes{15});
    EXPECT_EQ(checks, 2);
}

TEST_F(UpdateScheduleTest, aClockThatGoesBackwardsALittleKeepsTheCheckWaiting) {
    EXPECT_EQ(checksAfterStart(-hours{24}), 0);
    pass(hours{47});
    EXPECT_EQ(checks, 0);
    pass(hours{2});
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, aLastCheckMoreThanADayAheadCountsAsNone) {
    EXPECT_EQ(checksAfterStart(-hours{24} - minutes{30}), 1);
    pass(hours{20});
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, aLastCheckThatIsNoTimeCountsAsNone) {
    EXPECT_EQ(checksAfterStart(Seconds{std::nan("")}), 1);
}

TEST_F(UpdateScheduleTest, aLastCheckAtTheEndOfTimeCountsAsNone) {
    EXPECT_EQ(checksAfterStart(Seconds{-std::numeric_limits<double>::infinity()}), 1);
}

TEST_F(UpdateScheduleTest, aFailureIsNoCheck) {
    outcome = Outcome::failed;
    schedule.start();
    pass(minutes{5});
    EXPECT_EQ(checks, 1);
    EXPECT_EQ(preferences.date(lastCheckKey), std::nullopt);
}

TEST_F(UpdateScheduleTest, afterAFailureTheNextTryComesInAnHourAtTheEarliest) {
    outcome = Outcome::failed;
    schedule.start();
    pass(minutes{5 + 59});
    EXPECT_EQ(checks, 1);
    pass(minutes{16});
    EXPECT_EQ(checks, 2);
}

TEST_F(UpdateScheduleTest, triesBecomeRarerTheMoreOfThemFail) {
    outcome = Outcome::failed;
    schedule.start();
    pass(minutes{10} + hours{1 + 2 + 4 + 8 + 16});
    EXPECT_EQ(checks, 6);
    pass(hours{24} * 10);
    EXPECT_GE(checks, 15);
    EXPECT_LE(checks, 16);
}

TEST_F(UpdateScheduleTest, triesAreSpreadOverAnHour) {
    outcome = Outcome::failed;
    random = highest;
    schedule.start();
    pass(minutes{15} + hours{2} - minutes{1});
    EXPECT_EQ(checks, 1);
    pass(minutes{16});
    EXPECT_EQ(checks, 2);
}

TEST_F(UpdateScheduleTest, aTryWaitsItsHourWhateverTheWallClockSays) {
    outcome = Outcome::failed;
    schedule.start();
    pass(minutes{5});
    clock.wall += hours{24} * 100;
    pass(minutes{45});
    EXPECT_EQ(checks, 1);
    clock.wall -= hours{24} * 1000;
    pass(minutes{30});
    EXPECT_EQ(checks, 2);
}

TEST_F(UpdateScheduleTest, aCheckThatWasMadeForgetsTheFailuresBefore) {
    outcome = Outcome::failed;
    schedule.start();
    pass(hours{10});
    ASSERT_EQ(checks, 4);
    outcome = Outcome::made;
    pass(hours{6});
    ASSERT_EQ(checks, 5);
    outcome = Outcome::failed;
    pass(hours{24});
    ASSERT_EQ(checks, 6);
    pass(hours{1});
    EXPECT_EQ(checks, 7);
}

TEST_F(UpdateScheduleTest, aCheckTheUserAskedForCounts) {
    schedule.start();
    schedule.checkEnded();
    pass(hours{23});
    EXPECT_EQ(checks, 0);
}

TEST_F(UpdateScheduleTest, whatIsOverIsNotCalled) {
    int lateChecks = 0;
    {
        UpdateSchedule gone(
            {.preferences = preferences, .mainQueue = queue, .clock = clock, .random = [] { return 0U; }},
            [&] { ++lateChecks; });
        gone.start();
    }
    pass(hours{1});
    EXPECT_EQ(lateChecks, 0);
}

}  // namespace kestrune
