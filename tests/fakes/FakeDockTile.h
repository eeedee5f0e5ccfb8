#pragma once

#include <string>

#include "platform/DockTile.h"

namespace kestrune {

/// A dock that tells what it shows.
class FakeDockTile final : public DockTile {
public:
    void setActivationPolicy(ActivationPolicy newPolicy) override { policy = newPolicy; }

    void setBadgeLabel(const std::string& label) override { badge = label; }

    void activate() override { ++activations; }

    ActivationPolicy policy = ActivationPolicy::accessory;
    std::string badge;
    int activations = 0;
};

}  // namespace kestrune
