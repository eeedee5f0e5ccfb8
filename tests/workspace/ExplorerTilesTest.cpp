#include "workspace/ExplorerTiles.h"

#include <gtest/gtest.h>

#include <map>

namespace kestrune {

namespace {

DiskExplorerResult resultOf(const std::vector<std::int64_t>& sizes, const std::string& root = "/home/anna") {
    DiskExplorerResult result;
    for (std::size_t index = 0; index < sizes.size(); ++index) {
        result.folders.push_back({root + "/item" + std::to_string(index), sizes[index], index % 2 == 0});
    }
    return result;
}

std::vector<ExplorerTile> tilesOf(const DiskExplorerResult& result) {
    return explorerTiles(ExplorerListing::folderRows(result), result, {});
}

}  // namespace

TEST(ExplorerTiles, eachLargeItemHasATileWithItsFigures) {
    const auto tiles = tilesOf(resultOf({6'000'000, 3'000'000, 1'000'000}));
    ASSERT_EQ(tiles.size(), 3U);
    EXPECT_EQ(tiles[1].path, "/home/anna/item1");
    EXPECT_EQ(tiles[1].name, "item1");
    EXPECT_EQ(tiles[1].size, "3 MB");
    EXPECT_EQ(tiles[1].percent, "30%");
    EXPECT_DOUBLE_EQ(tiles[1].share, 0.3);
    EXPECT_EQ(tiles[1].bytes, 3'000'000);
    EXPECT_EQ(tiles[1].rank, 1);
    EXPECT_FALSE(tiles[1].isDirectory);
    EXPECT_TRUE(tiles[2].isDirectory);
}

TEST(ExplorerTiles, twelveTilesAreFollowedByOneForAllThatIsSmaller) {
    const auto tiles = tilesOf(resultOf(std::vector<std::int64_t>(20, 1'000'000)));
    ASSERT_EQ(tiles.size(), 13U);
    EXPECT_EQ(tiles.back().path, "");
    EXPECT_EQ(tiles.back().name, "8 smaller items");
    EXPECT_EQ(tiles.back().size, "8 MB");
    EXPECT_EQ(tiles.back().percent, "40%");
    EXPECT_FALSE(tiles.back().isDirectory);
}

TEST(ExplorerTiles, whatTakesLessThanAPercentIsMerged) {
    const auto tiles = tilesOf(resultOf({990'000, 5'000, 4'000, 1'000}));
    ASSERT_EQ(tiles.size(), 2U);
    EXPECT_EQ(tiles[1].name, "3 smaller items");
    EXPECT_EQ(tiles[1].bytes, 10'000);
    EXPECT_EQ(tiles[1].percent, "1%");
}

TEST(ExplorerTiles, theTileOfSmallerItemsHasTheQuietColourHoweverFewTilesThereAre) {
    EXPECT_EQ(tilesOf(resultOf({990'000, 5'000, 5'000})).back().rank, 8);
    EXPECT_EQ(tilesOf(resultOf(std::vector<std::int64_t>(20, 1))).back().rank, 12);
}

TEST(ExplorerTiles, aSingleSmallerItemKeepsItsOwnTile) {
    const auto few = tilesOf(resultOf({1'000'000, 1}));
    ASSERT_EQ(few.size(), 2U);
    EXPECT_EQ(few[1].name, "item1");
    EXPECT_EQ(few[1].percent, "<1%");
    const auto thirteen = tilesOf(resultOf(std::vector<std::int64_t>(13, 7)));
    ASSERT_EQ(thirteen.size(), 13U);
    EXPECT_EQ(thirteen.back().name, "item12");
}

TEST(ExplorerTiles, itemsThatTheListLeavesOutAreAmongTheSmallerOnes) {
    DiskExplorerResult result = resultOf({600'000, 300'000});
    result.otherItems = 12'345;
    result.otherBytes = 100'000;
    const auto tiles = tilesOf(result);
    ASSERT_EQ(tiles.size(), 3U);
    EXPECT_EQ(tiles[2].name, "12,345 smaller items");
    EXPECT_EQ(tiles[2].percent, "10%");
    result.otherItems = 1;
    EXPECT_EQ(tilesOf(result).back().name, "1 smaller item");
}

TEST(ExplorerTiles, aSmallItemIsMergedWithThoseThatTheListLeavesOut) {
    DiskExplorerResult result = resultOf({600'000, 1});
    result.otherItems = 2;
    result.otherBytes = 2;
    const auto tiles = tilesOf(result);
    ASSERT_EQ(tiles.size(), 2U);
    EXPECT_EQ(tiles[1].name, "3 smaller items");
    EXPECT_EQ(tiles[1].bytes, 3);
}

TEST(ExplorerTiles, itemsWithoutBytesHaveNoTile) {
    DiskExplorerResult result = resultOf({1'000, 0, 0});
    result.otherItems = 5;
    ASSERT_EQ(tilesOf(result).size(), 1U);
    EXPECT_TRUE(tilesOf(resultOf({0, 0})).empty());
    EXPECT_TRUE(tilesOf({}).empty());
}

TEST(ExplorerTiles, theTilesMakeUpAllThatWasMeasured) {
    DiskExplorerResult result = resultOf({500, 400, 300, 200, 100, 50, 40, 30, 20, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0});
    result.otherItems = 3;
    result.otherBytes = 17;
    std::int64_t bytes = 0;
    double share = 0;
    for (const ExplorerTile& tile : tilesOf(result)) {
        bytes += tile.bytes;
        share += tile.share;
    }
    EXPECT_EQ(bytes, result.measuredBytes());
    EXPECT_NEAR(share, 1, 1e-12);
}

TEST(ExplorerTiles, aRememberedFolderShowsWhatIsInsideOneLevelDeep) {
    const DiskExplorerResult result = resultOf({600, 300, 100});
    const std::map<std::string, DiskExplorerResult> known{
        {"/home/anna/item0", resultOf({40, 20}, "/home/anna/item0")},
        {"/home/anna/item1", resultOf({7}, "/home/anna/item1")},
        {"/home/anna/item0/item0", resultOf({1}, "/home/anna/item0/item0")}};
    const auto remembered = [&](const std::string& path) {
        const auto found = known.find(path);
        return found == known.end() ? nullptr : &found->second;
    };
    const auto tiles = explorerTiles(ExplorerListing::folderRows(result), result, remembered);
    ASSERT_EQ(tiles.size(), 3U);
    ASSERT_EQ(tiles[0].inside.size(), 2U);
    EXPECT_EQ(tiles[0].inside[0].path, "/home/anna/item0/item0");
    EXPECT_NEAR(tiles[0].inside[0].share, 2.0 / 3, 1e-12);
    EXPECT_TRUE(tiles[0].inside[0].inside.empty());
    EXPECT_TRUE(tiles[1].inside.empty()) << "a file has nothing inside";
    EXPECT_TRUE(tiles[2].inside.empty()) << "not remembered";
}

}  // namespace kestrune
