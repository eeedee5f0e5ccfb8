#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/macos/MacFolders.h"
#include "platform/macos/MacVolumes.h"

namespace kestrune {

/// Where this user's Trash lies: ".Trash" in the home folder, and ".Trashes/UID" at the top of each volume. Any thread.
class MacTrashFolders final {
public:
    /// home is absolute and in standard form; volumes are those of this moment, and outlive the object.
    MacTrashFolders(const std::string& home, const std::vector<MacVolume>& volumes);

    /// Whether path lies directly in one of them, by its text alone.
    [[nodiscard]] bool holds(const std::string& path) const;

    /// Opens the folder at path, following no link: ENOENT also when path is none of them.
    [[nodiscard]] MacFolder open(const std::string& path) const;

    /// Whether nothing but the Finder's own notes lies in any of them that is on a disk of this machine: a server that
    /// does not answer would never let go. Nothing when one of them cannot be seen and none that can holds anything.
    [[nodiscard]] std::optional<bool> areEmpty() const;

private:
    [[nodiscard]] MacFolder openOnVolume(const std::string& mountPoint) const;

    const std::vector<MacVolume>& m_volumes;
    const std::string m_inHome;
    const std::string m_onVolume;
};

}  // namespace kestrune
