#pragma once

#include <string>

#include "platform/linux/LinuxMountTable.h"
#include "platform/linux/LinuxMoveWatch.h"
#include "platform/linux/LinuxPutBackItem.h"
#include "platform/linux/LinuxPutBackPlace.h"

namespace kestrune {

/// The move of one pinned item from the Trash to the place it came from: one rename that replaces nothing, then a look
/// whether what arrived is what was meant, and back again if not; the restore record goes last. Killed in between, the
/// item is at one of the two places, at the later one perhaps with a record that has no item. What the constructor
/// takes must outlive it. One work queue's thread.
class LinuxPutBackMove final {
public:
    /// home is the folder that place was opened below.
    LinuxPutBackMove(const std::string& home, const LinuxPutBackItem& item, const LinuxPutBackPlace& place,
                     const LinuxMountTable& mounts);

    /// The path where the item lies now.
    [[nodiscard]] Result<std::string, PutBackError> run();

private:
    [[nodiscard]] std::optional<PutBackError> rename() const;
    [[nodiscard]] int renameItem() const;
    [[nodiscard]] PutBackError failure(int errorNumber) const;
    [[nodiscard]] std::optional<PutBackError> doubt() const;
    [[nodiscard]] std::optional<PutBackError> syncFolders() const;
    [[nodiscard]] PutBackError undo(const PutBackError& reason);
    [[nodiscard]] bool occupantCameFromTrash();

    const std::string& m_home;
    const LinuxPutBackItem& m_item;
    const LinuxPutBackPlace& m_place;
    const LinuxMountTable& m_mounts;
    const int m_files;
    const int m_folder;
    LinuxMoveWatch m_watch;
};

}  // namespace kestrune
