#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "base/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Preferences.h"

namespace kestrune {

/// What UpdateSchedule works with. Everything outlives it.
struct UpdateScheduleParts {
    Preferences& preferences;
    MainQueue& mainQueue;
    const Clock& clock;
    std::function<std::uint32_t()> random;  ///< evenly spread
};

/// Says when to look for updates: once a day by the wall clock, at a time that differs from machine to machine. Wakes
/// up every 15 minutes, so that a clock that was set and a computer that slept need no care. Main thread.
class UpdateSchedule final {
public:
    /// check is called whenever a check is due, again and again until checkEnded tells that it was made.
    UpdateSchedule(UpdateScheduleParts parts, std::function<void()> check);

    /// Begins, with a first look 5 to 15 minutes from now. Once.
    void start();

    /// A check was made: the next one is due 24 to 26 hours from now.
    void checkEnded();

    /// The feed could not be read: the next try is due 1 to 2 hours from now, twice as late after each failure that
    /// follows, and once a day in the end.
    void checkFailed();

private:
    void look();
    [[nodiscard]] bool isDue() const;
    [[nodiscard]] Seconds upTo(Seconds span) const;

    UpdateScheduleParts m_parts;
    std::function<void()> m_check;
    std::unique_ptr<Timer> m_timer;
    Seconds m_wait{0};       ///< from one check to the next
    Seconds m_retryTime{0};  ///< no try before this uptime
    int m_failures = 0;      ///< since the last check that was made
};

}  // namespace kestrune
