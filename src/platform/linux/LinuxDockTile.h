#pragma once

#include "platform/DockTile.h"

namespace kestrune {

/// Docks and task bars that follow com.canonical.Unity.LauncherEntry. Which windows have an entry there is the window
/// manager's own decision, so the activation policy changes nothing.
class LinuxDockTile final : public DockTile {
public:
    void setActivationPolicy(ActivationPolicy policy) override;
    void setBadgeLabel(const std::string& label) override;
};

}  // namespace kestrune
