#pragma once

#include <optional>
#include <string>

#include "platform/macos/MacFileDescriptor.h"
#include "platform/macos/MacFileStatus.h"

namespace kestrune {

/// An open folder and its status, or the errno that stands in their place.
struct MacFolder {
    MacFileDescriptor descriptor;
    MacFileStatus status;
    int error = 0;

    [[nodiscard]] bool isOpen() const { return error == 0; }
};

/// Goes from the folder start down path, one component after the other; an absolute path starts at "/" instead. No link
/// is followed: ELOOP when a component is one. path has no "." and "..". Any thread.
[[nodiscard]] MacFolder openMacFolder(int start, const std::string& path);

/// Where the kernel says that what descriptor refers to lies now, without links (fcntl(2), F_GETPATH); nothing when it
/// is gone or cannot tell. Any thread.
[[nodiscard]] std::optional<std::string> pathNow(int descriptor);

/// rename(2) that replaces nothing: 0 or the errno. ENOTSUP where the file system cannot promise that.
[[nodiscard]] int renameIfFree(int fromFolder, const std::string& from, int toFolder, const std::string& to);

}  // namespace kestrune
