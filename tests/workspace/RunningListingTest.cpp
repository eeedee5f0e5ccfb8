#include "workspace/RunningListing.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

RunningItem item(std::int32_t id, std::uint64_t startTime = 1, std::int64_t memoryMB = 0) {
    RunningItem made;
    made.id = id;
    made.name = "node";
    made.executable = "/usr/bin/node";
    made.memoryMB = memoryMB;
    made.startTime = startTime;
    return made;
}

RunningItem named(const std::string& name, const std::string& executable) {
    RunningItem made;
    made.name = name;
    made.executable = executable;
    return made;
}

/// Identifiers in order; those of ended rows are negative.
std::vector<std::int32_t> idsOf(const std::vector<ListedItem>& rows) {
    std::vector<std::int32_t> ids;
    for (const auto& row : rows) {
        ids.push_back(row.ended ? -row.item.id : row.item.id);
    }
    return ids;
}

using Ids = std::vector<std::int32_t>;

}  // namespace

TEST(RunningListing, numberAndStartTimeTogetherAreTheProcess) {
    EXPECT_TRUE(isSameProcess(item(5, 1, 10), item(5, 1, 20)));
    EXPECT_FALSE(isSameProcess(item(5, 1), item(6, 1)));
    EXPECT_FALSE(isSameProcess(item(5, 1), item(5, 2)));
    EXPECT_FALSE(isSameProcess(item(5, 0), item(5, 1)));
}

TEST(RunningListing, aProcessThatRunsAnotherProgramSinceIsStillTheSame) {
    auto other = item(5, 1);
    other.executable = "/usr/bin/deno";
    EXPECT_TRUE(isSameProcess(item(5, 1), other));
}

TEST(RunningListing, withoutStartTimesTheExecutableTellsApart) {
    auto other = item(5, 0);
    EXPECT_TRUE(isSameProcess(item(5, 0), other));
    other.executable = "/usr/bin/deno";
    EXPECT_FALSE(isSameProcess(item(5, 0), other));
}

TEST(RunningListing, aFreeListIsExactlyTheListing) {
    const auto shown = mergedListing({}, {item(1), item(2), item(3)}, false);
    EXPECT_EQ(idsOf(shown), (Ids{1, 2, 3}));
    EXPECT_EQ(idsOf(mergedListing(shown, {item(3), item(4), item(1)}, false)), (Ids{3, 4, 1}));
}

TEST(RunningListing, aHeldListMovesNoRow) {
    const auto shown = mergedListing({}, {item(1), item(2), item(3)}, false);
    EXPECT_EQ(idsOf(mergedListing(shown, {item(3), item(2), item(1)}, true)), (Ids{1, 2, 3}));
}

TEST(RunningListing, aHeldRowGetsItsNewFigures) {
    const auto shown = mergedListing({}, {item(1, 1, 10)}, false);
    const auto merged = mergedListing(shown, {item(1, 1, 99)}, true);
    EXPECT_EQ(merged.at(0).item.memoryMB, 99);
}

TEST(RunningListing, aHeldRowThatEndedStaysInItsPlace) {
    const auto shown = mergedListing({}, {item(1), item(2, 1, 50), item(3)}, false);
    const auto merged = mergedListing(shown, {item(3), item(1)}, true);
    EXPECT_EQ(idsOf(merged), (Ids{1, -2, 3}));
    EXPECT_EQ(merged.at(1).item, item(2, 1, 50));
}

TEST(RunningListing, newRowsFollowAtTheEndInTheirOrder) {
    const auto shown = mergedListing({}, {item(1), item(2)}, false);
    EXPECT_EQ(idsOf(mergedListing(shown, {item(9), item(2), item(8), item(1)}, true)), (Ids{1, 2, 9, 8}));
}

TEST(RunningListing, anEndedRowLeavesWhenTheListIsFree) {
    auto shown = mergedListing({}, {item(1), item(2)}, false);
    shown = mergedListing(shown, {item(2)}, true);
    EXPECT_EQ(idsOf(mergedListing(shown, {item(2)}, false)), (Ids{2}));
}

TEST(RunningListing, aRowThatIsBackIsNoLongerEnded) {
    auto shown = mergedListing({}, {item(1), item(2)}, false);
    shown = mergedListing(shown, {item(2)}, true);
    EXPECT_EQ(idsOf(mergedListing(shown, {item(1), item(2)}, true)), (Ids{1, 2}));
}

TEST(RunningListing, aNumberHandedOutAgainIsANewRow) {
    const auto shown = mergedListing({}, {item(1, 7), item(2, 7)}, false);
    EXPECT_EQ(idsOf(mergedListing(shown, {item(1, 8), item(2, 7)}, true)), (Ids{-1, 2, 1}));
}

TEST(RunningListing, oneProcessListedTwiceDoesNotMultiplyWhileTheListIsHeld) {
    const std::vector<RunningItem> now{item(1), item(1), item(2)};
    auto shown = mergedListing({}, now, true);
    for (int i = 0; i < 3; ++i) {
        shown = mergedListing(shown, now, true);
    }
    EXPECT_EQ(idsOf(shown), (Ids{1, 2}));
}

TEST(RunningListing, aListHeldBeforeItsFirstListingShowsTheListing) {
    EXPECT_EQ(idsOf(mergedListing({}, {item(2), item(1)}, true)), (Ids{2, 1}));
}

TEST(RunningListing, tenThousandRowsThatAllMoveKeepTheirPlaces) {
    std::vector<RunningItem> now;
    for (std::int32_t id = 1; id <= 10'000; ++id) {
        now.push_back(item(id));
    }
    const auto shown = mergedListing({}, now, false);
    const std::vector<RunningItem> turned(now.rbegin(), now.rend());
    EXPECT_EQ(mergedListing(shown, turned, true), shown);
}

TEST(RunningListing, theToolsAmongTheRowsAreRecognised) {
    const std::vector<RunningItem> rows{named("LM Studio", "/opt/lm-studio/lm-studio"),
                                        named("Firefox", "/usr/bin/firefox"), named("ollama", "/usr/local/bin/ollama"),
                                        named("node", "/usr/bin/node")};
    EXPECT_EQ(aiTools(rows), (std::vector<RunningItem>{rows[0], rows[2]}));
}

TEST(RunningListing, whatListensIsThePortList) {
    std::vector<RunningItem> rows{named("node", "/usr/bin/node"), named("bun", "/usr/bin/bun")};
    rows[1].listeners = {"*:3000"};
    EXPECT_EQ(listeningItems(rows), std::vector<RunningItem>{rows[1]});
}

}  // namespace kestrune
