#pragma once

#include <string>
#include <vector>

#include "base/Result.h"

namespace kestrune {

/// One mounted volume.
struct MacVolume {
    std::string mountPoint;
    bool isLocal = false;  ///< on a disk of this machine
};

/// The volumes that are mounted now (getfsstat(2)), or the errno. Waits for no disk and no server. Any thread.
[[nodiscard]] Result<std::vector<MacVolume>, int> macVolumes();

/// Whether a volume is mounted at path or below it. path is absolute. Pure.
[[nodiscard]] bool holdsVolume(const std::vector<MacVolume>& volumes, const std::string& path);

}  // namespace kestrune
