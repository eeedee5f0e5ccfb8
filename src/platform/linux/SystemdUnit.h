#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrune {

/// The unit that a desktop, a package runner or the session bus starts an application in, as its name tells.
struct SystemdUnit {
    std::string launcher;      ///< "gnome", "flatpak", "snap", "dbus"; empty when the name does not say
    std::string application;   ///< the .desktop file's id, without ".desktop"
    bool isAutostart = false;  ///< started with the session, not by the user

    bool operator==(const SystemdUnit&) const = default;
};

/// Reads the name of a unit. Such names are described at https://systemd.io/DESKTOP_ENVIRONMENTS/
/// ("app-gnome-org.gnome.Maps-1234.scope", "app-org.kde.kate@1234.service"), or are those of snapd
/// ("snap.firefox.firefox-1234.scope") and of dbus-broker ("dbus-:1.2-org.gnome.Maps@0.service"); "-" within an id is
/// written "\x2d". Nothing for other units. Any thread.
[[nodiscard]] std::optional<SystemdUnit> parseSystemdUnit(std::string_view name);

/// The name of the unit that a process belongs to, from what its file "cgroup" in /proc says of the unified hierarchy;
/// empty when it belongs to none. Any thread.
[[nodiscard]] std::string systemdUnitName(std::string_view cgroup);

}  // namespace kestrune
