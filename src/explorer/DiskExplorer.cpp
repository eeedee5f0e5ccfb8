#include "explorer/DiskExplorer.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace kestrune {

namespace {

/// What every path below root begins with.
std::string beginningOf(const std::string& root) {
    return root == "/" ? root : root + "/";
}

std::vector<DiskExplorerItem> itemsBelow(const std::string& beginning, std::vector<WalkedItem> found) {
    std::vector<DiskExplorerItem> items;
    items.reserve(found.size());
    for (auto& item : found) {
        items.push_back({std::move(item.path.insert(0, beginning)), item.bytes, item.isDirectory});
    }
    return items;
}

DiskExplorerResult resultOf(TreeWalk found, const std::string& root) {
    DiskExplorerResult result;
    const std::string beginning = beginningOf(root);
    result.folders = itemsBelow(beginning, std::move(found.children));
    result.largestFiles = itemsBelow(beginning, std::move(found.largestFiles));
    result.inspectedFiles = found.entries;
    result.skippedLocations = found.exists && !found.opened ? 1 : found.links + found.elsewhere + found.unreadable;
    result.stopped = found.end == WalkEnd::cancelled;
    result.limitReached = found.end == WalkEnd::entryLimit || found.end == WalkEnd::timeLimit;
    result.regularFiles = found.files;
    result.otherItems = found.otherChildren;
    result.otherBytes = found.otherBytes;
    return result;
}

DiskExplorerProgress progressOf(const WalkProgress& step, const std::string& root) {
    DiskExplorerProgress progress;
    const std::string beginning = beginningOf(root);
    progress.found.folders = itemsBelow(beginning, step.children);
    progress.found.inspectedFiles = step.entries;
    progress.found.otherItems = step.otherChildren;
    progress.found.otherBytes = step.otherBytes;
    progress.folder = step.folder.empty() ? root : beginning + step.folder;
    return progress;
}

}  // namespace

DiskExplorerResult DiskExplorer::scan(DirectoryWalker& walker, const Clock& clock, const std::string& folder,
                                      const DiskExplorerRequest& request) {
    if (!folder.starts_with('/')) {
        return {};
    }
    const std::string root = standardizedPath(folder);
    const Seconds deadline = clock.uptime() + std::max(request.timeLimit, Seconds::zero());
    WalkRequest walk;
    walk.folder = root;
    walk.entryLimit = request.fileLimit;
    walk.childLimit = request.folderLimit;
    walk.largestLimit = std::max<std::int64_t>(request.largestLimit, 0);
    walk.cancelled = request.cancelled;
    walk.timeIsUp = [&clock, deadline] { return clock.uptime() >= deadline; };
    if (request.progress) {
        walk.progress = [&root, &request](const WalkProgress& step) { request.progress(progressOf(step, root)); };
    }
    return resultOf(walker.walk(walk), root);
}

}  // namespace kestrune
