#include "platform/linux/LinuxTrashFolder.h"

#include <fcntl.h>
#include <sys/vfs.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "base/Text.h"
#include "platform/PathText.h"
#include "platform/linux/LinuxTrashError.h"

namespace kestrune {

namespace {

constexpr int pinFolder = O_PATH | O_DIRECTORY;

LinuxFolder openInside(const LinuxFolder& trash, const std::string& name) {
    LinuxFolder inside = folderFrom(openOrMakeFolder(trash.descriptor.get(), name, O_RDONLY));
    const bool safe =
        inside.isOwn() && !inside.status.othersMayWrite() && inside.status.mountId == trash.status.mountId;
    if (!inside.error && !safe) {
        inside.error = trashProblem(TrashProblem::unsafeTrash);
    }
    return inside;
}

}  // namespace

bool LinuxTrashFolder::stillLeadsTo(const std::string& name, const FileIdentity& item) const {
    const LinuxWalk walk = goWay(way);
    if (walk.deepest.error || !walk.missing.empty() || walk.path != path || walk.deepest.status.identity != identity) {
        return false;
    }
    const int trash = walk.deepest.descriptor.get();
    const LinuxFolder records = folderFrom(openWithoutLinks(trash, "info", pinFolder, LinuxReach::mount));
    const LinuxFolder items = folderFrom(openWithoutLinks(trash, "files", pinFolder, LinuxReach::mount));
    if (records.error || items.error || records.status.identity != info.status.identity) {
        return false;
    }
    const auto found = statusIn(items.descriptor.get(), name);
    return found.ok() && found.value().identity == item;
}

LinuxTrashFinder::LinuxTrashFinder(const LinuxPinnedItem& item, const std::string& dataHome,
                                   const std::vector<LinuxMount>& mounts)
    : m_item(item), m_dataHome(dataHome), m_mounts(mounts) {
}

std::optional<TrashError> LinuxTrashFinder::find(LinuxTrashFolder& folder) const {
    const bool given = !m_dataHome.empty();
    const std::string home = given ? m_dataHome : inFolder(m_item.homePath, ".local/share");
    const std::string trash = standardizedPath(inFolder(home, "Trash"));
    if (isAtOrBelow(trash, m_item.path)) {
        return trashProblem(TrashProblem::holdsTrash);
    }
    LinuxOpened start = openWithoutLinks(m_item.home.get(), given ? "/" : ".", pinFolder, LinuxReach::anywhere);
    if (!start.descriptor) {
        return trashSystemError(start.error);
    }
    folder.way = {std::move(start.descriptor), given ? "/" : m_item.homePath,
                  given ? trash.substr(1) : ".local/share/Trash", true};
    LinuxWalk walk = goWay(folder.way);
    if (walk.deepest.error) {
        return walk.deepest.error;
    }
    if (!isOnSameFileSystem(walk.deepest)) {
        return useInTopDirectory(folder);
    }
    folder.originalPath = m_item.path;
    folder.path = walk.path;
    return use(makeMissing(std::move(walk)), WhoMayWrite::ownerAndGroup, folder);
}

std::optional<TrashError> LinuxTrashFinder::useInTopDirectory(LinuxTrashFolder& folder) const {
    const LinuxMount* mount = mountWithId(m_mounts, m_item.folderStatus.mountId);
    if (mount == nullptr || !isAtOrBelow(m_item.path, mount->mountPoint)) {
        return trashProblem(TrashProblem::noTopDirectory);
    }
    LinuxFolder top = folderFrom(openWithoutLinks(AT_FDCWD, mount->mountPoint, pinFolder, LinuxReach::anywhere));
    if (top.error || top.status.mountId != mount->id) {
        return trashProblem(TrashProblem::noTopDirectory);
    }
    if (!isOnSameFileSystem(top)) {
        return trashSystemError(EXDEV);
    }
    folder.originalPath = m_item.path.substr(inFolder(mount->mountPoint, "").size());

    const LinuxFolder shared =
        folderFrom(openWithoutLinks(top.descriptor.get(), ".Trash", pinFolder, LinuxReach::mount));
    const bool sharedIsSafe = !shared.error && shared.status.isSticky() && (shared.status.owner == 0 || shared.isOwn());
    const std::string user = std::to_string(::geteuid());
    std::vector<std::string> names;
    if (sharedIsSafe) {
        names.push_back(".Trash/" + user);
    }
    names.push_back(".Trash-" + user);
    folder.way.start = std::move(top.descriptor);
    folder.way.startPath = mount->mountPoint;
    folder.way.mayBeLinked = false;
    std::optional<TrashError> error;
    for (const std::string& name : names) {
        if (isAtOrBelow(inFolder(mount->mountPoint, name), m_item.path)) {
            return trashProblem(TrashProblem::holdsTrash);
        }
        folder.way.path = name;
        LinuxWalk walk = goWay(folder.way);
        folder.path = walk.path;
        error = use(makeMissing(std::move(walk)), WhoMayWrite::onlyOwner, folder);
        if (!error) {
            break;
        }
    }
    return error;
}

std::optional<TrashError> LinuxTrashFinder::use(LinuxFolder trash, WhoMayWrite who, LinuxTrashFolder& folder) const {
    if (trash.error) {
        return trash.error;
    }
    const bool tooOpen =
        who == WhoMayWrite::onlyOwner ? trash.status.groupOrOthersMayWrite() : trash.status.othersMayWrite();
    if (!trash.isOwn() || tooOpen) {
        return trashProblem(TrashProblem::unsafeTrash);
    }
    folder.identity = trash.status.identity;
    folder.files = openInside(trash, "files");
    if (folder.files.error) {
        return folder.files.error;
    }
    if (!isOnSameFileSystem(folder.files)) {
        return trashSystemError(EXDEV);
    }
    folder.info = openInside(trash, "info");
    struct statfs limits = {};
    if (!folder.info.error && ::fstatfs(folder.info.descriptor.get(), &limits) != 0) {
        return trashSystemError(errno);
    }
    folder.longestName = std::min(std::size_t{NAME_MAX}, static_cast<std::size_t>(limits.f_namelen));
    return folder.info.error;
}

bool LinuxTrashFinder::isOnSameFileSystem(const LinuxFolder& folder) const {
    return folder.status.mountId == m_item.folderStatus.mountId &&
           folder.status.identity.device == m_item.folderStatus.identity.device;
}

}  // namespace kestrune
