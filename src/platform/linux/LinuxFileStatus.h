#pragma once

#include <cstdint>
#include <ctime>

#include "base/Result.h"
#include "platform/Trash.h"

namespace kestrune {

/// What statx(2) says about one item, links not followed.
struct LinuxFileStatus {
    FileIdentity identity;
    std::uint32_t mode = 0;
    std::uint32_t owner = 0;
    std::uint64_t mountId = 0;  ///< the number /proc/self/mountinfo knows the mount by
    bool isMountPoint = false;
    std::time_t modified = 0;  ///< last change of the content, seconds of wall-clock time

    [[nodiscard]] bool isFolder() const;
    [[nodiscard]] bool isRegularFile() const;
    [[nodiscard]] bool isLink() const;
    [[nodiscard]] bool isSticky() const;

    /// Whether somebody besides the owner may write: the group too when it counts, everybody else in any case.
    [[nodiscard]] bool othersMayWrite() const;
    [[nodiscard]] bool groupOrOthersMayWrite() const;
};

/// The status of what descriptor refers to, or the errno. Any thread.
[[nodiscard]] Result<LinuxFileStatus, int> statusOf(int descriptor);

/// The status of the entry called name in the folder, or the errno. Any thread.
[[nodiscard]] Result<LinuxFileStatus, int> statusIn(int folder, const std::string& name);

}  // namespace kestrune
