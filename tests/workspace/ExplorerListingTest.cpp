#include "workspace/ExplorerListing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "base/Localized.h"
#include "base/Text.h"

namespace kestrune {

namespace {

using Texts = std::vector<std::string>;

DiskExplorerResult resultOf(const std::vector<std::int64_t>& sizes) {
    DiskExplorerResult result;
    for (const std::int64_t bytes : sizes) {
        result.folders.push_back({"/r/" + std::to_string(result.folders.size()), bytes, true});
    }
    return result;
}

ExplorerRow rowAt(const std::string& path, std::int64_t bytes = 1) {
    ExplorerRow row;
    row.path = path;
    row.bytes = bytes;
    return row;
}

Texts pathsOf(const std::vector<ExplorerRow>& rows) {
    Texts paths;
    std::transform(rows.begin(), rows.end(), std::back_inserter(paths),
                   [](const ExplorerRow& one) { return one.path; });
    return paths;
}

Texts labelsOf(const std::vector<ExplorerCrumb>& crumbs) {
    Texts labels;
    std::transform(crumbs.begin(), crumbs.end(), std::back_inserter(labels),
                   [](const ExplorerCrumb& one) { return one.label; });
    return labels;
}

std::string detailOf(const std::string& file, const std::string& root) {
    DiskExplorerResult result;
    result.largestFiles = {{file, 1, false}};
    return ExplorerListing::fileRows(result, root).front().detail;
}

std::string nested(int levels) {
    std::string path;
    for (int level = 0; level < levels; ++level) {
        path += "/d";
    }
    return path;
}

}  // namespace

TEST(ExplorerListing, aRowSaysWhatAnItemIsAndHowMuchItTakes) {
    DiskExplorerResult result;
    result.folders = {{"/home/anna/Projects/client-app", 750, true}, {"/home/anna/Projects/notes.txt", 250, false}};
    const auto rows = ExplorerListing::folderRows(result);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0],
              (ExplorerRow{"/home/anna/Projects/client-app", "client-app", "", 750, 0.75, 1.0, "75%", 0, true}));
    EXPECT_EQ(rows[1].name, "notes.txt");
    EXPECT_EQ(rows[1].percent, "25%");
    EXPECT_EQ(rows[1].rank, 1);
    EXPECT_FALSE(rows[1].isDirectory);
}

TEST(ExplorerListing, barsShareOneScaleWhichTheLargestFills) {
    const auto rows = ExplorerListing::folderRows(resultOf({400, 100, 0}));
    EXPECT_EQ(rows[0].bar, 1.0);
    EXPECT_EQ(rows[1].bar, 0.25);
    EXPECT_EQ(rows[2].bar, 0.0);
}

TEST(ExplorerListing, sharesCountWhatTheListLeavesOut) {
    DiskExplorerResult result = resultOf({500});
    result.otherBytes = 500;
    EXPECT_EQ(ExplorerListing::folderRows(result)[0].percent, "50%");
}

TEST(ExplorerListing, nothingMeasuredIsNoShare) {
    const auto rows = ExplorerListing::folderRows(resultOf({0, 0}));
    EXPECT_EQ(rows[0].percent, "0%");
    EXPECT_EQ(rows[0].bar, 0.0);
}

TEST(ExplorerListing, percentIsWholeAndSaysWhenItIsLessThanOne) {
    EXPECT_EQ(ExplorerListing::percentText(0), "0%");
    EXPECT_EQ(ExplorerListing::percentText(0.000001), "<1%");
    EXPECT_EQ(ExplorerListing::percentText(0.0099), "<1%");
    EXPECT_EQ(ExplorerListing::percentText(0.01), "1%");
    EXPECT_EQ(ExplorerListing::percentText(0.265), "27%");
    EXPECT_EQ(ExplorerListing::percentText(0.9999), "99%");
    EXPECT_EQ(ExplorerListing::percentText(1), "100%");
}

TEST(ExplorerListing, sizesAtTheEndOfTheRangeStillHaveAShare) {
    const auto rows = ExplorerListing::folderRows(resultOf({std::numeric_limits<std::int64_t>::max()}));
    EXPECT_EQ(rows[0].percent, "100%");
    EXPECT_EQ(rows[0].bar, 1.0);
}

TEST(ExplorerListing, twoHundredRowsAreShownAndTheListSaysThatItIsCut) {
    const DiskExplorerResult most = resultOf(std::vector<std::int64_t>(199, 1));
    EXPECT_EQ(ExplorerListing::folderRows(most).size(), 199U);
    EXPECT_FALSE(ExplorerListing::isCut(most));
    const DiskExplorerResult cut = resultOf(std::vector<std::int64_t>(200, 1));
    EXPECT_TRUE(ExplorerListing::isCut(cut));
    EXPECT_EQ(ExplorerListing::folderRows(resultOf(std::vector<std::int64_t>(201, 1))).size(), 200U);
}

