#include "platform/macos/MacVolumes.h"

#include <sys/mount.h>

#include <algorithm>
#include <cerrno>

#include "platform/PathText.h"

namespace kestrune {

namespace {

/// Where the volume with the users' files is mounted besides "/", which shows its folders, too.
constexpr const char* dataVolume = "/System/Volumes/Data";

}  // namespace

Result<std::vector<MacVolume>, int> macVolumes() {
    std::vector<struct statfs> found;
    int count = ::getfsstat(nullptr, 0, MNT_NOWAIT);
    // More than there were, so that a full answer tells that some were mounted meanwhile.
    while (count >= 0 && static_cast<std::size_t>(count) >= found.size()) {
        found.resize(static_cast<std::size_t>(count) + 8);
        count = ::getfsstat(found.data(), static_cast<int>(found.size() * sizeof(struct statfs)), MNT_NOWAIT);
    }
    if (count < 0) {
        return errno;
    }
    found.resize(static_cast<std::size_t>(count));
    std::vector<MacVolume> volumes;
    volumes.reserve(found.size());
    for (const struct statfs& volume : found) {
        volumes.push_back({volume.f_mntonname, (volume.f_flags & MNT_LOCAL) != 0});
    }
    return volumes;
}

bool holdsVolume(const std::vector<MacVolume>& volumes, const std::string& path) {
    return std::any_of(volumes.begin(), volumes.end(), [&path](const MacVolume& volume) {
        return isAtOrBelow(volume.mountPoint, path) || isAtOrBelow(volume.mountPoint, dataVolume + path);
    });
}

}  // namespace kestrune
