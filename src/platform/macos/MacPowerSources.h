#pragma once

#include "platform/PowerSources.h"

namespace kestrune {

/// Batteries and uninterruptible supplies as IOKit lists them.
class MacPowerSources final : public PowerSources {
public:
    [[nodiscard]] std::vector<PowerSource> sources() override;
};

}  // namespace kestrune
