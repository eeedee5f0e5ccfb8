#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinuxMounts.h"
#include "platform/linux/LinuxPinnedItem.h"
#include "platform/linux/LinuxTrashWay.h"

namespace kestrune {

/// The Trash an item goes to, held by descriptors, and how it was found.
struct LinuxTrashFolder {
    LinuxTrashWay way;
    std::string path;  ///< path of the Trash folder, without links
    FileIdentity identity;
    LinuxFolder files;
    LinuxFolder info;
    std::size_t longestName = 0;  ///< in bytes, as the file system allows
    std::string originalPath;     ///< what the restore record says of the item

    /// Whether whoever goes the same way once more, from its start, gets to the item called name in the same Trash,
    /// and to the same folder of restore records.
    [[nodiscard]] bool stillLeadsTo(const std::string& name, const FileIdentity& item) const;
};

/// Finds the Trash of the file system that the item lies on (freedesktop.org Trash 1.0), making it when missing. What
/// the constructor takes must outlive it. Any thread.
class LinuxTrashFinder final {
public:
    /// dataHome is an absolute path, or empty for ".local/share" in the item's home. mounts are those of this moment.
    LinuxTrashFinder(const LinuxPinnedItem& item, const std::string& dataHome, const std::vector<LinuxMount>& mounts);

    /// Fills folder; the reason when there is no Trash to use.
    [[nodiscard]] std::optional<TrashError> find(LinuxTrashFolder& folder) const;

private:
    enum class WhoMayWrite { onlyOwner, ownerAndGroup };

    [[nodiscard]] std::optional<TrashError> useInTopDirectory(LinuxTrashFolder& folder) const;
    [[nodiscard]] std::optional<TrashError> use(LinuxFolder trash, WhoMayWrite who, LinuxTrashFolder& folder) const;
    [[nodiscard]] bool isOnSameFileSystem(const LinuxFolder& folder) const;

    const LinuxPinnedItem& m_item;
    const std::string& m_dataHome;
    const std::vector<LinuxMount>& m_mounts;
};

}  // namespace kestrune
