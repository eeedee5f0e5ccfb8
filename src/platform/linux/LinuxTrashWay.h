#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxFileStatus.h"
#include "platform/linux/LinuxSafeOpen.h"

namespace kestrune {

/// An open folder and its status, or why there is none.
struct LinuxFolder {
    LinuxFileDescriptor descriptor;
    LinuxFileStatus status;
    std::optional<TrashError> error;

    /// Whether the folder belongs to the user.
    [[nodiscard]] bool isOwn() const;
};

/// Takes what was opened on the way to a Trash or inside one, and reads its status.
[[nodiscard]] LinuxFolder folderFrom(LinuxOpened opened);

/// Where a walk ended: the deepest folder that exists, and the names below it that do not.
struct LinuxWalk {
    LinuxFolder deepest;
    std::vector<std::string> missing;
    std::string path;  ///< where the way ends, once what is missing is made; the link that was followed is resolved
};

/// The way to a Trash folder: a relative path below start, links allowed nowhere but as its last component, and there
/// only the user's own.
struct LinuxTrashWay {
    LinuxFileDescriptor start;
    std::string startPath;  ///< absolute, without links
    std::string path;
    bool mayBeLinked = false;
};

/// Goes the way as far as its folders exist; makes none. A link in the last component is followed once when the link,
/// its folder and what it leads to belong to the user and nobody else may write them. Any thread.
[[nodiscard]] LinuxWalk goWay(const LinuxTrashWay& way);

/// The folder at the end of the walk, what is missing made with mode 0700. Any thread.
[[nodiscard]] LinuxFolder makeMissing(LinuxWalk walk);

}  // namespace kestrune
