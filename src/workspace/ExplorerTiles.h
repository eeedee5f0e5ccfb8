#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "explorer/DiskExplorerResult.h"
#include "workspace/ExplorerListing.h"

namespace kestrune {

/// One tile of the picture of a folder, worded and measured.
struct ExplorerTile {
    std::string path;     ///< absolute bytes; empty: the tile of what is too small for one of its own
    std::string name;     ///< readable
    std::string size;     ///< as the file manager words it
    std::string percent;  ///< share in whole percent, "<1%" for what is less
    std::int64_t bytes = 0;
    double share = 0;  ///< of everything measured in the folder, 0 to 1
    int rank = 0;      ///< place among the direct children, 0 is the largest; 8 and more share one colour
    bool isDirectory = false;
    std::vector<ExplorerTile> inside;  ///< one level below, where a result of that folder is remembered

    bool operator==(const ExplorerTile&) const = default;
};

/// The 12 largest items of at least 1 % each, then one tile "N smaller items" for all that follow; a single item that
/// would be left keeps its own tile. Items of 0 bytes have none; nothing where nothing has bytes. folderRows are those
/// of result; remembered answers the last result of a folder or null and may be empty.
[[nodiscard]] std::vector<ExplorerTile> explorerTiles(
    const std::vector<ExplorerRow>& folderRows, const DiskExplorerResult& result,
    const std::function<const DiskExplorerResult*(const std::string&)>& remembered);

}  // namespace kestrune
