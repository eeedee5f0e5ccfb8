#include "platform/ProcessDeadlines.h"

#include <algorithm>
#include <csignal>

namespace kestrune {

namespace {

using Clock = ProcessDeadlines::Clock;

Clock::time_point after(Clock::time_point start, double seconds) {
    return start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

}  // namespace

ProcessDeadlines::ProcessDeadlines(const ProcessLimits& limits, Clock::time_point start)
    : m_steps{{{after(start, limits.terminateAfterSeconds), SIGTERM},
               {after(start, limits.killAfterSeconds), SIGKILL}}},
      m_abandonAt(after(start, limits.abandonAfterSeconds)) {
}

std::optional<int> ProcessDeadlines::takeDueSignal(Clock::time_point now) {
    if (m_nextStep == m_steps.size() || now < m_steps[m_nextStep].time) {
        return std::nullopt;
    }
    return m_steps[m_nextStep++].signal;
}

std::chrono::milliseconds ProcessDeadlines::untilNext(bool hasEnded, Clock::time_point now) const {
    Clock::time_point wakeAt = m_abandonAt;
    if (!hasEnded && m_nextStep < m_steps.size()) {
        wakeAt = std::min(wakeAt, m_steps[m_nextStep].time);
    }
    return std::chrono::ceil<std::chrono::milliseconds>(std::max(wakeAt - now, Clock::duration{}));
}

}  // namespace kestrune
