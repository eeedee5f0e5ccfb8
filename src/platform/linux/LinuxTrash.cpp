#include "platform/linux/LinuxTrash.h"

#include <unistd.h>

#include "base/Text.h"
#include "platform/linux/LinuxMountTable.h"
#include "platform/linux/LinuxPinnedItem.h"
#include "platform/linux/LinuxPutBackItem.h"
#include "platform/linux/LinuxPutBackMove.h"
#include "platform/linux/LinuxPutBackPlace.h"
#include "platform/linux/LinuxTrashContent.h"
#include "platform/linux/LinuxTrashError.h"
#include "platform/linux/LinuxTrashFolder.h"
#include "platform/linux/LinuxTrashMove.h"

namespace kestrune {

namespace {

bool mayMove(const LinuxPinnedItem& item, const std::optional<FileIdentity>& expected) {
    const bool rightKind = item.status.isFolder() || item.status.isRegularFile();
    const bool isMount = item.status.isMountPoint || item.status.mountId != item.folderStatus.mountId;
    const bool asExpected = !expected || *expected == item.status.identity;
    return rightKind && !isMount && asExpected && item.status.owner == ::geteuid();
}

/// What a move back from the Trash needs, or why there is none.
struct PutBack {
    PutBack(const std::string& givenHome, const std::string& dataHome, const std::string& location)
        : home(standardizedPath(givenHome)), error(find(dataHome, location)) {}

    std::string home;
    LinuxMountTable mounts;
    LinuxPutBackItem item;
    LinuxPutBackPlace place;
    std::optional<PutBackError> error;

private:
    std::optional<PutBackError> find(const std::string& dataHome, const std::string& location) {
        const auto now = mounts.mounts();
        if (!now.ok()) {
            return putBackSystemError(now.error());
        }
        if (auto failure = LinuxPutBackFinder(home, dataHome, now.value()).pin(location, item)) {
            return failure;
        }
        return openPutBackPlace(home, item.originalPath, item.files.status.mountId, place);
    }
};

}  // namespace

LinuxTrash::LinuxTrash(std::optional<std::string> dataHome)
    : m_dataHome(dataHome && dataHome->starts_with('/') ? std::move(*dataHome) : std::string()) {
}

std::optional<FileIdentity> LinuxTrash::identity(const std::string& home, const std::string& relativePath) {
    LinuxPinnedItem item;
    if (pinItem(home, relativePath, item) || item.status.isLink()) {
        return std::nullopt;
    }
    return item.status.identity;
}

std::optional<bool> LinuxTrash::isEmpty(const std::string& home) {
    const auto mounts = LinuxMountTable().mounts();
    return isTrashEmpty(home, m_dataHome, mounts.ok() ? mounts.value() : std::vector<LinuxMount>());
}

Result<TrashedItem, TrashError> LinuxTrash::moveToTrash(const TrashRequest& request) {
    LinuxPinnedItem item;
    if (const auto error = pinItem(request.home, request.relativePath, item)) {
        return *error;
    }
    if (!mayMove(item, request.expected)) {
        return protectedOrChanged();
    }
    const LinuxMountTable table;
    const auto mounts = table.mounts();
    if (!mounts.ok()) {
        return trashSystemError(mounts.error());
    }
    if (holdsMountPoint(mounts.value(), item.status.mountId, item.path)) {
        return protectedOrChanged();
    }
    LinuxTrashFolder trash;
    if (const auto error = LinuxTrashFinder(item, m_dataHome, mounts.value()).find(trash)) {
        return *error;
    }
    return LinuxTrashMove(item, trash, table).run();
}

Result<PutBackPlan, PutBackError> LinuxTrash::planPutBack(const std::string& home, const std::string& location) {
    const PutBack look(home, m_dataHome, location);
    if (look.error) {
        return *look.error;
    }
    return PutBackPlan{location, look.item.originalPath, look.item.status.identity};
}

Result<std::string, PutBackError> LinuxTrash::putBack(const std::string& home, const PutBackPlan& plan) {
    const PutBack look(home, m_dataHome, plan.location);
    if (look.error) {
        return *look.error;
    }
    if (look.item.status.identity != plan.item || look.item.originalPath != plan.originalPath) {
        return PutBackError{PutBackFailure::changed, {}, {}};
    }
    return LinuxPutBackMove(look.home, look.item, look.place, look.mounts).run();
}

}  // namespace kestrune
