#pragma once

#include <memory>

#include "platform/Appearance.h"

namespace kestrune {

class PortalSettings;

/// The colour scheme and motion setting of the desktop, from org.freedesktop.portal.Settings. Main thread.
class LinuxAppearance final : public Appearance {
public:
    LinuxAppearance();
    ~LinuxAppearance() override;

    void start(Handler handler) override;

private:
    std::unique_ptr<PortalSettings> m_portal;
};

}  // namespace kestrune
