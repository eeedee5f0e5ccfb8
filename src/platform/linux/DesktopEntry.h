#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

/// What one .desktop file (Desktop Entry Specification 1.5) tells about finding its program among the running ones.
struct DesktopEntry {
    std::string name;
    std::vector<std::string> programs;  ///< file names: of TryExec, of Exec, and StartupWMClass
    bool hasOwnArguments = false;       ///< Exec says more than the program and the files to open

    bool operator==(const DesktopEntry&) const = default;
};

/// Reads the text of a .desktop file. Nothing for what is no application, is hidden from menus or has no name. A
/// program that only starts others (an interpreter, a package runner) is looked through.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view text);

/// True for a program that stands for whatever it was told to run: "python3.11", "bash", "flatpak", …
[[nodiscard]] bool isLauncher(std::string_view program);

}  // namespace kestrune
