#include "explorer/DiskExplorer.h"

namespace kestrune {

DiskExplorerResult DiskExplorer::scan(DirectoryWalker& walker, const Clock& clock, const std::string& folder,
                                      const DiskExplorerRequest& request) {
    WalkRequest walk;
    walk.folder = folder;
    walk.entryLimit = request.fileLimit;
    walk.childLimit = request.folderLimit;
    walk.largestLimit = request.largestLimit;
    walk.cancelled = request.cancelled;
    const Seconds deadline = clock.uptime() + request.timeLimit;
    walk.timeIsUp = [&clock, deadline] { return clock.uptime() >= deadline; };
    const TreeWalk found = walker.walk(walk);
    DiskExplorerResult result;
    result.inspectedFiles = found.entries;
    return result;
}

}  // namespace kestrune
