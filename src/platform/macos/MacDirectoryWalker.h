#pragma once

#include "platform/DirectoryWalker.h"

namespace kestrune {

/// Walks with one getattrlistbulk(2) for some hundred entries and two calls for a folder, on up to eight threads that
/// start once a tree proves large. A link given as the folder itself is followed; below it none is. A mount point and
/// the trigger of an automatic mount are entries that are not entered; what lies in a cloud is not fetched. Sizes are
/// what all forks of a file take on disk. Holds at most 64 descriptors, 64 KiB a thread, what it is to name, and the
/// names of the folders still to be visited.
///
/// MacAttributeBuffer.h says what the system promises about the entries, and what of it is checked.
class MacDirectoryWalker final : public DirectoryWalker {
public:
    MacDirectoryWalker() = default;

    [[nodiscard]] TreeWalk walk(const WalkRequest& request) override;
};

}  // namespace kestrune
