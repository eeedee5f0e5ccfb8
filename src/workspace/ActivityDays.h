#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "workspace/ActivityEntry.h"

namespace kestrune {

/// The entries of one local day.
struct ActivityDay {
    std::string title;  ///< "Today", "Yesterday", "Wednesday 18 November" or "Friday 3 January 2025"
    std::vector<ActivityEntry> entries;

    bool operator==(const ActivityDay&) const = default;
};

/// How far local time is ahead of UTC at a moment.
using UtcOffset = std::function<std::chrono::seconds(WallTime)>;

/// entries by local day: the days in the order of their first entry, entries in their own. The title names the year
/// when it is not the one of now.
[[nodiscard]] std::vector<ActivityDay> activityDays(const std::vector<ActivityEntry>& entries, WallTime now,
                                                    const UtcOffset& offset);

/// The local day and time, "Today at 09:12", the day as in activityDays().
[[nodiscard]] std::string dayAndTimeText(WallTime time, WallTime now, const UtcOffset& offset);

/// The local time of day, "14:22".
[[nodiscard]] std::string timeOfDayText(WallTime time, const UtcOffset& offset);

}  // namespace kestrune
