#include "platform/linux/LinuxPutBackPlace.h"

#include <fcntl.h>

#include <cerrno>

#include "base/Text.h"
#include "platform/PathText.h"
#include "platform/linux/LinuxTrashError.h"

namespace kestrune {

namespace {

constexpr int pinFolder = O_PATH | O_DIRECTORY;

LinuxOpened openBelow(const std::string& home, const std::string& folder) {
    LinuxOpened opened = openWithoutLinks(AT_FDCWD, home, pinFolder, LinuxReach::anywhere);
    if (!opened.descriptor || folder == home) {
        return opened;
    }
    const std::string relative = folder.substr(home == "/" ? 1 : home.size() + 1);
    return openWithoutLinks(opened.descriptor.get(), relative, pinFolder, LinuxReach::below);
}

PutBackError openingError(int errorNumber, const std::string& folder) {
    switch (errorNumber) {
        case ENOENT:
        case ENOTDIR:
        case ELOOP:
        case EXDEV:
            return {PutBackFailure::noFolder, {}, folder};
        default:
            return putBackSystemError(errorNumber);
    }
}

}  // namespace

std::optional<FileIdentity> LinuxPutBackPlace::occupant() const {
    const auto found = statusIn(folder.descriptor.get(), leaf);
    return found.ok() ? std::optional(found.value().identity) : std::nullopt;
}

bool LinuxPutBackPlace::isStillBelow(const std::string& home) const {
    const LinuxFolder again = folderFrom(openBelow(home, folderPath));
    return !again.error && again.status.identity == folder.status.identity;
}

std::optional<PutBackError> openPutBackPlace(const std::string& home, const std::string& path, std::uint64_t mountId,
                                             LinuxPutBackPlace& place) {
    place.path = path;
    place.leaf = lastPathComponent(path);
    place.folderPath = folderOf(path);
    LinuxOpened opened = openBelow(home, place.folderPath);
    if (!opened.descriptor) {
        return openingError(opened.error, place.folderPath);
    }
    const auto status = statusOf(opened.descriptor.get());
    if (!status.ok()) {
        return putBackSystemError(status.error());
    }
    place.folder.descriptor = std::move(opened.descriptor);
    place.folder.status = status.value();
    if (place.folder.status.mountId != mountId) {
        return PutBackError{PutBackFailure::otherDisk, {}, place.folderPath};
    }
    const auto occupant = statusIn(place.folder.descriptor.get(), place.leaf);
    if (occupant.ok()) {
        return PutBackError{PutBackFailure::inTheWay, {}, path};
    }
    return occupant.error() == ENOENT ? std::nullopt : std::optional(putBackSystemError(occupant.error()));
}

}  // namespace kestrune
