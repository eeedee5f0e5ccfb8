#include "platform/macos/MacTrash.h"

#include <fcntl.h>
#include <unistd.h>

#include "base/Text.h"
#include "platform/PathText.h"
#include "platform/macos/MacPinnedItem.h"
#include "platform/macos/MacPutBackMove.h"
#include "platform/macos/MacTrashError.h"
#include "platform/macos/MacTrashFolders.h"
#include "platform/macos/MacTrashMove.h"

namespace kestrune {

namespace {

bool mayMove(const MacPinnedItem& item, const std::optional<FileIdentity>& expected) {
    const bool rightKind = item.status.isFolder() || item.status.isRegularFile();
    const bool isMount = item.status.identity.device != item.folder.status.identity.device;
    const bool asExpected = !expected || *expected == item.status.identity;
    return rightKind && !isMount && asExpected && item.status.owner == ::geteuid();
}

/// What a move back from the Trash needs, or why there is none.
struct PutBack {
    PutBack(const std::string& givenHome, const std::string& location)
        : home(standardizedPath(givenHome)), error(find(givenHome, location)) {}

    std::string home;
    MacPutBackItem item;
    std::optional<PutBackError> error;

private:
    std::optional<PutBackError> find(const std::string& givenHome, const std::string& location) {
        if (!home.starts_with('/') || givenHome.find('\0') != std::string::npos) {
            return PutBackError{PutBackFailure::changed, {}, {}};
        }
        const auto volumes = macVolumes();
        return volumes.ok() ? pinMacPutBack(home, volumes.value(), location, item)
                            : std::optional(putBackSystemError(volumes.error()));
    }
};

}  // namespace

std::optional<FileIdentity> MacTrash::identity(const std::string& home, const std::string& relativePath) {
    MacPinnedItem item;
    if (pinMacItem(home, relativePath, item) || item.status.isLink()) {
        return std::nullopt;
    }
    return item.status.identity;
}

std::optional<bool> MacTrash::isEmpty(const std::string& home) {
    const auto volumes = macVolumes();
    const std::string path = standardizedPath(home);
    if (!volumes.ok() || !openMacFolder(AT_FDCWD, path).isOpen()) {
        return std::nullopt;
    }
    return MacTrashFolders(path, volumes.value()).areEmpty();
}

Result<TrashedItem, TrashError> MacTrash::moveToTrash(const TrashRequest& request) {
    MacPinnedItem item;
    if (const auto error = pinMacItem(request.home, request.relativePath, item)) {
        return *error;
    }
    if (!mayMove(item, request.expected)) {
        return protectedOrChanged();
    }
    const auto volumes = macVolumes();
    if (!volumes.ok()) {
        return trashSystemError(volumes.error());
    }
    if (holdsVolume(volumes.value(), item.path)) {
        return protectedOrChanged();
    }
    const std::string home = standardizedPath(request.home);
    if (isAtOrBelow(inFolder(home, ".Trash"), item.path) || isAtOrBelow(item.path, inFolder(home, ".Trash"))) {
        return trashProblem(TrashProblem::holdsTrash);
    }
    const MacTrashFolders folders(home, volumes.value());
    return MacTrashMove(item, folders, m_system).run();
}

Result<PutBackPlan, PutBackError> MacTrash::planPutBack(const std::string& home, const std::string& location) {
    const PutBack look(home, location);
    if (look.error) {
        return *look.error;
    }
    return PutBackPlan{location, look.item.originalPath, look.item.status.identity};
}

Result<std::string, PutBackError> MacTrash::putBack(const std::string& home, const PutBackPlan& plan) {
    const PutBack look(home, plan.location);
    if (look.error) {
        return *look.error;
    }
    if (look.item.status.identity != plan.item || look.item.originalPath != plan.originalPath) {
        return PutBackError{PutBackFailure::changed, {}, {}};
    }
    return MacPutBackMove(look.home, look.item).run();
}

}  // namespace kestrune
