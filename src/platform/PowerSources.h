#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// One battery as the system describes it. A capacity that is not a number is nothing.
struct PowerSource {
    std::optional<std::int64_t> currentCapacity;
    std::optional<std::int64_t> maxCapacity;
    std::optional<std::string> state;  ///< "AC Power" or "Battery Power"

    bool operator==(const PowerSource&) const = default;
};

class PowerSources {
public:
    PowerSources() = default;
    PowerSources(const PowerSources&) = delete;
    PowerSources& operator=(const PowerSources&) = delete;
    virtual ~PowerSources() = default;

    /// The machine's batteries in the system's order; empty when there are none. One thread at a time.
    [[nodiscard]] virtual std::vector<PowerSource> sources() = 0;
};

}  // namespace kestrune
