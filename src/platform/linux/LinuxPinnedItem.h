#pragma once

#include <optional>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxFileStatus.h"

namespace kestrune {

/// The item a request names, held by descriptors: home, the item's folder, and the item itself. None of them can become
/// another folder or item later, whatever happens to the names. Filled by pinItem().
struct LinuxPinnedItem {
    LinuxFileDescriptor home;
    LinuxFileDescriptor folder;
    LinuxFileDescriptor item;
    std::string homePath;
    std::string path;  ///< home and the relative path joined
    std::string leaf;  ///< the item's name in folder
    LinuxFileStatus folderStatus;
    LinuxFileStatus status;

    /// Whether the item still has its name in its folder.
    [[nodiscard]] bool isInPlace() const;
};

/// Opens home and what relativePath leads to below it, following no link: the reason when that is not possible.
/// Any thread.
[[nodiscard]] std::optional<TrashError> pinItem(const std::string& home, const std::string& relativePath,
                                                LinuxPinnedItem& pinned);

}  // namespace kestrune
