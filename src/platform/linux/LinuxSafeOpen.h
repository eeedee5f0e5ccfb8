#pragma once

#include <string>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// An opened descriptor, or the errno that stands in its place.
struct LinuxOpened {
    LinuxFileDescriptor descriptor;
    int error = 0;
};

/// How far a path may lead from the folder it starts in.
enum class LinuxReach {
    anywhere,  ///< absolute paths and ".." included
    below,     ///< never out of the folder
    mount,     ///< never out of the folder, and never onto another mount
};

/// Opens path as flags (of open(2), without O_CREAT) say, following no link in any of its components: ELOOP when there
/// is one. With O_PATH | O_NOFOLLOW a link in the last component is itself what gets opened. Never blocks on a FIFO or
/// a device when flags hold O_PATH or O_DIRECTORY. Any thread.
[[nodiscard]] LinuxOpened openWithoutLinks(int folder, const std::string& path, int flags, LinuxReach reach);

/// Opens the folder called name, making it with mode 0700 first when it is missing; what was made is synced. Any
/// thread.
[[nodiscard]] LinuxOpened openOrMakeFolder(int folder, const std::string& name, int flags);

/// Puts the entries of the folder on disk. 0, or the errno; 0 also where the file system or the folder's permissions
/// leave no way to do so. Any thread.
[[nodiscard]] int syncFolder(int folder);

}  // namespace kestrune
