#pragma once

#include <cstdint>
#include <string>

#include "base/Result.h"
#include "platform/Trash.h"

namespace kestrune {

/// What fstat(2) says about one item, links not followed. An item whose device is not its folder's is a mount point.
struct MacFileStatus {
    FileIdentity identity;
    std::uint32_t mode = 0;
    std::uint32_t owner = 0;

    [[nodiscard]] bool isFolder() const;
    [[nodiscard]] bool isRegularFile() const;
    [[nodiscard]] bool isLink() const;

    /// Whether it is a folder of this user's.
    [[nodiscard]] bool isOwnFolder() const;

    /// Whether everybody may write it.
    [[nodiscard]] bool othersMayWrite() const;
};

/// The status of what descriptor refers to, or the errno. Any thread.
[[nodiscard]] Result<MacFileStatus, int> macStatusOf(int descriptor);

/// The status of the entry at path, which starts in the folder, or the errno. Any thread.
[[nodiscard]] Result<MacFileStatus, int> macStatusIn(int folder, const std::string& path);

}  // namespace kestrune
