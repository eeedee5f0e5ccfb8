#include "engine/MacTelemetry.h"

#include <algorithm>

#include "base/Localized.h"
#include "engine/TelemetryFormulas.h"

namespace kestrune::MacTelemetry {

std::optional<NetworkCounters> networkCounters(const std::optional<std::vector<NetworkInterface>>& interfaces) {
    if (!interfaces) {
        return std::nullopt;
    }
    std::optional<NetworkCounters> sum;
    for (const NetworkInterface& interface : *interfaces) {
        if (!interface.isEthernetOrWiFi || !interface.isUp || !interface.bytes) {
            continue;
        }
        if (!sum) {
            sum.emplace();
        }
        sum->received += interface.bytes->received;
        sum->sent += interface.bytes->sent;
    }
    return sum;
}

std::optional<NetworkRates> rates(const NetworkCounters& previous, const NetworkCounters& current, double elapsed) {
    if (!(elapsed > 0) || current.received < previous.received || current.sent < previous.sent) {
        return std::nullopt;
    }
    return NetworkRates{static_cast<double>(current.received - previous.received) / elapsed,
                        static_cast<double>(current.sent - previous.sent) / elapsed};
}

std::optional<BatteryReading> battery(const std::vector<PowerSource>& sources) {
    const auto usable = std::find_if(sources.begin(), sources.end(), [](const PowerSource& source) {
        return source.currentCapacity && source.maxCapacity && *source.maxCapacity >= 1;
    });
    if (usable == sources.end()) {
        return std::nullopt;
    }
    const int percent = TelemetryFormulas::percent(static_cast<double>(*usable->currentCapacity),
                                                   static_cast<double>(*usable->maxCapacity));
    return BatteryReading{std::clamp(percent, 0, 100),
                          usable->state == "AC Power" ? localizable("On power adapter") : localizable("On battery")};
}

}  // namespace kestrune::MacTelemetry
