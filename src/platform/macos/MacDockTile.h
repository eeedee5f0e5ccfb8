#pragma once

#include "platform/DockTile.h"

namespace kestrune {

/// The program's tile in the Dock, which is there under the regular policy only.
class MacDockTile final : public DockTile {
public:
    void setActivationPolicy(ActivationPolicy policy) override;
    void setBadgeLabel(const std::string& label) override;
    void activate() override;
};

}  // namespace kestrune
