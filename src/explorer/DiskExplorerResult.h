#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune {

struct DiskExplorerItem {
    std::string path;
    std::int64_t bytes = 0;  ///< allocated
    bool isDirectory = false;

    bool operator==(const DiskExplorerItem&) const = default;
};

struct DiskExplorerResult {
    std::vector<DiskExplorerItem> folders;       ///< the root's direct children, largest first
    std::vector<DiskExplorerItem> largestFiles;  ///< largest first
    std::int64_t inspectedFiles = 0;
    std::int64_t skippedLocations = 0;
    bool stopped = false;
    bool limitReached = false;

    bool operator==(const DiskExplorerResult&) const = default;
};

}  // namespace kestrune
