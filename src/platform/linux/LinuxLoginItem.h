#pragma once

#include <optional>
#include <string>

#include "platform/FileStore.h"
#include "platform/LoginItem.h"

namespace kestrune {

/// An entry in the desktop's autostart folder (freedesktop.org's Desktop Application Autostart 0.5), with a systemd
/// user unit as the fallback. Files that somebody edited keep what was edited: an entry is only switched on and off, a
/// unit only linked and unlinked.
class LinuxLoginItem final : public LoginItem {
public:
    /// configHome is XDG_CONFIG_HOME or what stands for it; executable is the absolute path that starts this program.
    LinuxLoginItem(const std::string& configHome, std::string executable, FileStore& files);

    [[nodiscard]] bool isRegistered() const override;
    bool setRegistered(bool on) override;
    [[nodiscard]] bool isAgentInstalled() const override;
    bool setAgentInstalled(bool on) override;

private:
    [[nodiscard]] bool registerIn(const std::optional<std::string>& entry);
    [[nodiscard]] bool switchOff(const std::string& entry);
    [[nodiscard]] bool writeUnit();
    [[nodiscard]] bool linkUnit();

    const std::string m_executable;
    const std::string m_entry;
    const std::string m_unit;
    const std::string m_link;  ///< what enables the unit
    FileStore& m_files;
};

}  // namespace kestrune
