#pragma once

#include <string>

#include "platform/FileStore.h"
#include "platform/LoginItem.h"

namespace kestrune {

/// An entry in the desktop's autostart folder (freedesktop.org's Desktop Application Autostart 0.5), with a systemd
/// user unit as the fallback.
class LinuxLoginItem final : public LoginItem {
public:
    /// configHome is XDG_CONFIG_HOME or what stands for it; executable is the absolute path of this program.
    LinuxLoginItem(std::string configHome, std::string executable, FileStore& files);

    [[nodiscard]] bool isRegistered() const override;
    bool setRegistered(bool on) override;
    [[nodiscard]] bool isAgentInstalled() const override;
    bool setAgentInstalled(bool on) override;

private:
    const std::string m_configHome;
    const std::string m_executable;
    FileStore& m_files;
};

}  // namespace kestrune
