#include "platform/linux/LinuxPowerSupply.h"

#include <algorithm>
#include <utility>

#include "base/WholeNumber.h"

namespace kestrune {

namespace {

std::optional<std::int64_t> integer(const std::optional<std::string>& text) {
    return text ? wholeNumber<std::int64_t>(*text) : std::nullopt;
}

bool belongsToDevice(const LinuxPowerSupply& supply) {
    return supply.scope == "Device";
}

bool isBattery(const LinuxPowerSupply& supply) {
    return supply.type == "Battery" && !belongsToDevice(supply) && supply.present != "0";
}

bool isAdapter(const LinuxPowerSupply& supply) {
    return (supply.type == "Mains" || supply.type == "USB") && !belongsToDevice(supply) && supply.online;
}

// What the adapters say comes first: with a weak one, or at a charging limit, the battery says "Discharging" or
// "Unknown" although the machine is plugged in.
std::optional<std::string> powerState(const LinuxPowerSupply& battery, bool hasAdapter, bool isPluggedIn) {
    const std::string status = battery.status.value_or("");
    if (isPluggedIn || status == "Charging") {
        return "AC Power";
    }
    if (hasAdapter || status == "Discharging") {
        return "Battery Power";
    }
    if (status == "Full" || status == "Not charging") {
        return "AC Power";
    }
    return std::nullopt;
}

}  // namespace

std::vector<PowerSource> batteriesAmong(const std::vector<LinuxPowerSupply>& supplies) {
    const bool hasAdapter = std::any_of(supplies.begin(), supplies.end(), isAdapter);
    const bool isPluggedIn = std::any_of(supplies.begin(), supplies.end(), [](const LinuxPowerSupply& supply) {
        return isAdapter(supply) && integer(supply.online).value_or(0) != 0;
    });
    std::vector<PowerSource> batteries;
    for (const LinuxPowerSupply& supply : supplies) {
        if (!isBattery(supply)) {
            continue;
        }
        PowerSource source{integer(supply.capacity), 100, powerState(supply, hasAdapter, isPluggedIn)};
        for (const auto& [now, full] : {std::pair(integer(supply.energyNow), integer(supply.energyFull)),
                                        std::pair(integer(supply.chargeNow), integer(supply.chargeFull))}) {
            if (now && full && *full >= 1) {
                source.currentCapacity = now;
                source.maxCapacity = full;
                break;
            }
        }
        batteries.push_back(std::move(source));
    }
    return batteries;
}

}  // namespace kestrune
