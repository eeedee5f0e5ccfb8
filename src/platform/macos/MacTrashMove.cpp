#include "platform/macos/MacTrashMove.h"

#include <fcntl.h>

#include <cerrno>

#include "platform/PathText.h"
#include "platform/macos/MacTrashError.h"
#include "platform/macos/MacTrashRecord.h"

namespace kestrune {

namespace {

/// How often the place is looked for while somebody goes on exchanging the folders on the way to it.
constexpr int longestSearchForPlace = 5'000;

/// Whether the errno may mean that another folder stands in the way at this moment.
bool mayChange(int error) {
    return error == EEXIST || error == ENOTEMPTY || error == ENOENT || error == ENOTDIR || error == ELOOP;
}

}  // namespace

MacTrashMove::MacTrashMove(const MacPinnedItem& item, const MacTrashFolders& folders, MacTrashItem& system)
    : m_item(item), m_folders(folders), m_system(system) {
}

Result<TrashedItem, TrashError> MacTrashMove::run() {
    if (m_item.item) {
        // Without a record the item moves as well, and the Finder puts it back.
        static_cast<void>(MacTrashRecord::write(m_item.item.get(), m_item.status.identity, m_item.path));
    }
    const auto path = m_item.pathWhileInPlace();
    if (!path) {
        withdrawRecord();
        return protectedOrChanged();
    }
    const auto answer = m_system.move(*path);
    Result<TrashedItem, TrashError> result =
        answer.ok() ? judge(answer.value()) : TrashError{TrashFailure::system, answer.error()};
    if (!result.ok()) {
        withdrawRecord();
    }
    return result;
}

Result<TrashedItem, TrashError> MacTrashMove::judge(const MacTrashAnswer& answer) const {
    if (!answer.location) {
        return judgeWithoutLocation();
    }
    const auto arrived = macStatusIn(AT_FDCWD, *answer.location);
    const auto place = placeInTrash();
    if (arrived.ok() && arrived.value().identity == m_item.status.identity) {
        // The kernel's spelling is the one that a move back compares.
        return TrashedItem{place && !m_folders.holds(*answer.location) ? *place : *answer.location};
    }
    if (place) {
        return TrashedItem{*place};
    }
    return arrived.ok() ? giveBack(*answer.location, arrived.value()) : judgeWithoutLocation().error();
}

/// The system moved something and no path leads to it.
Result<TrashedItem, TrashError> MacTrashMove::judgeWithoutLocation() const {
    if (placeInTrash()) {
        return TrashError{TrashFailure::locationUnknown, {}};
    }
    const bool isElsewhere = m_item.isInPlace() || (m_item.item && pathNow(m_item.item.get()));
    return isElsewhere ? leftInTrash(protectedOrChanged()) : TrashError{TrashFailure::locationUnknown, {}};
}

/// Gives what moved instead of the item its place back. The folders are gone down as the system did, by their names and
/// through links: that is where it was taken from.
TrashError MacTrashMove::giveBack(const std::string& location, const MacFileStatus& other) const {
    MacFileDescriptor open;
    static_cast<void>(openMacItem(AT_FDCWD, location, other, open));
    const std::string folderPath = folderOf(m_item.path);
    for (int i = 0; i < longestSearchForPlace; ++i) {
        const MacFileDescriptor folder(::openat(AT_FDCWD, folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        const int error = folder ? renameIfFree(AT_FDCWD, location, folder.get(), m_item.leaf) : errno;
        if (error == 0) {
            return judgeReturned(folder.get(), location, other.identity, open.get());
        }
        if (!mayChange(error)) {
            break;
        }
    }
    return leftInTrash(protectedOrChanged());
}

/// Looks who has the place after other was given back to it. What was exchanged in the Trash before belongs there, and
/// so does what came in its stead. Anything else was put here by somebody since: what never was in the Trash must not
/// go there.
TrashError MacTrashMove::judgeReturned(int folder, const std::string& location, const FileIdentity& other,
                                       int openOther) const {
    const auto returned = macStatusIn(folder, m_item.leaf);
    const auto is = [&returned](const FileIdentity& one) { return returned.ok() && returned.value().identity == one; };
    const bool isItem = is(m_item.status.identity);
    const auto otherNow = pathNow(openOther);
    if (is(other) || (otherNow ? !m_folders.holds(*otherNow) : isItem)) {
        return protectedOrChanged();
    }
    if (otherNow && !isItem) {
        static_cast<void>(renameIfFree(folder, m_item.leaf, AT_FDCWD, location));
    }
    return leftInTrash(protectedOrChanged());
}

/// Where the item lies now if that is in a Trash.
std::optional<std::string> MacTrashMove::placeInTrash() const {
    const auto now = m_item.item ? pathNow(m_item.item.get()) : std::nullopt;
    return now && m_folders.holds(*now) ? now : std::nullopt;
}

void MacTrashMove::withdrawRecord() const {
    if (m_item.item && !placeInTrash()) {
        MacTrashRecord::remove(m_item.item.get());
    }
}

}  // namespace kestrune
