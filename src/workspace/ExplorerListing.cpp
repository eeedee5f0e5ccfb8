#include "workspace/ExplorerListing.h"

namespace kestrune::ExplorerListing {

std::vector<ExplorerRow> folderRows(const DiskExplorerResult& result) {
    static_cast<void>(result);
    return {};
}

std::vector<ExplorerRow> fileRows(const DiskExplorerResult& result, const std::string& root) {
    static_cast<void>(result);
    static_cast<void>(root);
    return {};
}

std::vector<ExplorerCrumb> crumbs(const std::string& root, const std::string& home) {
    static_cast<void>(root);
    static_cast<void>(home);
    return {};
}

std::string counts(const DiskExplorerResult& result) {
    static_cast<void>(result);
    return {};
}

bool isIncomplete(const DiskExplorerResult& result) {
    return result.stopped || result.limitReached || result.skippedLocations > 0;
}

std::string incompleteText(const DiskExplorerResult& result) {
    static_cast<void>(result);
    return {};
}

bool isCut(const DiskExplorerResult& result) {
    return result.folders.size() >= rowsAtMost;
}

std::string parentOf(const std::string& folder) {
    const auto slash = folder.rfind('/');
    return slash == std::string::npos || folder == "/" ? "" : slash == 0 ? "/" : folder.substr(0, slash);
}

}  // namespace kestrune::ExplorerListing