TEST(ExplorerListing, siblingsWithNamesThatAreNoTextAreTwoRows) {
    DiskExplorerResult result;
    result.folders = {{"/r/\xFF", 2, false}, {"/r/\xFE", 1, false}};
    const auto rows = ExplorerListing::folderRows(result);
    EXPECT_EQ(rows[0].path, "/r/\xFF");
    EXPECT_EQ(rows[1].path, "/r/\xFE");
    EXPECT_EQ(rows[0].name, "\uFFFD");
    EXPECT_TRUE(isValidUtf8(rows[1].name));
}

TEST(ExplorerListing, namesShowWhatTheyHold) {
    DiskExplorerResult result;
    result.folders = {{"/r/two\nlines", 1, false}, {"/r/\u202Egpj.exe", 1, false}, {"/r/" + std::string(255, 'x'), 1}};
    const auto rows = ExplorerListing::folderRows(result);
    EXPECT_EQ(rows[0].name, "two␊lines");
    EXPECT_EQ(rows[1].name, "\uFFFDgpj.exe");
    EXPECT_EQ(characterCount(rows[2].name), 200U);
}

TEST(ExplorerListing, aLargestFileTellsItsFolderBelowTheRoot) {
    EXPECT_EQ(detailOf("/home/anna/Projects/lab/checkpoints/a.bin", "/home/anna/Projects"), "lab/checkpoints");
    EXPECT_EQ(detailOf("/home/anna/Projects/a.bin", "/home/anna/Projects"), "Projects");
    EXPECT_EQ(detailOf("/etc/a.conf", "/"), "etc");
    EXPECT_EQ(detailOf("/a.bin", "/"), "/");
    EXPECT_EQ(detailOf("/r/\xFF/a\n/b.bin", "/r"), "\uFFFD/a␊");
}

TEST(ExplorerListing, largestFilesHaveSharesButNoRank) {
    DiskExplorerResult result = resultOf({1000});
    result.largestFiles = {{"/r/0/a", 500, false}, {"/r/0/b", 250, false}};
    const auto rows = ExplorerListing::fileRows(result, "/r");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].percent, "50%");
    EXPECT_EQ(rows[1].bar, 0.5);
    EXPECT_EQ(rows[1].rank, -1);
}

