#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune {

struct DiskExplorerItem {
    std::string path;        ///< absolute; also what identifies the item
    std::int64_t bytes = 0;  ///< allocated
    bool isDirectory = false;

    bool operator==(const DiskExplorerItem&) const = default;
};

struct DiskExplorerResult {
    std::vector<DiskExplorerItem> folders;       ///< the root's direct children, largest first
    std::vector<DiskExplorerItem> largestFiles;  ///< largest first
    std::int64_t inspectedFiles = 0;             ///< entries examined, folders included
    std::int64_t skippedLocations = 0;  ///< not measured: unreadable, symbolic links, entries of other file systems
    bool stopped = false;
    bool limitReached = false;
    std::int64_t regularFiles = 0;  ///< measured, anywhere below the root

    // What the list of folders leaves out when it was cut, so that shares stay true.
    std::int64_t otherItems = 0;  ///< direct children that were measured but are not in folders
    std::int64_t otherBytes = 0;  ///< of those

    [[nodiscard]] std::int64_t totalBytes() const;     ///< of folders
    [[nodiscard]] std::int64_t measuredBytes() const;  ///< of folders and what they leave out

    bool operator==(const DiskExplorerResult&) const = default;
};

}  // namespace kestrune
