#include "workspace/ActivityDays.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string_view>

#include "base/Localized.h"

namespace kestrune {

namespace {

using Days = std::chrono::sys_days;

constexpr std::array<std::string_view, 7> weekdayNames{
    localizable("Sunday"),   localizable("Monday"), localizable("Tuesday"), localizable("Wednesday"),
    localizable("Thursday"), localizable("Friday"), localizable("Saturday")};
constexpr std::array<std::string_view, 12> monthNames{
    localizable("January"),   localizable("February"), localizable("March"),    localizable("April"),
    localizable("May"),       localizable("June"),     localizable("July"),     localizable("August"),
    localizable("September"), localizable("October"),  localizable("November"), localizable("December")};

// The log is a file anyone can edit: a date beyond the calendar is moved to its end.
constexpr double earliest = -62'135'596'800;  // 0001-01-01 00:00:00 UTC
constexpr double latest = 253'402'300'799;    // 9999-12-31 23:59:59 UTC

std::chrono::sys_seconds localTime(WallTime time, const UtcOffset& offset) {
    const double seconds = time.time_since_epoch().count();
    const double bounded = std::isfinite(seconds) ? std::clamp(seconds, earliest, latest) : 0;
    const auto utc = std::chrono::sys_seconds{std::chrono::seconds{static_cast<std::int64_t>(std::floor(bounded))}};
    return utc + offset(WallTime{Seconds{bounded}});
}

std::string dayTitle(Days day, Days today) {
    if (day == today) {
        return localized("Today");
    }
    if (day == today - std::chrono::days{1}) {
        return localized("Yesterday");
    }
    const std::chrono::year_month_day date{day};
    const std::chrono::weekday weekday{day};
    const std::string weekdayName = localized(weekdayNames.at(weekday.c_encoding()));
    const std::string dayNumber = std::to_string(static_cast<unsigned>(date.day()));
    const std::string month = localized(monthNames.at(static_cast<unsigned>(date.month()) - 1));
    if (date.year() != std::chrono::year_month_day{today}.year()) {
        // Translators: weekday, day of the month, month, year.
        return localized("%1 %2 %3 %4", {weekdayName, dayNumber, month, std::to_string(static_cast<int>(date.year()))});
    }
    // Translators: weekday, day of the month, month.
    return localized("%1 %2 %3", {weekdayName, dayNumber, month});
}

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

std::vector<ActivityDay> activityDays(const std::vector<ActivityEntry>& entries, WallTime now,
                                      const UtcOffset& offset) {
    const auto today = std::chrono::floor<std::chrono::days>(localTime(now, offset));
    std::vector<ActivityDay> days;
    std::map<Days, std::size_t> positions;
    for (const auto& entry : entries) {
        const auto day = std::chrono::floor<std::chrono::days>(localTime(entry.date, offset));
        const auto [known, isNew] = positions.try_emplace(day, days.size());
        if (isNew) {
            days.push_back({dayTitle(day, today), {}});
        }
        days[known->second].entries.push_back(entry);
    }
    return days;
}

std::string dayAndTimeText(WallTime time, WallTime now, const UtcOffset& offset) {
    const auto day = std::chrono::floor<std::chrono::days>(localTime(time, offset));
    const auto today = std::chrono::floor<std::chrono::days>(localTime(now, offset));
    return localized("%1 at %2", {dayTitle(day, today), timeOfDayText(time, offset)});
}

std::string timeOfDayText(WallTime time, const UtcOffset& offset) {
    const auto local = localTime(time, offset);
    const auto minutes =
        std::chrono::floor<std::chrono::minutes>(local - std::chrono::floor<std::chrono::days>(local)).count();
    // Translators: hours, from 00 to 23, and minutes.
    return localized("%1:%2", {twoDigits(minutes / 60), twoDigits(minutes % 60)});
}

}  // namespace kestrune
