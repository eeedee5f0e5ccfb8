#include "platform/linux/LinuxPinnedItem.h"

#include <fcntl.h>

#include <cerrno>

#include "base/Text.h"
#include "platform/PathText.h"
#include "platform/linux/LinuxSafeOpen.h"
#include "platform/linux/LinuxTrashError.h"

namespace kestrune {

namespace {

constexpr int pinFolder = O_PATH | O_DIRECTORY;
constexpr int pinAnything = O_PATH | O_NOFOLLOW;

TrashError openingError(int errorNumber) {
    switch (errorNumber) {
        case ENOENT:
        case ENOTDIR:
            return itemMissing();
        case ELOOP:
        case EXDEV:
            return protectedOrChanged();
        default:
            return trashSystemError(errorNumber);
    }
}

/// Puts what was opened into descriptor and its status into status.
std::optional<TrashError> keep(LinuxOpened opened, LinuxFileDescriptor& descriptor, LinuxFileStatus& status) {
    if (!opened.descriptor) {
        return openingError(opened.error);
    }
    descriptor = std::move(opened.descriptor);
    const auto found = statusOf(descriptor.get());
    if (!found.ok()) {
        return trashSystemError(found.error());
    }
    status = found.value();
    return std::nullopt;
}

}  // namespace

bool LinuxPinnedItem::isInPlace() const {
    const auto found = statusIn(folder.get(), leaf);
    return found.ok() && found.value().identity == status.identity;
}

std::optional<TrashError> pinItem(const std::string& home, const std::string& relativePath, LinuxPinnedItem& pinned) {
    pinned.homePath = standardizedPath(home);
    if (!pinned.homePath.starts_with('/') || home.find('\0') != std::string::npos ||
        !isPlainRelativePath(relativePath)) {
        return protectedOrChanged();
    }
    pinned.path = (pinned.homePath == "/" ? "" : pinned.homePath) + "/" + relativePath;
    pinned.leaf = lastPathComponent(relativePath);

    LinuxOpened openedHome = openWithoutLinks(AT_FDCWD, pinned.homePath, pinFolder, LinuxReach::anywhere);
    if (!openedHome.descriptor) {
        return openingError(openedHome.error);
    }
    pinned.home = std::move(openedHome.descriptor);

    const std::string above = relativePath == pinned.leaf
                                  ? std::string(".")
                                  : relativePath.substr(0, relativePath.size() - pinned.leaf.size() - 1);
    if (auto error = keep(openWithoutLinks(pinned.home.get(), above, pinFolder, LinuxReach::below), pinned.folder,
                          pinned.folderStatus)) {
        return error;
    }
    return keep(openWithoutLinks(pinned.folder.get(), pinned.leaf, pinAnything, LinuxReach::below), pinned.item,
                pinned.status);
}

}  // namespace kestrune
