#include "platform/linux/LinuxTrashWay.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

#include "base/Text.h"
#include "platform/linux/LinuxTrashError.h"

namespace kestrune {

namespace {

constexpr int pinFolder = O_PATH | O_DIRECTORY;

TrashError trashError(int errorNumber) {
    if (errorNumber == ELOOP || errorNumber == ENOTDIR || errorNumber == EXDEV) {
        return trashProblem(TrashProblem::unsafeTrash);
    }
    return trashSystemError(errorNumber);
}

bool onlyOwnerWrites(const LinuxFolder& folder) {
    return folder.isOwn() && !folder.status.groupOrOthersMayWrite();
}

/// What the link called name leads to, and the text of the link; no second link is followed.
LinuxFolder followOwnLink(const LinuxFolder& above, const std::string& name, std::string& text) {
    LinuxFolder refused;
    refused.error = trashProblem(TrashProblem::unsafeTrash);
    const LinuxFolder link =
        folderFrom(openWithoutLinks(above.descriptor.get(), name, O_PATH | O_NOFOLLOW, LinuxReach::below));
    if (link.error || !link.status.isLink() || !link.isOwn() || !onlyOwnerWrites(above)) {
        return refused;
    }
    std::array<char, PATH_MAX> target = {};
    const ssize_t length = ::readlinkat(link.descriptor.get(), "", target.data(), target.size() - 1);
    if (length <= 0) {
        return refused;
    }
    text.assign(target.data(), static_cast<std::size_t>(length));
    LinuxFolder folder = folderFrom(openWithoutLinks(above.descriptor.get(), text, pinFolder, LinuxReach::anywhere));
    if (!folder.error && !onlyOwnerWrites(folder)) {
        return refused;
    }
    return folder;
}

}  // namespace

bool LinuxFolder::isOwn() const {
    return status.owner == ::geteuid();
}

LinuxFolder folderFrom(LinuxOpened opened) {
    LinuxFolder folder;
    if (!opened.descriptor) {
        folder.error = trashError(opened.error);
        return folder;
    }
    const auto status = statusOf(opened.descriptor.get());
    if (!status.ok()) {
        folder.error = trashSystemError(status.error());
        return folder;
    }
    folder.descriptor = std::move(opened.descriptor);
    folder.status = status.value();
    return folder;
}

LinuxWalk goWay(const LinuxTrashWay& way) {
    const std::vector<std::string> names = split(way.path, '/');
    LinuxWalk walk;
    walk.path = standardizedPath(way.startPath + "/" + way.path);
    walk.deepest = folderFrom(openWithoutLinks(way.start.get(), ".", pinFolder, LinuxReach::below));
    for (std::size_t i = 0; i < names.size() && !walk.deepest.error; ++i) {
        LinuxOpened next = openWithoutLinks(walk.deepest.descriptor.get(), names[i], pinFolder, LinuxReach::below);
        if (next.error == ENOENT) {
            walk.missing.assign(names.begin() + static_cast<std::ptrdiff_t>(i), names.end());
            return walk;
        }
        if (next.error == ELOOP && way.mayBeLinked && i + 1 == names.size()) {
            std::string target;
            walk.deepest = followOwnLink(walk.deepest, names[i], target);
            walk.path = standardizedPath(target.starts_with('/') ? target : walk.path + "/../" + target);
        } else {
            walk.deepest = folderFrom(std::move(next));
        }
    }
    return walk;
}

LinuxFolder makeMissing(LinuxWalk walk) {
    LinuxFolder folder = std::move(walk.deepest);
    for (std::size_t i = 0; i < walk.missing.size() && !folder.error; ++i) {
        folder = folderFrom(openOrMakeFolder(folder.descriptor.get(), walk.missing[i], O_PATH));
    }
    return folder;
}

}  // namespace kestrune
