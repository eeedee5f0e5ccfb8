#include "platform/macos/MacPutBackMove.h"

#include <cerrno>

#include "platform/PathText.h"
#include "platform/macos/MacTrashError.h"
#include "platform/macos/MacTrashRecord.h"

namespace kestrune {

MacPutBackMove::MacPutBackMove(const std::string& home, const MacPutBackItem& item)
    : m_home(home), m_item(item), m_trash(item.trash.descriptor.get()), m_folder(item.folder.descriptor.get()) {
}

Result<std::string, PutBackError> MacPutBackMove::run() const {
    const int error = renameItem();
    // A network file system may report a failure of a rename that took place.
    if (error != 0 && (m_item.occupant() != m_item.status.identity || m_item.isInTrash())) {
        return failure(error);
    }
    if (const auto reason = doubt()) {
        return undo(*reason);
    }
    MacTrashRecord::remove(m_item.item.get());
    return m_item.originalPath;
}

int MacPutBackMove::renameItem() const {
    const auto source = macStatusIn(m_trash, m_item.name);
    if (!source.ok()) {
        return source.error();
    }
    if (source.value().identity != m_item.status.identity) {
        return ESTALE;
    }
    return renameIfFree(m_trash, m_item.name, m_folder, m_item.leaf);
}

PutBackError MacPutBackMove::failure(int errorNumber) const {
    switch (errorNumber) {
        case EEXIST:
            return {PutBackFailure::inTheWay, {}, m_item.originalPath};
        case ENOENT:
            return m_item.isInTrash() ? PutBackError{PutBackFailure::noFolder, {}, m_item.folderPath}
                                      : PutBackError{PutBackFailure::missing, {}, {}};
        case EXDEV:
            return {PutBackFailure::otherDisk, {}, m_item.folderPath};
        case ESTALE:
        case EBUSY:
            return {PutBackFailure::changed, {}, {}};
        default:
            return putBackSystemError(errorNumber);
    }
}

std::optional<PutBackError> MacPutBackMove::doubt() const {
    if (m_item.occupant() != m_item.status.identity) {
        return PutBackError{PutBackFailure::changed, {}, {}};
    }
    const MacFolder again = openBelowMacHome(m_home, m_item.folderPath);
    if (!again.isOpen() || again.status.identity != m_item.folder.status.identity) {
        return PutBackError{PutBackFailure::noFolder, {}, m_item.folderPath};
    }
    return std::nullopt;
}

PutBackError MacPutBackMove::undo(const PutBackError& reason) const {
    const auto occupant = m_item.occupant();
    // What lies there was moved here from the Trash if the item is still in it. Else somebody put it there after the
    // item arrived, and what never was in the Trash must not go there.
    if (!occupant || (*occupant != m_item.status.identity && !isItemInTrash())) {
        return leftHalfWay(reason);
    }
    if (renameIfFree(m_folder, m_item.leaf, m_trash, m_item.name) != 0 && !m_item.isInTrash()) {
        return leftHalfWay(reason);
    }
    const auto returned = macStatusIn(m_trash, m_item.name);
    if (returned.ok() && returned.value().identity != *occupant) {
        static_cast<void>(renameIfFree(m_trash, m_item.name, m_folder, m_item.leaf));
        return leftHalfWay(reason);
    }
    return reason;
}

/// Whether the item lies in the Trash it lay in, by whichever name.
bool MacPutBackMove::isItemInTrash() const {
    const auto itemNow = pathNow(m_item.item.get());
    const auto trashNow = pathNow(m_trash);
    return itemNow && trashNow && folderOf(*itemNow) == *trashNow;
}

}  // namespace kestrune
