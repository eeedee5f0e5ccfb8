#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemTools.h"

/// Which file manager the user has, and how it is told to end. Any thread.
namespace kestrune::LinuxFileManager {

struct Places {
    std::vector<std::string> choices;  ///< the mimeapps.list files, the one that counts most first
    std::string programs;              ///< the folder of the file managers

    bool operator==(const Places&) const = default;
};

/// The .desktop file ids that text (a mimeapps.list) prefers for folders, best first. Pure.
[[nodiscard]] std::vector<std::string> preferredForFolders(std::string_view text);

/// Where the desktop looks, in the order of freedesktop.org's MIME Applications Associations 1.0, section 2.
[[nodiscard]] Places standardPlaces();

/// Ends the file manager that opens folders. Where that one is not known, the first known one that is there; one that
/// is missing is named when there is none at all.
[[nodiscard]] ToolCommand quitCommand(const Places& places);

}  // namespace kestrune::LinuxFileManager
