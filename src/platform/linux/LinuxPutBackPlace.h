#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/LinuxTrashWay.h"

namespace kestrune {

/// The free place an item goes back to: its folder, held by a descriptor, and its name there.
struct LinuxPutBackPlace {
    std::string path;
    std::string folderPath;
    std::string leaf;
    LinuxFolder folder;

    /// The identity of what has that name now; nothing without one, or when that cannot be seen.
    [[nodiscard]] std::optional<FileIdentity> occupant() const;

    /// Whether whoever goes from home to the place once more gets to the same folder.
    [[nodiscard]] bool isStillBelow(const std::string& home) const;
};

/// Opens the folder that path lies in, from home down and without following a link, and sees that it lies on the mount
/// of that number and that nothing has the name yet. The reason when that is not so. home is absolute, path lies below
/// it, both in standard form. Any thread.
[[nodiscard]] std::optional<PutBackError> openPutBackPlace(const std::string& home, const std::string& path,
                                                           std::uint64_t mountId, LinuxPutBackPlace& place);

}  // namespace kestrune
