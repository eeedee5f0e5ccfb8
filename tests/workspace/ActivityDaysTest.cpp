#include "workspace/ActivityDays.h"

#include <gtest/gtest.h>

#include <limits>
#include <string_view>

#include "base/Localized.h"

namespace kestrune {

namespace {

// 2026-11-21 14:22:30 UTC, a Saturday.
constexpr WallTime now{Seconds{1'795'270'950}};
constexpr Seconds hour{3600};
constexpr Seconds day{86'400};

ActivityEntry entryAt(WallTime date, const std::string& title = "Entry") {
    return {"ID", date, title, "", std::nullopt, false};
}

std::chrono::seconds utc(WallTime) {
    return std::chrono::seconds{0};
}

std::chrono::seconds twoHoursAhead(WallTime) {
    return std::chrono::hours{2};
}

std::string titleOf(WallTime date, const UtcOffset& offset = utc) {
    return activityDays({entryAt(date)}, now, offset).at(0).title;
}

}  // namespace

TEST(ActivityDays, withoutEntriesThereAreNoDays) {
    EXPECT_TRUE(activityDays({}, now, utc).empty());
}

TEST(ActivityDays, todayAndYesterdayAreCalledSo) {
    EXPECT_EQ(titleOf(now), "Today");
    EXPECT_EQ(titleOf(now - 14 * hour), "Today");
    EXPECT_EQ(titleOf(now - 15 * hour), "Yesterday");
    EXPECT_EQ(titleOf(now - day), "Yesterday");
}

TEST(ActivityDays, earlierDaysOfThisYearAreNamedWithoutIt) {
    EXPECT_EQ(titleOf(now - 3 * day), "Wednesday 18 November");
    EXPECT_EQ(titleOf(WallTime{Seconds{1'767'225'600}}), "Thursday 1 January");
}

TEST(ActivityDays, daysOfOtherYearsNameTheYear) {
    EXPECT_EQ(titleOf(WallTime{Seconds{1'767'225'599}}), "Wednesday 31 December 2025");
}

TEST(ActivityDays, theLocalDayCounts) {
    const WallTime lateEvening = now + 8 * hour;  // 22:22 UTC, 00:22 two hours ahead
    EXPECT_EQ(activityDays({entryAt(now)}, lateEvening, utc).at(0).title, "Today");
    EXPECT_EQ(activityDays({entryAt(now)}, lateEvening, twoHoursAhead).at(0).title, "Yesterday");
}

TEST(ActivityDays, theOffsetIsTakenAtEachEntrysOwnTime) {
    const auto summerTimeUntilNow = [](WallTime time) {
        return time < now - 10 * hour ? std::chrono::seconds{std::chrono::hours{1}} : std::chrono::seconds{0};
    };
    const WallTime justBeforeMidnight = now - 14.5 * hour;  // 23:52:30 UTC the day before
    EXPECT_EQ(titleOf(justBeforeMidnight, utc), "Yesterday");
    EXPECT_EQ(titleOf(justBeforeMidnight, summerTimeUntilNow), "Today");
}

TEST(ActivityDays, entriesOfOneDayStayTogetherInTheirOrder) {
    const auto days = activityDays(
        {entryAt(now, "a"), entryAt(now - hour, "b"), entryAt(now - day, "c"), entryAt(now - 2 * hour, "d")}, now, utc);
    ASSERT_EQ(days.size(), 2U);
    ASSERT_EQ(days[0].entries.size(), 3U);
    EXPECT_EQ(days[0].entries[2].title, "d");
    EXPECT_EQ(days[1].entries[0].title, "c");
}

TEST(ActivityDays, theTimeOfDayHasTwoDigitsEach) {
    EXPECT_EQ(timeOfDayText(now, utc), "14:22");
    EXPECT_EQ(timeOfDayText(now, twoHoursAhead), "16:22");
    EXPECT_EQ(timeOfDayText(WallTime{Seconds{59.9}}, utc), "00:00");
    EXPECT_EQ(timeOfDayText(WallTime{Seconds{-1}}, utc), "23:59");
    EXPECT_EQ(timeOfDayText(WallTime{Seconds{9 * 3600 + 5 * 60}}, utc), "09:05");
}

TEST(ActivityDays, datesBeyondTheCalendarAreMovedToItsEnd) {
    EXPECT_EQ(titleOf(WallTime{Seconds{1e300}}), "Friday 31 December 9999");
    EXPECT_EQ(titleOf(WallTime{Seconds{-1e300}}), "Monday 1 January 1");
    EXPECT_EQ(titleOf(WallTime{Seconds{std::numeric_limits<double>::quiet_NaN()}}), "Thursday 1 January 1970");
}

TEST(ActivityDays, momentIsToldByDayAndTime) {
    EXPECT_EQ(dayAndTimeText(now, now, utc), "Today at 14:22");
    EXPECT_EQ(dayAndTimeText(now - day, now, utc), "Yesterday at 14:22");
    EXPECT_EQ(dayAndTimeText(now - 3 * day, now, twoHoursAhead), "Wednesday 18 November at 16:22");
    EXPECT_EQ(dayAndTimeText(now + 14 * hour, now, utc), "Sunday 22 November at 04:22");
}

TEST(ActivityDays, aDateFollowsTheLanguagesOrder) {
    setTranslation({[](const char* english) {
                        using namespace std::string_view_literals;
                        return english == "Thursday"sv   ? "Donnerstag"
                               : english == "%1 %2 %3"sv ? "%1, %2. %3"
                               : english == "%1:%2"sv    ? "%1.%2 Uhr"
                                                         : english;
                    },
                    nullptr});
    EXPECT_EQ(titleOf(now - 2 * day), "Donnerstag, 19. November");
    EXPECT_EQ(timeOfDayText(now, utc), "14.22 Uhr");
    setTranslation({});
}

}  // namespace kestrune
