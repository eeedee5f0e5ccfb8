#include "explorer/ExplorerHistory.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

DiskExplorerResult resultWith(std::int64_t entries) {
    DiskExplorerResult result;
    result.inspectedFiles = entries;
    return result;
}

/// A result whose paths take this much memory.
DiskExplorerResult resultOfPathBytes(std::size_t bytes) {
    DiskExplorerResult result;
    result.largestFiles = {{std::string(bytes, 'x'), 1, false}};
    return result;
}

/// How many visits can be gone back from the one that is shown.
std::size_t stepsBack(ExplorerHistory& history) {
    std::size_t steps = 0;
    for (; history.canGoBack(); ++steps) {
        history.goBack();
    }
    return steps;
}

}  // namespace

TEST(ExplorerHistory, withoutAVisitThereIsNoWayBackOrForward) {
    const ExplorerHistory history;
    EXPECT_FALSE(history.canGoBack());
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.find("/a"), nullptr);
}

TEST(ExplorerHistory, backAndForwardLeadThroughTheVisitsInOrder) {
    ExplorerHistory history;
    history.visit("/a", resultWith(1));
    history.visit("/b", resultWith(2));
    history.visit("/c", resultWith(3));
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.goBack().folder, "/b");
    EXPECT_EQ(history.goBack().result, resultWith(1));
    EXPECT_FALSE(history.canGoBack());
    EXPECT_EQ(history.goForward().folder, "/b");
    EXPECT_EQ(history.goForward().folder, "/c");
    EXPECT_FALSE(history.canGoForward());
}

TEST(ExplorerHistory, aVisitAfterGoingBackForgetsWhatLayAhead) {
    ExplorerHistory history;
    history.visit("/a", resultWith(1));
    history.visit("/b", resultWith(2));
    history.goBack();
    history.visit("/c", resultWith(3));
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.find("/b"), nullptr);
    EXPECT_EQ(history.goBack().folder, "/a");
}

TEST(ExplorerHistory, aScanOfTheFolderThatIsShownReplacesItsVisit) {
    ExplorerHistory history;
    history.visit("/a", resultWith(1));
    history.visit("/b", resultWith(2));
    history.goBack();
    history.visit("/a", resultWith(5));
    EXPECT_FALSE(history.canGoBack());
    EXPECT_EQ(history.find("/a")->result, resultWith(5));
    EXPECT_EQ(history.goForward().folder, "/b");
}

TEST(ExplorerHistory, ofSeveralVisitsToAFolderTheOneScannedLastIsFound) {
    ExplorerHistory history;
    history.visit("/a", resultWith(1));
    history.visit("/b", resultWith(2));
    history.visit("/a", resultWith(3));
    EXPECT_EQ(history.find("/a")->result, resultWith(3));
    history.goBack();
    history.goBack();
    history.visit("/a", resultWith(4));
    EXPECT_EQ(history.find("/a")->result, resultWith(4));
}

TEST(ExplorerHistory, theOldestVisitsAreForgottenBeyondTheBound) {
    ExplorerHistory history;
    for (std::size_t visit = 0; visit < ExplorerHistory::visitsAtMost + 3; ++visit) {
        history.visit("/" + std::to_string(visit), {});
    }
    EXPECT_EQ(history.find("/2"), nullptr);
    EXPECT_NE(history.find("/3"), nullptr);
    EXPECT_EQ(stepsBack(history), ExplorerHistory::visitsAtMost - 1);
}

TEST(ExplorerHistory, enormousPathsLeaveRoomForFewerVisits) {
    ExplorerHistory history;
    for (const std::string folder : {"/a", "/b", "/c"}) {
        history.visit(folder, resultOfPathBytes(ExplorerHistory::pathBytesAtMost / 2));
    }
    EXPECT_EQ(history.find("/a"), nullptr);
    EXPECT_EQ(stepsBack(history), 1U);
}

TEST(ExplorerHistory, theVisitThatIsShownIsNeverForgotten) {
    ExplorerHistory history;
    history.visit("/a", {});
    history.visit("/b", {});
    history.goBack();
    history.visit("/a", resultOfPathBytes(ExplorerHistory::pathBytesAtMost + 1));
    EXPECT_NE(history.find("/a"), nullptr);
    EXPECT_EQ(history.find("/b"), nullptr);
    EXPECT_FALSE(history.canGoBack());
    EXPECT_FALSE(history.canGoForward());
}

}  // namespace kestrune
