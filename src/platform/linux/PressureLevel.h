#pragma once

#include <optional>
#include <string_view>

#include "platform/MemoryPressureSource.h"

namespace kestrune {

/// What /proc/pressure/memory says: percent of the last ten seconds in which at least one task, or every task at once,
/// waited for memory.
struct PressureReading {
    double someAvg10 = 0;
    double fullAvg10 = 0;

    bool operator==(const PressureReading&) const = default;
};

/// Nothing without a "some" line. A missing "full" line reads as 0.
[[nodiscard]] std::optional<PressureReading> parsePressure(std::string_view text);

/// The level of one reading: critical when every task waited for a tenth of the time, warning when some task did, or
/// when the kernel's trigger told of a stall in the last moments, before the average rises; else normal.
[[nodiscard]] PressureLevels pressureLevels(const PressureReading& reading, bool triggered);

}  // namespace kestrune
