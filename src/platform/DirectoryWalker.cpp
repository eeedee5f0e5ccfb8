#include "platform/DirectoryWalker.h"

namespace kestrune {

TreeSize DirectoryWalker::measure(const std::string& folder, const Cancelled& cancelled) {
    WalkRequest request;
    request.folder = folder;
    request.childLimit = 0;
    request.cancelled = cancelled;
    const TreeWalk found = walk(request);
    return {found.opened, found.bytes, found.entries, found.unreadable, found.end == WalkEnd::cancelled};
}

}  // namespace kestrune
