#pragma once

#include <chrono>
#include <string>

#include "platform/PowerSources.h"

namespace kestrune {

/// The batteries below /sys/class/power_supply, by name; batteries of mice, keyboards and the like are left out. A
/// machine without one is looked at again at most every 30 s.
class LinuxPowerSources final : public PowerSources {
public:
    explicit LinuxPowerSources(std::string root = "/sys/class/power_supply",
                               std::chrono::milliseconds emptyListAge = std::chrono::seconds(30));

    [[nodiscard]] std::vector<PowerSource> sources() override;

private:
    std::string m_root;
    std::chrono::milliseconds m_emptyListAge;
    std::optional<std::chrono::steady_clock::time_point> m_foundEmptyAt;
};

}  // namespace kestrune
