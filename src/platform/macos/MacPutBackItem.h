#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/macos/MacFolders.h"
#include "platform/macos/MacVolumes.h"

namespace kestrune {

/// An item that lies in the user's Trash and the free place it goes back to, held by descriptors.
struct MacPutBackItem {
    std::string location;
    std::string name;  ///< in trash
    MacFolder trash;
    MacFileDescriptor item;
    MacFileStatus status;
    std::string originalPath;  ///< absolute, below home
    std::string folderPath;    ///< what holds originalPath
    std::string leaf;          ///< the item's name there
    MacFolder folder;

    /// Whether the item still has its name in the Trash.
    [[nodiscard]] bool isInTrash() const;

    /// The identity of what lies at the place now; nothing without one, or when that cannot be seen.
    [[nodiscard]] std::optional<FileIdentity> occupant() const;
};

/// Pins what lies at location and the place its restore record names; the reason when that is not possible. No link is
/// followed and nothing is changed. home is absolute and in standard form, volumes are those of this moment. Any
/// thread.
[[nodiscard]] std::optional<PutBackError> pinMacPutBack(const std::string& home, const std::vector<MacVolume>& volumes,
                                                        const std::string& location, MacPutBackItem& item);

/// The folder at path, which is home or lies below it, reached from home without following a link. Any thread.
[[nodiscard]] MacFolder openBelowMacHome(const std::string& home, const std::string& path);

}  // namespace kestrune
