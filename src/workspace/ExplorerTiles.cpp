#include "workspace/ExplorerTiles.h"

#include <algorithm>

#include "base/ByteCount.h"
#include "base/Localized.h"

namespace kestrune {

namespace {

constexpr std::size_t tilesAtMost = 12;  // besides the one of what is smaller
constexpr double smallestShare = 0.01;
constexpr int firstQuietRank = 8;

ExplorerTile tileOf(const ExplorerRow& row) {
    ExplorerTile tile;
    tile.path = row.path;
    tile.name = row.name;
    tile.size = formatByteCount(row.bytes);
    tile.percent = row.percent;
    tile.bytes = row.bytes;
    tile.share = row.share;
    tile.rank = row.rank;
    tile.isDirectory = row.isDirectory;
    return tile;
}

ExplorerTile smallerTile(std::int64_t items, std::int64_t bytes, std::int64_t measured, std::size_t before) {
    ExplorerTile tile;
    tile.name = localizedCount("%1 smaller item", "%1 smaller items", items, {ExplorerListing::grouped(items)});
    tile.size = formatByteCount(bytes);
    tile.bytes = bytes;
    tile.share = static_cast<double>(bytes) / static_cast<double>(measured);
    tile.percent = ExplorerListing::percentText(tile.share);
    tile.rank = std::max(firstQuietRank, static_cast<int>(before));
    return tile;
}

}  // namespace

std::vector<ExplorerTile> explorerTiles(
    const std::vector<ExplorerRow>& folderRows, const DiskExplorerResult& result,
    const std::function<const DiskExplorerResult*(const std::string&)>& remembered) {
    const auto withBytes = static_cast<std::size_t>(
        std::count_if(folderRows.begin(), folderRows.end(), [](const ExplorerRow& row) { return row.bytes > 0; }));
    const std::int64_t others = result.otherBytes > 0 ? result.otherItems : 0;
    std::vector<ExplorerTile> tiles;
    std::int64_t items = others;
    std::int64_t bytes = others > 0 ? result.otherBytes : 0;
    for (const ExplorerRow& row : folderRows) {
        if (row.bytes <= 0) {
            continue;
        }
        const bool isOnlyOneLeft = tiles.size() + 1 == withBytes && others == 0;
        const bool isLargeEnough = tiles.size() < tilesAtMost && row.share >= smallestShare;
        if (items == others && (isLargeEnough || isOnlyOneLeft)) {
            tiles.push_back(tileOf(row));
            const DiskExplorerResult* inner = row.isDirectory && remembered ? remembered(row.path) : nullptr;
            if (inner != nullptr) {
                tiles.back().inside = explorerTiles(ExplorerListing::folderRows(*inner), *inner, {});
            }
        } else {
            ++items;
            bytes += row.bytes;
        }
    }
    if (items > 0) {
        tiles.push_back(smallerTile(items, bytes, result.measuredBytes(), tiles.size()));
    }
    return tiles;
}

}  // namespace kestrune
