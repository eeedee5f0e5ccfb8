#include "platform/linux/LinuxPutBackMove.h"

#include <cerrno>
#include <cstdio>

#include "platform/linux/LinuxSafeOpen.h"
#include "platform/linux/LinuxTrashError.h"

namespace kestrune {

namespace {

/// rename(2) that replaces nothing: 0 or the errno.
int renameIfFree(int fromFolder, const std::string& from, int toFolder, const std::string& to) {
    return ::renameat2(fromFolder, from.c_str(), toFolder, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
}

}  // namespace

LinuxPutBackMove::LinuxPutBackMove(const std::string& home, const LinuxPutBackItem& item,
                                   const LinuxPutBackPlace& place, const LinuxMountTable& mounts)
    : m_home(home),
      m_item(item),
      m_place(place),
      m_mounts(mounts),
      m_files(item.files.descriptor.get()),
      m_folder(place.folder.descriptor.get()),
      m_watch(m_files, m_folder) {
}

Result<std::string, PutBackError> LinuxPutBackMove::run() {
    if (const auto error = rename()) {
        return *error;
    }
    if (const auto reason = doubt()) {
        return undo(*reason);
    }
    const int info = m_item.info.descriptor.get();
    removePutBackRecord(info, m_item.name, m_item.record);
    // The item is back; what becomes of its record changes nothing for the user.
    static_cast<void>(syncFolder(info));
    return m_place.path;
}

int LinuxPutBackMove::renameItem() const {
    const auto source = statusIn(m_files, m_item.name);
    if (!source.ok()) {
        return source.error();
    }
    if (source.value().identity != m_item.status.identity) {
        return ESTALE;
    }
    return renameIfFree(m_files, m_item.name, m_folder, m_place.leaf);
}

std::optional<PutBackError> LinuxPutBackMove::rename() const {
    const int error = renameItem();
    // A network file system may report a failure of a rename that took place.
    if (error == 0 || (m_place.occupant() == m_item.status.identity && !m_item.isInPlace())) {
        return std::nullopt;
    }
    return failure(error);
}

PutBackError LinuxPutBackMove::failure(int errorNumber) const {
    switch (errorNumber) {
        case EEXIST:
            return {PutBackFailure::inTheWay, {}, m_place.path};
        case ENOENT:
            return m_item.isInPlace() ? PutBackError{PutBackFailure::noFolder, {}, m_place.folderPath}
                                      : PutBackError{PutBackFailure::missing, {}, {}};
        case EXDEV:
            return {PutBackFailure::otherDisk, {}, m_place.folderPath};
        case ESTALE:
        case EBUSY:
            return {PutBackFailure::changed, {}, {}};
        default:
            return putBackSystemError(errorNumber);
    }
}

std::optional<PutBackError> LinuxPutBackMove::doubt() const {
    const auto arrived = statusIn(m_folder, m_place.leaf);
    if (!arrived.ok()) {
        return putBackSystemError(arrived.error());
    }
    if (arrived.value().identity != m_item.status.identity) {
        return PutBackError{PutBackFailure::changed, {}, {}};
    }
    const auto mounts = m_mounts.mounts();
    if (!mounts.ok()) {
        return putBackSystemError(mounts.error());
    }
    if (holdsMountPoint(mounts.value(), m_place.folder.status.mountId, m_place.path)) {
        return PutBackError{PutBackFailure::changed, {}, {}};
    }
    if (auto error = syncFolders()) {
        return error;
    }
    if (!m_place.isStillBelow(m_home)) {
        return PutBackError{PutBackFailure::noFolder, {}, m_place.folderPath};
    }
    // While the folders were synced the name may have been given to something else.
    return m_place.occupant() == m_item.status.identity ? std::nullopt
                                                        : std::optional(PutBackError{PutBackFailure::changed, {}, {}});
}

std::optional<PutBackError> LinuxPutBackMove::syncFolders() const {
    for (const int folder : {m_folder, m_files}) {
        if (const int error = syncFolder(folder); error != 0) {
            return putBackSystemError(error);
        }
    }
    return std::nullopt;
}

PutBackError LinuxPutBackMove::undo(const PutBackError& reason) {
    const auto occupant = m_place.occupant();
    if (!occupant || (*occupant != m_item.status.identity && !occupantCameFromTrash())) {
        return leftHalfWay(reason);
    }
    if (renameIfFree(m_folder, m_place.leaf, m_files, m_item.name) != 0 && !m_item.isInPlace()) {
        return leftHalfWay(reason);
    }
    const auto returned = statusIn(m_files, m_item.name);
    if (returned.ok() && returned.value().identity != *occupant) {
        static_cast<void>(renameIfFree(m_files, m_item.name, m_folder, m_place.leaf));
        return leftHalfWay(reason);
    }
    // The place is what counts now; a failing sync of it changes nothing for the user.
    static_cast<void>(syncFolders());
    return reason;
}

/// Whether what has the name now was moved here instead of the item. Anything else that has it was put there by
/// somebody after the item arrived, and what never was in the Trash must not go there.
bool LinuxPutBackMove::occupantCameFromTrash() {
    // Renaming a name to itself changes nothing; it waits for a rename that is under way, and that is not told yet.
    static_cast<void>(renameIfFree(m_folder, m_place.leaf, m_folder, m_place.leaf));
    return m_watch.cameStraight(m_item.name, m_place.leaf);
}

}  // namespace kestrune
