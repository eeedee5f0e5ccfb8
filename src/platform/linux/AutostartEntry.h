#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The text of an entry in the desktop's autostart folder: freedesktop.org's Desktop Entry 1.5 and Desktop Application
/// Autostart 0.5. Pure.
namespace kestrune::AutostartEntry {

/// What of an entry decides whether its program is started.
struct Reading {
    bool isEntry = false;        ///< it has the group that makes it one
    bool isSwitchedOff = false;  ///< by one of the keys that desktops write for that
    std::string tryExec;         ///< the program that has to be there; may be empty

    bool operator==(const Reading&) const = default;
};

/// Our entry for the program at executable, an absolute path. Nothing for a path that an entry cannot hold: one with
/// control characters or bytes that are not UTF-8.
[[nodiscard]] std::optional<std::string> textFor(const std::string& executable);

[[nodiscard]] Reading read(std::string_view text);

/// Whether text is our entry for some path, and nobody has changed anything else in it.
[[nodiscard]] bool isOurs(std::string_view text);

/// The same entry switched on or off, everything else in it as it was.
[[nodiscard]] std::string switched(std::string_view text, bool on);

/// The same entry for the program at executable, which textFor takes, everything else in it as it was.
[[nodiscard]] std::string redirected(std::string_view text, const std::string& executable);

}  // namespace kestrune::AutostartEntry
