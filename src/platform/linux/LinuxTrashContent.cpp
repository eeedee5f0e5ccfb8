#include "platform/linux/LinuxTrashContent.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "base/Text.h"
#include "platform/linux/LinuxDirectoryReader.h"
#include "platform/linux/LinuxTrashWay.h"

namespace kestrune {

namespace {

constexpr int pinFolder = O_PATH | O_DIRECTORY;

// Whether the Trash at the end of the way holds nothing; nothing when that cannot be seen.
std::optional<bool> isEmptyAt(const LinuxTrashWay& way) {
    const LinuxWalk walk = goWay(way);
    if (!walk.deepest.error && !walk.missing.empty()) {
        return true;
    }
    if (walk.deepest.error || !walk.deepest.isOwn()) {
        return std::nullopt;
    }
    LinuxOpened opened =
        openWithoutLinks(walk.deepest.descriptor.get(), "files", O_RDONLY | O_DIRECTORY, LinuxReach::mount);
    if (opened.error == ENOENT) {
        return true;
    }
    const LinuxFolder files = folderFrom(std::move(opened));
    if (files.error || !files.isOwn()) {
        return std::nullopt;
    }
    LinuxDirectoryReader reader;
    reader.begin(files.descriptor.get());
    const bool isEmpty = !reader.next();
    return reader.failed() ? std::nullopt : std::optional(isEmpty);
}

LinuxTrashWay wayBelow(LinuxFolder top, const std::string& topPath, const std::string& path) {
    return {std::move(top.descriptor), topPath, path, false};
}

LinuxFolder topOf(const LinuxMount& mount) {
    return folderFrom(openWithoutLinks(AT_FDCWD, mount.mountPoint, pinFolder, LinuxReach::anywhere));
}

// A Trash that no desktop would use, or that is not the user's, counts as none.
bool holdsSomething(const LinuxMount& mount) {
    const std::string user = std::to_string(::geteuid());
    const LinuxFolder top = topOf(mount);
    // Another volume may be mounted over this one.
    if (top.error || top.status.mountId != mount.id) {
        return false;
    }
    const LinuxFolder shared =
        folderFrom(openWithoutLinks(top.descriptor.get(), ".Trash", pinFolder, LinuxReach::mount));
    const bool sharedCounts = !shared.error && shared.status.isSticky();
    return (sharedCounts && !isEmptyAt(wayBelow(topOf(mount), mount.mountPoint, ".Trash/" + user)).value_or(true)) ||
           !isEmptyAt(wayBelow(topOf(mount), mount.mountPoint, ".Trash-" + user)).value_or(true);
}

// The kernel gives file systems without a block device the major number 0.
bool isOnDisk(const LinuxMount& mount) {
    return !mount.device.starts_with("0:");
}

}  // namespace

std::optional<bool> isTrashEmpty(const std::string& home, const std::string& dataHome,
                                 const std::vector<LinuxMount>& mounts) {
    LinuxFolder homeFolder = folderFrom(openWithoutLinks(AT_FDCWD, home, pinFolder, LinuxReach::anywhere));
    if (homeFolder.error) {
        return std::nullopt;
    }
    const std::uint64_t homeMount = homeFolder.status.mountId;
    if (std::any_of(mounts.begin(), mounts.end(), [homeMount](const LinuxMount& mount) {
            return (mount.id == homeMount || isOnDisk(mount)) && holdsSomething(mount);
        })) {
        return false;
    }
    if (dataHome.empty()) {
        return isEmptyAt({std::move(homeFolder.descriptor), home, ".local/share/Trash", true});
    }
    LinuxFolder root = folderFrom(openWithoutLinks(AT_FDCWD, "/", pinFolder, LinuxReach::anywhere));
    return isEmptyAt({std::move(root.descriptor), "/", standardizedPath(dataHome + "/Trash").substr(1), true});
}

}  // namespace kestrune
