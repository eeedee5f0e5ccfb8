#pragma once

#include "platform/PowerSources.h"

namespace kestrune {

/// The batteries the test puts in; none until then.
class FakePowerSources final : public PowerSources {
public:
    [[nodiscard]] std::vector<PowerSource> sources() override {
        ++reads;
        return batteries;
    }

    std::vector<PowerSource> batteries;
    int reads = 0;
};

}  // namespace kestrune
