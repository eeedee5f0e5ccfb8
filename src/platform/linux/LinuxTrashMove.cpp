#include "platform/linux/LinuxTrashMove.h"

#include <cerrno>
#include <cstdio>
#include <ctime>

#include "platform/linux/LinuxSafeOpen.h"
#include "platform/linux/LinuxTrashError.h"
#include "platform/linux/TrashInfo.h"

namespace kestrune {

namespace {

constexpr unsigned longestSearchForName = 10'000;

std::tm localTimeNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    ::localtime_r(&now, &local);
    return local;
}

/// rename(2) that replaces nothing: 0 or the errno.
int renameIfFree(int fromFolder, const std::string& from, int toFolder, const std::string& to) {
    return ::renameat2(fromFolder, from.c_str(), toFolder, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
}

}  // namespace

LinuxTrashMove::LinuxTrashMove(const LinuxPinnedItem& item, const LinuxTrashFolder& trash,
                               const LinuxMountTable& mounts)
    : m_item(item),
      m_trash(trash),
      m_mounts(mounts),
      m_files(trash.files.descriptor.get()),
      m_info(trash.info.descriptor.get()),
      m_record(m_info) {
}

Result<TrashedItem, TrashError> LinuxTrashMove::run() {
    for (unsigned attempt = 0; attempt < longestSearchForName; ++attempt) {
        const std::string name = trashName(m_item.leaf, attempt, m_trash.longestName);
        Step step = lookFor(name);
        if (step == Step::done) {
            step = publishRecord(name);
        }
        if (step == Step::done) {
            step = rename(name);
        }
        if (step == Step::failed) {
            return m_error;
        }
        if (step == Step::done) {
            if (const auto doubt = doubtAbout(name)) {
                return putBack(name, *doubt);
            }
            return TrashedItem{m_trash.path + "/files/" + name};
        }
    }
    return trashProblem(TrashProblem::noFreeName);
}

LinuxTrashMove::Step LinuxTrashMove::publishRecord(const std::string& name) {
    if (!m_written) {
        if (const int error = m_record.write(trashInfoText(m_trash.originalPath, localTimeNow())); error != 0) {
            return fail(trashSystemError(error));
        }
        m_written = true;
    }
    int error = m_record.publish(name);
    if (error == EEXIST && removeStaleRecord(m_info, name, m_trash.originalPath)) {
        error = m_record.publish(name);
    }
    if (error == EEXIST) {
        return Step::nextName;
    }
    if (error == 0) {
        error = syncFolder(m_info);
    }
    if (error != 0) {
        withdrawRecord(name);
        return fail(trashSystemError(error));
    }
    return Step::done;
}

int LinuxTrashMove::renameItem(const std::string& name) const {
    const auto source = statusIn(m_item.folder.get(), m_item.leaf);
    if (!source.ok()) {
        return source.error();
    }
    if (source.value().identity != m_item.status.identity) {
        return ESTALE;
    }
    return renameIfFree(m_item.folder.get(), m_item.leaf, m_files, name);
}

LinuxTrashMove::Step LinuxTrashMove::rename(const std::string& name) {
    const int error = renameItem(name);
    if (error == 0) {
        return Step::done;
    }
    if (error == EEXIST) {
        withdrawRecord(name);
        return Step::nextName;
    }
    // A network file system may report a failure of a rename that took place.
    const auto arrived = statusIn(m_files, name);
    const bool moved = arrived.ok() && arrived.value().identity == m_item.status.identity && !m_item.isInPlace();
    if (moved) {
        return Step::done;
    }
    withdrawRecord(name);
    const auto left = statusIn(m_item.folder.get(), m_item.leaf);
    if (!left.ok() && left.error() == ENOENT) {
        return fail(itemMissing());
    }
    return fail(error == ESTALE || error == EBUSY ? protectedOrChanged() : trashSystemError(error));
}

std::optional<TrashError> LinuxTrashMove::doubtAbout(const std::string& name) {
    const auto arrived = statusIn(m_files, name);
    if (!arrived.ok()) {
        return trashSystemError(arrived.error());
    }
    if (arrived.value().identity != m_item.status.identity) {
        return protectedOrChanged();
    }
    const auto mounts = m_mounts.mounts();
    if (!mounts.ok()) {
        return trashSystemError(mounts.error());
    }
    if (holdsMountPoint(mounts.value(), m_trash.files.status.mountId, m_trash.path + "/files/" + name)) {
        return protectedOrChanged();
    }
    if (auto error = syncFolders()) {
        return error;
    }
    if (!m_trash.stillLeadsTo(name, m_item.status.identity) || !m_record.isIn(m_info)) {
        return trashProblem(TrashProblem::trashChanged);
    }
    return std::nullopt;
}

std::optional<TrashError> LinuxTrashMove::syncFolders() const {
    for (const int folder : {m_files, m_item.folder.get()}) {
        if (const int error = syncFolder(folder); error != 0) {
            return trashSystemError(error);
        }
    }
    return std::nullopt;
}

TrashError LinuxTrashMove::putBack(const std::string& name, const TrashError& reason) {
    if (renameIfFree(m_files, name, m_item.folder.get(), m_item.leaf) != 0 && !m_item.isInPlace()) {
        return leftInTrash(reason);
    }
    // The place is what counts now; a failing sync of it changes nothing for the user.
    static_cast<void>(syncFolders());
    withdrawRecord(name);
    return reason;
}

LinuxTrashMove::Step LinuxTrashMove::lookFor(const std::string& name) {
    const auto found = statusIn(m_files, name);
    if (found.ok()) {
        return Step::nextName;
    }
    return found.error() == ENOENT ? Step::done : fail(trashSystemError(found.error()));
}

void LinuxTrashMove::withdrawRecord(const std::string& name) {
    const auto found = statusIn(m_files, name);
    const bool itemIsElsewhere =
        found.ok() ? found.value().identity != m_item.status.identity : found.error() == ENOENT;
    if (itemIsElsewhere) {
        m_record.withdraw();
    }
    m_written = false;
}

LinuxTrashMove::Step LinuxTrashMove::fail(const TrashError& error) {
    m_error = error;
    return Step::failed;
}

}  // namespace kestrune
