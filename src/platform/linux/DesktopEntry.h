#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

/// What one .desktop file (Desktop Entry Specification 1.5) tells about an application and about finding it among the
/// running programs.
struct DesktopEntry {
    std::string id;                     ///< the file's name without ".desktop"; empty for text that is no file
    std::string name;                   ///< untranslated
    std::string localizedName;          ///< in the user's language; name when it is not translated
    std::string icon;                   ///< the name of an icon or an absolute path; may be empty
    std::string windowClass;            ///< StartupWMClass; may be empty
    std::vector<std::string> programs;  ///< file names: of TryExec, of Exec, and StartupWMClass
    bool hasOwnArguments = false;       ///< Exec says more than the program and the files to open
    bool isShown = true;                ///< in menus

    bool operator==(const DesktopEntry&) const = default;
};

/// Reads the text of a .desktop file. Nothing for what is no application, counts as deleted or has no name. A program
/// that only starts others (an interpreter, a package runner) is looked through. languages holds the names of the
/// user's language as the file may write them, the best first.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                                            const std::vector<std::string>& languages = {});

/// The names under which a translation into the language of locale ("de_DE.UTF-8@euro") may stand, the best first;
/// none for "C" and "POSIX".
[[nodiscard]] std::vector<std::string> languagesOf(std::string_view locale);

/// True for a program that stands for whatever it was told to run: "python3.11", "bash", "flatpak", …
[[nodiscard]] bool isLauncher(std::string_view program);

}  // namespace kestrune
