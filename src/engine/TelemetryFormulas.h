#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/TelemetryRecords.h"
#include "platform/HostStatistics.h"
#include "platform/VolumeInfo.h"

/// The arithmetic behind SystemEngine's figures, as pure functions. docs/figures.md explains them. Any thread.
namespace kestrune::TelemetryFormulas {

/// part of whole in percent, truncated toward zero; 0 when whole is not positive. It multiplies before it divides, so
/// that 29 of 100 is 29: 0.29 as a double times 100 would truncate to 28.
[[nodiscard]] int percent(double part, double whole);

/// Six zeros when pages is nothing.
[[nodiscard]] VMStat vmStat(const std::optional<MemoryPages>& pages);

[[nodiscard]] MemorySummary memorySummary(const VMStat& stat);

/// Percent of non-idle time between two samples, or since boot when there is no previous one.
[[nodiscard]] int cpuLoadPercentage(const std::optional<CpuTicks>& previous, const CpuTicks& current);

[[nodiscard]] DiskSummary diskSummary(const VolumeCapacity& capacity);

/// Reads what "df -k /" printed; zeros when it does not look as it should.
[[nodiscard]] DiskSummary diskSummaryFromDf(std::string_view output);

/// "3d 4h 12m", or "4h 12m" below one day. Negative times read as 0.
[[nodiscard]] std::string uptimeText(std::int64_t seconds);

}  // namespace kestrune::TelemetryFormulas
