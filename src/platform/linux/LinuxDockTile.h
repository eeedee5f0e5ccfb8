#pragma once

#include <QDBusServiceWatcher>

#include <memory>

#include "platform/DockTile.h"

namespace kestrune {

/// Docks and task bars that follow com.canonical.Unity.LauncherEntry. Which windows have an entry there is the window
/// manager's own decision, so the activation policy changes nothing. These docks show numbers only: any badge is one
/// thing that waits. Nothing happens without a session bus.
class LinuxDockTile final : public DockTile {
public:
    void setActivationPolicy(ActivationPolicy policy) override;
    void setBadgeLabel(const std::string& label) override;

    void activate() override {}

private:
    void tell() const;

    bool m_hasBadge = false;
    std::unique_ptr<QDBusServiceWatcher> m_docks;  ///< while there is a badge, for docks that start later
};

}  // namespace kestrune
