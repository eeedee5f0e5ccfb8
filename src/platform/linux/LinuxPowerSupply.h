#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/PowerSources.h"

namespace kestrune {

/// The attributes of one folder below /sys/class/power_supply, as text without its line end; an attribute that cannot
/// be read is nothing.
struct LinuxPowerSupply {
    std::optional<std::string> type;   ///< "Battery", "Mains", "USB", …
    std::optional<std::string> scope;  ///< "Device" for the battery of an input device
    std::optional<std::string> present;
    std::optional<std::string> online;
    std::optional<std::string> status;
    std::optional<std::string> energyNow;
    std::optional<std::string> energyFull;
    std::optional<std::string> chargeNow;
    std::optional<std::string> chargeFull;
    std::optional<std::string> capacity;  ///< percent
};

/// The machine's own batteries among supplies, in their order. A pure function.
[[nodiscard]] std::vector<PowerSource> batteriesAmong(const std::vector<LinuxPowerSupply>& supplies);

}  // namespace kestrune
