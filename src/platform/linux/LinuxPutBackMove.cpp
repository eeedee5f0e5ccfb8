#include "platform/linux/LinuxPutBackMove.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>

#include "platform/linux/LinuxSafeOpen.h"
#include "platform/linux/LinuxTrashError.h"

namespace kestrune {

namespace {

/// rename(2) that replaces nothing: 0 or the errno.
int renameIfFree(int fromFolder, const std::string& from, int toFolder, const std::string& to) {
    return ::renameat2(fromFolder, from.c_str(), toFolder, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
}

/// Where what the descriptor refers to lies now, whatever names it had before; empty when the system does not say.
std::string currentPath(int descriptor) {
    std::array<char, PATH_MAX> path = {};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    return {path.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

}  // namespace

LinuxPutBackMove::LinuxPutBackMove(const std::string& home, const LinuxPutBackItem& item,
                                   const LinuxPutBackPlace& place, const LinuxMountTable& mounts)
    : m_home(home),
      m_item(item),
      m_place(place),
      m_mounts(mounts),
      m_files(item.files.descriptor.get()),
      m_folder(place.folder.descriptor.get()) {
}

Result<std::string, PutBackError> LinuxPutBackMove::run() const {
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
    const std::string folder = m_place.path.substr(0, m_place.path.size() - m_place.leaf.size() - 1);
    switch (errorNumber) {
        case EEXIST:
            return {PutBackFailure::inTheWay, {}, m_place.path};
        case ENOENT:
            return m_item.isInPlace() ? PutBackError{PutBackFailure::noFolder, {}, folder}
                                      : PutBackError{PutBackFailure::missing, {}, {}};
        case EXDEV:
            return {PutBackFailure::otherDisk, {}, folder};
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
        return failure(ENOENT);
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

PutBackError LinuxPutBackMove::undo(const PutBackError& reason) const {
    const auto occupant = m_place.occupant();
    if (!occupant && isInTrash()) {
        return reason;
    }
    // Another item at the place came from the Trash only when the one that was meant never left it. Whatever else has
    // the name now was put there by somebody, and nothing but what came from the Trash goes there.
    if (!occupant || (*occupant != m_item.status.identity && !isInTrash())) {
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

bool LinuxPutBackMove::isInTrash() const {
    const std::string files = currentPath(m_files) + "/";
    return files.size() > 1 && currentPath(m_item.item.get()).starts_with(files);
}

}  // namespace kestrune
