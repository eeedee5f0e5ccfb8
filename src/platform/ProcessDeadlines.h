#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>

#include "platform/ProcessRunner.h"

namespace kestrune {

/// When what is to be done about a tool that does not end. One thread.
class ProcessDeadlines final {
public:
    using Clock = std::chrono::steady_clock;

    ProcessDeadlines(const ProcessLimits& limits, Clock::time_point start);

    /// A signal that the tool is to get by now and did not get yet: SIGTERM, later SIGKILL. Each is told once.
    [[nodiscard]] std::optional<int> takeDueSignal(Clock::time_point now);

    /// How long to wait for events until something is due. A tool that has ended gets no signals any more. Rounded up,
    /// so that a wait does not end just before its time and spin.
    [[nodiscard]] std::chrono::milliseconds untilNext(bool hasEnded, Clock::time_point now) const;

    /// Whether the caller may not wait any longer.
    [[nodiscard]] bool isOver(Clock::time_point now) const { return now >= m_abandonAt; }

private:
    struct Step {
        Clock::time_point time;
        int signal;
    };

    std::array<Step, 2> m_steps;
    std::size_t m_nextStep = 0;
    Clock::time_point m_abandonAt;
};

}  // namespace kestrune
