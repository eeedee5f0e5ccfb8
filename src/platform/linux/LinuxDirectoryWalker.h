#pragma once

#include "platform/DirectoryWalker.h"

namespace kestrune {

/// Walks with one descriptor-relative call for a file and four for a folder, on up to eight threads that start once a
/// tree proves large. A link given as the folder itself is followed; below it none is. A mount point is an entry that
/// is not entered; a file that another file system lends to the tree adds no bytes. Holds at most 64 descriptors, 32
/// KiB a thread, what it is to name, and the names of the folders still to be visited. An entry that went away after it
/// was seen counts as unreadable.
class LinuxDirectoryWalker final : public DirectoryWalker {
public:
    LinuxDirectoryWalker() = default;

    [[nodiscard]] TreeWalk walk(const WalkRequest& request) override;
};

}  // namespace kestrune