TEST(ExplorerListing, aVeryDeepFileIsToldByTheEndsOfItsPath) {
    const std::string detail = detailOf("/first" + nested(50'000) + "/last/a.bin", "/");
    EXPECT_EQ(characterCount(detail), 300U);
    EXPECT_EQ(detail.substr(0, 9), "first/d/d");
    EXPECT_EQ(detail.substr(detail.size() - 7), "/d/last");
    EXPECT_EQ(detailOf("/\U0001F600" + nested(50'000) + "/\U0001F600/a.bin", "/").substr(0, 4), "\U0001F600");
}

TEST(ExplorerListing, aHeldListKeepsItsPlacesAndTakesNewFigures) {
    const std::vector<ExplorerRow> shown{rowAt("/r/a", 3), rowAt("/r/b", 2)};
    const std::vector<ExplorerRow> now{rowAt("/r/c", 9), rowAt("/r/b", 8), rowAt("/r/a", 3)};
    const auto merged = ExplorerListing::mergedRows(shown, now, true);
    EXPECT_EQ(pathsOf(merged), (Texts{"/r/a", "/r/b", "/r/c"}));
    EXPECT_EQ(merged[1].bytes, 8);
    EXPECT_EQ(ExplorerListing::mergedRows(shown, now, false), now);
}

TEST(ExplorerListing, aHeldListKeepsWhatIsGoneAndDoesNotOutgrowTheNewOne) {
    const std::vector<ExplorerRow> shown{rowAt("/r/a", 3), rowAt("/r/b", 2)};
    const std::vector<ExplorerRow> now{rowAt("/r/c", 9), rowAt("/r/b", 8), rowAt("/r/d", 7)};
    EXPECT_EQ(pathsOf(ExplorerListing::mergedRows(shown, now, true)), (Texts{"/r/a", "/r/b", "/r/c"}));
}

TEST(ExplorerListing, whereNothingShownIsLeftAHeldListShowsWhatIsNew) {
    const std::vector<ExplorerRow> now{rowAt("/other/x")};
    EXPECT_EQ(ExplorerListing::mergedRows({rowAt("/r/a")}, now, true), now);
    EXPECT_TRUE(ExplorerListing::mergedRows({rowAt("/r/a")}, {}, true).empty());
}

TEST(ExplorerListing, thePathBeginsAtHomeOrAtTheRootOfAll) {
    EXPECT_EQ(ExplorerListing::crumbs("/home/anna/Projects/lab", "/home/anna"),
              (std::vector<ExplorerCrumb>{
                  {"/home/anna", "~"}, {"/home/anna/Projects", "Projects"}, {"/home/anna/Projects/lab", "lab"}}));
    EXPECT_EQ(ExplorerListing::crumbs("/srv/data", "/home/anna"),
              (std::vector<ExplorerCrumb>{{"/", "/"}, {"/srv", "srv"}, {"/srv/data", "data"}}));
    EXPECT_EQ(labelsOf(ExplorerListing::crumbs("/home/annabel", "/home/anna")), (Texts{"/", "home", "annabel"}));
}

TEST(ExplorerListing, homeAndTheRootOfAllAreAPathOfOne) {
    EXPECT_EQ(labelsOf(ExplorerListing::crumbs("/home/anna", "/home/anna/")), (Texts{"~"}));
    EXPECT_EQ(labelsOf(ExplorerListing::crumbs("/", "/home/anna")), (Texts{"/"}));
    EXPECT_EQ(labelsOf(ExplorerListing::crumbs("/", "/")), (Texts{"/"}));
    EXPECT_EQ(labelsOf(ExplorerListing::crumbs("/etc", "")), (Texts{"/", "etc"}));
}

TEST(ExplorerListing, crumbsKeepTheBytesAndShowReadableNames) {
    const auto crumbs = ExplorerListing::crumbs("/h/\xFF/a\tb", "/h");
    EXPECT_EQ(crumbs[1].path, "/h/\xFF");
    EXPECT_EQ(labelsOf(crumbs), (Texts{"~", "\uFFFD", "a␉b"}));
}

TEST(ExplorerListing, theMiddleOfAVeryDeepPathIsOneCrumb) {
    const std::string root = "/h" + nested(50'000);
    const auto crumbs = ExplorerListing::crumbs(root, "/h");
    ASSERT_EQ(crumbs.size(), ExplorerListing::crumbsAtMost);
    EXPECT_EQ(crumbs.front(), (ExplorerCrumb{"/h", "~"}));
    EXPECT_EQ(crumbs[1].label, "…");
    EXPECT_EQ(crumbs[1].path, ExplorerListing::parentOf(crumbs[2].path));
    EXPECT_EQ(crumbs.back(), (ExplorerCrumb{root, "d"}));
    const std::string fitting = "/h" + nested(static_cast<int>(ExplorerListing::crumbsAtMost) - 2);
    EXPECT_EQ(ExplorerListing::crumbs(fitting, "/h")[1].label, "d");
}

TEST(ExplorerListing, countsHaveThousandsSeparators) {
    DiskExplorerResult result;
    result.inspectedFiles = 184'236;
    result.regularFiles = 161'902;
    EXPECT_EQ(ExplorerListing::counts(result), "184,236 inspected · 161,902 files");
    result.inspectedFiles = 1'000'000;
    result.regularFiles = 999;
    EXPECT_EQ(ExplorerListing::counts(result), "1,000,000 inspected · 999 files");
    EXPECT_EQ(ExplorerListing::counts({}), "0 inspected · 0 files");
}

TEST(ExplorerListing, anIncompleteScanGivesTheNumberOfUnreadLocations) {
    DiskExplorerResult result;
    EXPECT_FALSE(ExplorerListing::isIncomplete(result));
    result.skippedLocations = 12;
    EXPECT_TRUE(ExplorerListing::isIncomplete(result));
    EXPECT_EQ(
        ExplorerListing::incompleteText(result),
        "This scan is incomplete. 12 locations couldn’t be read or were skipped. Try a smaller folder to see more.");
}

TEST(ExplorerListing, aScanThatWasStoppedOrCutShortIsIncomplete) {
    DiskExplorerResult stopped;
    stopped.stopped = true;
    EXPECT_TRUE(ExplorerListing::isIncomplete(stopped));
    DiskExplorerResult limited;
    limited.limitReached = true;
    EXPECT_TRUE(ExplorerListing::isIncomplete(limited));
}

TEST(ExplorerListing, theFolderAbove) {
    EXPECT_EQ(ExplorerListing::parentOf("/home/anna"), "/home");
    EXPECT_EQ(ExplorerListing::parentOf("/home"), "/");
    EXPECT_EQ(ExplorerListing::parentOf("/"), "");
}

TEST(ExplorerListing, theChildOnTheWayDownIsFoundByWholeNames) {
    EXPECT_EQ(ExplorerListing::childTowards("/home/anna", "/home/anna/a/b"), "/home/anna/a");
    EXPECT_EQ(ExplorerListing::childTowards("/", "/home/anna"), "/home");
    EXPECT_EQ(ExplorerListing::childTowards("/home/anna", "/home/anna/a"), "/home/anna/a");
    EXPECT_EQ(ExplorerListing::childTowards("/home/anna", "/home/anna"), "");
    EXPECT_EQ(ExplorerListing::childTowards("/home/an", "/home/anna/a"), "");
    EXPECT_EQ(ExplorerListing::childTowards("/home/anna", ""), "");
}

TEST(ExplorerListing, figuresFollowTheLanguage) {
    setTranslation({[](const char* english) {
                        using namespace std::string_view_literals;
                        return english == "%1,%2"sv ? "%1.%2" : english == "%1%"sv ? "%1 %" : english;
                    },
                    nullptr});
    EXPECT_EQ(ExplorerListing::grouped(1'234'567), "1.234.567");
    EXPECT_EQ(ExplorerListing::grouped(-1'234), "-1.234");
    EXPECT_EQ(ExplorerListing::percentText(0.42), "42 %");
    setTranslation({});
}

}  // namespace kestrune
