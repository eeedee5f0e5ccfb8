#pragma once

#include <optional>
#include <vector>

#include "engine/TelemetryRecords.h"
#include "platform/HostStatistics.h"
#include "platform/PowerSources.h"

/// Network and battery figures, as pure functions over what the system reported. Any thread.
namespace kestrune::MacTelemetry {

/// The bytes of all physical Ethernet and Wi-Fi interfaces that are up; nothing when none counts.
[[nodiscard]] std::optional<NetworkCounters> networkCounters(
    const std::optional<std::vector<NetworkInterface>>& interfaces);

/// Bytes per second between two readings elapsed seconds apart; nothing when no time passed or a counter went
/// backwards (an interface that left, a counter that wrapped).
[[nodiscard]] std::optional<NetworkRates> rates(const NetworkCounters& previous, const NetworkCounters& current,
                                                double elapsed);

/// The first source that tells both capacities; nothing on a machine without a battery.
[[nodiscard]] std::optional<BatteryReading> battery(const std::vector<PowerSource>& sources);

}  // namespace kestrune::MacTelemetry
