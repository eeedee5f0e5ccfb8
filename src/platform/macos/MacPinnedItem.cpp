#include "platform/macos/MacPinnedItem.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

#include "base/Text.h"
#include "platform/PathText.h"
#include "platform/macos/MacTrashError.h"

namespace kestrune {

namespace {

TrashError openingError(int errorNumber) {
    switch (errorNumber) {
        case ENOENT:
        case ENOTDIR:
            return itemMissing();
        case ELOOP:
        case EXDEV:
        case ESTALE:
            return protectedOrChanged();
        default:
            return trashSystemError(errorNumber);
    }
}

}  // namespace

int openMacItem(int folder, const std::string& name, const MacFileStatus& status, MacFileDescriptor& item) {
    const int kind = status.isFolder() ? O_DIRECTORY : 0;
    MacFileDescriptor opened(
        ::openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | kind));
    if (!opened) {
        return errno;
    }
    const auto found = macStatusOf(opened.get());
    if (!found.ok()) {
        return found.error();
    }
    item = std::move(opened);
    return found.value().identity == status.identity ? 0 : ESTALE;
}

bool MacPinnedItem::isInPlace() const {
    const auto found = macStatusIn(folder.descriptor.get(), leaf);
    return found.ok() && found.value().identity == status.identity;
}

std::optional<std::string> MacPinnedItem::pathWhileInPlace() const {
    const auto homeNow = pathNow(home.descriptor.get());
    const auto folderNow = pathNow(folder.descriptor.get());
    const bool isWhereSaid =
        homeNow && folderNow && *folderNow == (relativeFolder.empty() ? *homeNow : inFolder(*homeNow, relativeFolder));
    return isWhereSaid && isInPlace() ? std::optional(inFolder(*folderNow, leaf)) : std::nullopt;
}

std::optional<TrashError> pinMacItem(const std::string& home, const std::string& relativePath, MacPinnedItem& pinned) {
    const std::string homePath = standardizedPath(home);
    if (!homePath.starts_with('/') || home.find('\0') != std::string::npos || !isPlainRelativePath(relativePath)) {
        return protectedOrChanged();
    }
    pinned.path = inFolder(homePath, relativePath);
    pinned.leaf = lastPathComponent(relativePath);
    pinned.relativeFolder =
        relativePath == pinned.leaf ? "" : relativePath.substr(0, relativePath.size() - pinned.leaf.size() - 1);
    pinned.home = openMacFolder(AT_FDCWD, homePath);
    if (!pinned.home.isOpen()) {
        return openingError(pinned.home.error);
    }
    pinned.folder = openMacFolder(pinned.home.descriptor.get(), pinned.relativeFolder);
    if (!pinned.folder.isOpen()) {
        return openingError(pinned.folder.error);
    }
    const auto status = macStatusIn(pinned.folder.descriptor.get(), pinned.leaf);
    if (!status.ok()) {
        return openingError(status.error());
    }
    pinned.status = status.value();
    if (!pinned.status.isFolder() && !pinned.status.isRegularFile()) {
        return std::nullopt;
    }
    const int error = openMacItem(pinned.folder.descriptor.get(), pinned.leaf, pinned.status, pinned.item);
    // What may not be read moves all the same.
    const bool isPinned = error == 0 || error == EACCES || error == EPERM;
    return isPinned ? std::nullopt : std::optional(openingError(error));
}

}  // namespace kestrune
