#pragma once

#include <vector>

#include "base/Result.h"
#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxMounts.h"

namespace kestrune {

/// The mounts this process sees, kept open so that a later look needs no further descriptor. One thread.
class LinuxMountTable final {
public:
    LinuxMountTable();

    /// The mounts of this moment, or the errno.
    [[nodiscard]] Result<std::vector<LinuxMount>, int> mounts() const;

private:
    LinuxFileDescriptor m_file;
    int m_error = 0;
};

}  // namespace kestrune
