#include "platform/macos/MacPutBackItem.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/Text.h"
#include "platform/PathText.h"
#include "platform/macos/MacPinnedItem.h"
#include "platform/macos/MacTrashError.h"
#include "platform/macos/MacTrashFolders.h"
#include "platform/macos/MacTrashRecord.h"

namespace kestrune {

namespace {

PutBackError plainError(PutBackFailure failure) {
    return {failure, {}, {}};
}

PutBackError openingError(int errorNumber) {
    switch (errorNumber) {
        case ENOENT:
        case ENOTDIR:
            return plainError(PutBackFailure::missing);
        case ELOOP:
        case ESTALE:
            return plainError(PutBackFailure::changed);
        default:
            return putBackSystemError(errorNumber);
    }
}

std::optional<PutBackError> openTrash(const std::string& home, const std::vector<MacVolume>& volumes,
                                      MacPutBackItem& item) {
    const MacTrashFolders folders(home, volumes);
    const bool isPlain = item.location.starts_with('/') && item.location.find('\0') == std::string::npos &&
                         standardizedPath(item.location) == item.location;
    if (!isPlain || !folders.holds(item.location)) {
        return plainError(PutBackFailure::changed);
    }
    item.name = lastPathComponent(item.location);
    item.trash = folders.open(folderOf(item.location));
    if (!item.trash.isOpen()) {
        return openingError(item.trash.error);
    }
    if (!item.trash.status.isOwnFolder() || item.trash.status.othersMayWrite()) {
        return putBackFromUnsafeTrash();
    }
    return std::nullopt;
}

std::optional<PutBackError> openItem(const std::vector<MacVolume>& volumes, MacPutBackItem& item) {
    const auto status = macStatusIn(item.trash.descriptor.get(), item.name);
    if (!status.ok()) {
        return openingError(status.error());
    }
    item.status = status.value();
    const bool rightKind = item.status.isFolder() || item.status.isRegularFile();
    const bool isMount =
        item.status.identity.device != item.trash.status.identity.device || holdsVolume(volumes, item.location);
    if (!rightKind || isMount || item.status.owner != ::geteuid()) {
        return plainError(PutBackFailure::changed);
    }
    const int error = openMacItem(item.trash.descriptor.get(), item.name, item.status, item.item);
    return error == 0 ? std::nullopt : std::optional(openingError(error));
}

/// Whether a move from home writes this path, and so no other spelling of it counts.
bool isPlaceBelow(const std::string& home, const std::string& path, const std::string& trash) {
    return path.starts_with('/') && standardizedPath(path) == path && path != home && isAtOrBelow(path, home) &&
           !isAtOrBelow(path, trash);
}

std::optional<PutBackError> openPlace(const std::string& home, MacPutBackItem& item) {
    item.folderPath = folderOf(item.originalPath);
    item.leaf = lastPathComponent(item.originalPath);
    item.folder = openBelowMacHome(home, item.folderPath);
    switch (item.folder.error) {
        case 0:
            break;
        case ENOENT:
        case ENOTDIR:
        case ELOOP:
        case ENAMETOOLONG:
            return PutBackError{PutBackFailure::noFolder, {}, item.folderPath};
        default:
            return putBackSystemError(item.folder.error);
    }
    if (item.folder.status.identity.device != item.trash.status.identity.device) {
        return PutBackError{PutBackFailure::otherDisk, {}, item.folderPath};
    }
    const auto occupant = macStatusIn(item.folder.descriptor.get(), item.leaf);
    if (occupant.ok()) {
        return PutBackError{PutBackFailure::inTheWay, {}, item.originalPath};
    }
    return occupant.error() == ENOENT ? std::nullopt : std::optional(putBackSystemError(occupant.error()));
}

}  // namespace

bool MacPutBackItem::isInTrash() const {
    const auto found = macStatusIn(trash.descriptor.get(), name);
    return found.ok() && found.value().identity == status.identity;
}

std::optional<FileIdentity> MacPutBackItem::occupant() const {
    const auto found = macStatusIn(folder.descriptor.get(), leaf);
    return found.ok() ? std::optional(found.value().identity) : std::nullopt;
}

std::optional<PutBackError> pinMacPutBack(const std::string& home, const std::vector<MacVolume>& volumes,
                                          const std::string& location, MacPutBackItem& item) {
    item.location = location;
    if (auto error = openTrash(home, volumes, item)) {
        return error;
    }
    if (auto error = openItem(volumes, item)) {
        return error;
    }
    auto path = MacTrashRecord::read(item.item.get(), item.status.identity);
    if (!path || !isPlaceBelow(home, *path, folderOf(location))) {
        return plainError(PutBackFailure::noRecord);
    }
    item.originalPath = std::move(*path);
    return openPlace(home, item);
}

MacFolder openBelowMacHome(const std::string& home, const std::string& path) {
    MacFolder folder = openMacFolder(AT_FDCWD, home);
    if (!folder.isOpen() || path == home) {
        return folder;
    }
    return openMacFolder(folder.descriptor.get(), path.substr(inFolder(home, "").size()));
}

}  // namespace kestrune
