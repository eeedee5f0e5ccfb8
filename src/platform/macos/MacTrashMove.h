#pragma once

#include <optional>
#include <string>

#include "platform/macos/MacPinnedItem.h"
#include "platform/macos/MacTrashFolders.h"
#include "platform/macos/MacTrashItem.h"

namespace kestrune {

/// The move of one pinned item to the Trash by the system, which goes by the path: the item's restore record first,
/// then a last look whether the path leads to the pinned item, the system's move, and a look at what arrived. What the
/// constructor takes must outlive it. One work queue's thread.
///
/// What is guaranteed: the item's descriptor and the identity of what arrived tell whether the very item moved, and
/// only then the move counts as done. What moved instead of it goes back to where it was by one rename that replaces
/// nothing. Where that is not possible, because the place is taken, the file system cannot rename without replacing
/// (ENOTSUP), or the Trash lies on another volume (EXDEV) or may not be entered (EPERM), the error says that it lies in
/// the Trash.
///
/// What remains: between the last look and the system's own one, somebody who may write the folders on the way can
/// exchange them; no call of the system takes a descriptor. A folder of ours that the item is renamed to first would
/// close that window, but the system notes the place an item had before, and the Finder would put it back into that
/// folder.
class MacTrashMove final {
public:
    MacTrashMove(const MacPinnedItem& item, const MacTrashFolders& folders, MacTrashItem& system);

    [[nodiscard]] Result<TrashedItem, TrashError> run();

private:
    [[nodiscard]] Result<TrashedItem, TrashError> judge(const MacTrashAnswer& answer) const;
    [[nodiscard]] Result<TrashedItem, TrashError> judgeWithoutLocation() const;
    [[nodiscard]] TrashError giveBack(const std::string& location, const MacFileStatus& other) const;
    [[nodiscard]] TrashError judgeReturned(int folder, const std::string& location, const FileIdentity& other,
                                           int openOther) const;
    [[nodiscard]] std::optional<std::string> placeInTrash() const;
    void withdrawRecord() const;

    const MacPinnedItem& m_item;
    const MacTrashFolders& m_folders;
    MacTrashItem& m_system;
};

}  // namespace kestrune
