#include "update/UpdateSchedule.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kestrune {

namespace {

constexpr const char* lastCheckKey = "kestrune_update_last_check";

constexpr std::chrono::minutes earliestLook{5};
constexpr std::chrono::minutes lookSpread{10};
constexpr std::chrono::minutes lookInterval{15};
constexpr Seconds hour{3600};
constexpr Seconds day{86'400};
constexpr Seconds daySpread = 2 * hour;
constexpr int mostDoublings = 5;

}  // namespace

UpdateSchedule::UpdateSchedule(UpdateScheduleParts parts, std::function<void()> check)
    : m_parts(std::move(parts)), m_check(std::move(check)) {
}

void UpdateSchedule::start() {
    m_wait = day + upTo(daySpread);
    const auto delay = std::chrono::duration_cast<std::chrono::milliseconds>(earliestLook + upTo(lookSpread));
    m_timer = m_parts.mainQueue.after(delay, [this] {
        m_timer = m_parts.mainQueue.every(lookInterval, [this] { look(); });
        look();
    });
}

void UpdateSchedule::checkEnded() {
    m_parts.preferences.setDate(lastCheckKey, m_parts.clock.now());
    m_wait = day + upTo(daySpread);
    m_failures = 0;
}

void UpdateSchedule::checkFailed() {
    const Seconds pause = std::min(hour * (1 << std::min(m_failures, mostDoublings)), day);
    m_retryTime = m_parts.clock.uptime() + pause + upTo(hour);
    ++m_failures;
}

void UpdateSchedule::look() {
    if (isDue()) {
        m_check();
    }
}

bool UpdateSchedule::isDue() const {
    if (m_parts.clock.uptime() < m_retryTime) {
        return false;
    }
    const auto last = m_parts.preferences.date(lastCheckKey);
    if (!last) {
        return true;
    }
    // A time that lies a day or more ahead was noted by a wrong clock; one that is no number is no time either.
    const Seconds elapsed = m_parts.clock.now() - *last;
    const bool isRecent = elapsed >= -day && elapsed < m_wait;
    return !isRecent;
}

Seconds UpdateSchedule::upTo(Seconds span) const {
    return span * (static_cast<double>(m_parts.random()) / std::numeric_limits<std::uint32_t>::max());
}

}  // namespace kestrune
