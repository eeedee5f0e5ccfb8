#include "platform/linux/LinuxPutBackItem.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/Text.h"
#include "platform/PathText.h"
#include "platform/linux/LinuxSafeOpen.h"
#include "platform/linux/LinuxTrashError.h"

namespace kestrune {

namespace {

constexpr int pinFolder = O_PATH | O_DIRECTORY;
constexpr int pinAnything = O_PATH | O_NOFOLLOW;

PutBackError missing() {
    return {PutBackFailure::missing, {}, {}};
}

PutBackError changed() {
    return {PutBackFailure::changed, {}, {}};
}

PutBackError noRecord() {
    return {PutBackFailure::noRecord, {}, {}};
}

PutBackError openingError(int errorNumber) {
    switch (errorNumber) {
        case ENOENT:
        case ENOTDIR:
            return missing();
        case ELOOP:
        case EXDEV:
            return changed();
        default:
            return putBackSystemError(errorNumber);
    }
}

/// Takes what was opened and its status.
std::optional<PutBackError> keep(LinuxOpened opened, LinuxFileDescriptor& descriptor, LinuxFileStatus& status) {
    if (!opened.descriptor) {
        return openingError(opened.error);
    }
    descriptor = std::move(opened.descriptor);
    const auto found = statusOf(descriptor.get());
    if (!found.ok()) {
        return putBackSystemError(found.error());
    }
    status = found.value();
    return std::nullopt;
}

/// Opens a folder of the Trash that must be the user's alone.
std::optional<PutBackError> openOwn(const LinuxFolder& trash, const std::string& name, LinuxFolder& folder) {
    if (auto error = keep(openWithoutLinks(trash.descriptor.get(), name, pinFolder, LinuxReach::mount),
                          folder.descriptor, folder.status)) {
        return error;
    }
    if (!folder.isOwn() || folder.status.othersMayWrite()) {
        return putBackFromUnsafeTrash();
    }
    return std::nullopt;
}

/// Splits "TRASH/files/NAME".
bool split(const std::string& location, std::string& trashPath, std::string& name) {
    if (!location.starts_with('/') || location.find('\0') != std::string::npos ||
        standardizedPath(location) != location) {
        return false;
    }
    name = lastPathComponent(location);
    const std::string files = location.substr(0, location.size() - name.size());
    constexpr std::string_view ending = "/files/";
    if (!files.ends_with(ending) || files.size() == ending.size()) {
        return false;
    }
    trashPath = files.substr(0, files.size() - ending.size());
    return true;
}

}  // namespace

bool LinuxPutBackItem::isInPlace() const {
    const auto found = statusIn(files.descriptor.get(), name);
    return found.ok() && found.value().identity == status.identity;
}

LinuxPutBackFinder::LinuxPutBackFinder(const std::string& home, const std::string& dataHome,
                                       const std::vector<LinuxMount>& mounts)
    : m_home(home), m_dataHome(dataHome), m_mounts(mounts) {
}

std::optional<PutBackError> LinuxPutBackFinder::pin(const std::string& location, LinuxPutBackItem& item) const {
    item.location = location;
    if (!split(location, item.trashPath, item.name)) {
        return changed();
    }
    std::string recordBase;
    if (auto error = openTrash(item, recordBase)) {
        return error;
    }
    if (auto error = openItem(item)) {
        return error;
    }
    return readRecord(recordBase, item);
}

std::optional<PutBackError> LinuxPutBackFinder::openTrash(LinuxPutBackItem& item, std::string& recordBase) const {
    if (auto error = keep(openWithoutLinks(AT_FDCWD, item.trashPath, pinFolder, LinuxReach::anywhere),
                          item.trash.descriptor, item.trash.status)) {
        return error;
    }
    bool tooOpen = false;
    if (const auto top = topDirectoryOf(item)) {
        recordBase = *top;
        tooOpen = item.trash.status.groupOrOthersMayWrite();
    } else {
        const LinuxWalk walk = goToHomeTrash();
        if (walk.deepest.error) {
            return putBackFromUnsafeTrash();
        }
        if (!walk.missing.empty() || walk.path != item.trashPath ||
            walk.deepest.status.identity != item.trash.status.identity) {
            return changed();
        }
        tooOpen = item.trash.status.othersMayWrite();
    }
    if (!item.trash.isOwn() || tooOpen) {
        return putBackFromUnsafeTrash();
    }
    return std::nullopt;
}

LinuxWalk LinuxPutBackFinder::goToHomeTrash() const {
    LinuxTrashWay way;
    way.startPath = m_dataHome.empty() ? m_home : "/";
    way.start = openWithoutLinks(AT_FDCWD, way.startPath, pinFolder, LinuxReach::anywhere).descriptor;
    way.path = m_dataHome.empty() ? ".local/share/Trash" : standardizedPath(m_dataHome + "/Trash").substr(1);
    way.mayBeLinked = true;
    return goWay(way);
}

/// The top directory that has the item's Trash, as "$top/.Trash/$uid" or "$top/.Trash-$uid".
std::optional<std::string> LinuxPutBackFinder::topDirectoryOf(const LinuxPutBackItem& item) const {
    const std::string user = std::to_string(::geteuid());
    const std::string ownEnding = "/.Trash-" + user;
    const std::string sharedEnding = "/.Trash/" + user;
    const bool isShared = item.trashPath.ends_with(sharedEnding);
    if (!isShared && !item.trashPath.ends_with(ownEnding)) {
        return std::nullopt;
    }
    std::string top = item.trashPath.substr(0, item.trashPath.size() - (isShared ? sharedEnding : ownEnding).size());
    if (top.empty()) {
        top = "/";
    }
    const LinuxMount* mount = mountWithId(m_mounts, item.trash.status.mountId);
    const LinuxFolder folder = folderFrom(openWithoutLinks(AT_FDCWD, top, pinFolder, LinuxReach::anywhere));
    if (mount == nullptr || mount->mountPoint != top || folder.error || folder.status.mountId != mount->id) {
        return std::nullopt;
    }
    if (isShared) {
        const LinuxFolder shared =
            folderFrom(openWithoutLinks(folder.descriptor.get(), ".Trash", pinFolder, LinuxReach::mount));
        if (shared.error || !shared.status.isSticky() || (shared.status.owner != 0 && !shared.isOwn())) {
            return std::nullopt;
        }
    }
    return top;
}

std::optional<PutBackError> LinuxPutBackFinder::openItem(LinuxPutBackItem& item) const {
    if (auto error = openOwn(item.trash, "files", item.files)) {
        return error;
    }
    if (auto error = keep(openWithoutLinks(item.files.descriptor.get(), item.name, pinAnything, LinuxReach::mount),
                          item.item, item.status)) {
        return error;
    }
    const bool rightKind = item.status.isFolder() || item.status.isRegularFile();
    if (!rightKind || item.status.owner != ::geteuid() ||
        holdsMountPoint(m_mounts, item.status.mountId, item.location)) {
        return changed();
    }
    return std::nullopt;
}

std::optional<PutBackError> LinuxPutBackFinder::readRecord(const std::string& recordBase,
                                                           LinuxPutBackItem& item) const {
    if (const auto error = openOwn(item.trash, "info", item.info)) {
        return error->failure == PutBackFailure::missing ? noRecord() : *error;
    }
    const auto record = readPutBackRecord(item.info.descriptor.get(), item.name);
    if (!record.ok()) {
        return record.error();
    }
    const std::string& written = record.value().originalPath;
    // As a move writes it: another spelling is not one of ours, and could climb out of the top directory.
    if (written.starts_with('/') != recordBase.empty()) {
        return noRecord();
    }
    item.originalPath = recordBase.empty() ? written : inFolder(recordBase, written);
    item.record = record.value().identity;
    const bool isBelowHome = item.originalPath != m_home && isAtOrBelow(item.originalPath, m_home);
    if (!isBelowHome || standardizedPath(item.originalPath) != item.originalPath ||
        isAtOrBelow(item.originalPath, item.trashPath)) {
        return noRecord();
    }
    return std::nullopt;
}

}  // namespace kestrune
