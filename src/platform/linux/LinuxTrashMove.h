#pragma once

#include <optional>
#include <string>

#include "platform/linux/LinuxMountTable.h"
#include "platform/linux/LinuxPinnedItem.h"
#include "platform/linux/LinuxTrashFolder.h"
#include "platform/linux/LinuxTrashRecord.h"

namespace kestrune {

/// The move of one pinned item into one pinned Trash: record first, then one rename that replaces nothing, then a look
/// whether what arrived is what was meant, and back again if not. What the constructor takes must outlive it. One work
/// queue's thread.
class LinuxTrashMove final {
public:
    LinuxTrashMove(const LinuxPinnedItem& item, const LinuxTrashFolder& trash, const LinuxMountTable& mounts);

    [[nodiscard]] Result<TrashedItem, TrashError> run();

private:
    enum class Step { done, nextName, failed };

    Step lookFor(const std::string& name);
    Step publishRecord(const std::string& name);
    Step rename(const std::string& name);
    [[nodiscard]] int renameItem(const std::string& name) const;
    [[nodiscard]] std::optional<TrashError> doubtAbout(const std::string& name);
    [[nodiscard]] std::optional<TrashError> syncFolders() const;
    [[nodiscard]] TrashError putBack(const std::string& name, const TrashError& reason);
    void withdrawRecord(const std::string& name);
    Step fail(const TrashError& error);

    const LinuxPinnedItem& m_item;
    const LinuxTrashFolder& m_trash;
    const LinuxMountTable& m_mounts;
    const int m_files;
    const int m_info;
    LinuxTrashRecord m_record;
    bool m_written = false;
    TrashError m_error;
};

}  // namespace kestrune
