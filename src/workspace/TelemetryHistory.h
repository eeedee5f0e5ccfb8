#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "base/Clock.h"

namespace kestrune {

/// One beat of the figures that the Overview draws as a line.
struct TelemetrySample {
    Seconds time{};  ///< Clock::uptime
    int memoryPercent = 0;
    int cpuPercent = 0;
    std::optional<double> downloadRate;  ///< bytes per second
    std::optional<double> uploadRate;

    bool operator==(const TelemetrySample&) const = default;
};

inline constexpr Seconds telemetryHistorySpan{300};

/// history with sample at its end and without what is older than telemetryHistorySpan before it. A sample less than
/// one second after the last replaces it, so that opening the menu often does not bend the line.
[[nodiscard]] std::vector<TelemetrySample> appended(std::vector<TelemetrySample> history,
                                                    const TelemetrySample& sample);

}  // namespace kestrune
