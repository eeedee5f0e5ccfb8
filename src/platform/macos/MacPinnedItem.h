#pragma once

#include <optional>
#include <string>

#include "platform/macos/MacFolders.h"

namespace kestrune {

/// The item a request names, held by descriptors: home, the item's folder, and the item itself. None of them can become
/// another folder or item later, whatever happens to the names. Filled by pinMacItem().
struct MacPinnedItem {
    MacFolder home;
    MacFolder folder;
    MacFileDescriptor item;  ///< none when the item is not a folder or file that this user may read
    std::string path;        ///< home and the relative path joined
    std::string relativeFolder;
    std::string leaf;  ///< the item's name in folder
    MacFileStatus status;

    /// Whether the item still has its name in its folder.
    [[nodiscard]] bool isInPlace() const;

    /// The path that leads to the pinned item at this moment, without links: nothing when its folder does not lie where
    /// the request says any more, or the item is not in it.
    [[nodiscard]] std::optional<std::string> pathWhileInPlace() const;
};

/// Opens home and what relativePath leads to below it, following no link: the reason when that is not possible.
/// Any thread.
[[nodiscard]] std::optional<TrashError> pinMacItem(const std::string& home, const std::string& relativePath,
                                                   MacPinnedItem& pinned);

/// Opens the folder or file called name in the folder for reading, following no link and waiting for nothing. 0, or the
/// errno: ESTALE when it is not the item of that status any more. Any thread.
[[nodiscard]] int openMacItem(int folder, const std::string& name, const MacFileStatus& status,
                              MacFileDescriptor& item);

}  // namespace kestrune
