#include "storage/DevCleaners.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeDirectoryWalker.h"
#include "tests/fakes/FakeFileQueries.h"
#include "tests/fakes/FakeProcessRunner.h"
#include "tests/fakes/FakeSystemTools.h"
#include "tests/fakes/FakeTrash.h"

namespace kestrune {

namespace {

constexpr const char* npm = "/home/anna/.npm/_cacache";
constexpr const char* ollama = "/home/anna/.ollama/models";
constexpr const char* gradle = "/home/anna/.gradle/caches";
constexpr const char* logs = "/home/anna/Library/Logs";

CleanTarget targetAt(const std::string& path) {
    CleanTarget target;
    target.title = "Target";
    target.path = path;
    return target;
}

std::vector<std::string> pathsOf(const std::vector<CleanTarget>& targets) {
    std::vector<std::string> paths;
    for (const auto& target : targets) {
        paths.push_back(target.path);
    }
    return paths;
}

}  // namespace

class DevCleanersTest : public testing::Test {
protected:
    void add(const std::string& path, std::int64_t bytes, std::int64_t unreadable = 0) {
        fileQueries.addDirectory(path);
        walker.add(path, bytes, unreadable);
    }

    [[nodiscard]] bool isAllowed(const std::string& path, const std::string& home = "/home/anna") const {
        return DevCleaners::isAllowedPath(path, home, fileQueries);
    }

    FakeFileQueries fileQueries;
    FakeDirectoryWalker walker;
    FakeTrash trash;
    FakeProcessRunner runner;
    FakeSystemTools tools;
    DevCleaners cleaners{"/home/anna", {fileQueries, walker, trash, runner, tools}};
};

TEST_F(DevCleanersTest, everyCatalogLocationIsAllowed) {
    for (const auto& list : {DevCleaners::aiCandidates, DevCleaners::devCandidates, DevCleaners::sysCandidates}) {
        for (const auto& entry : list) {
            EXPECT_TRUE(isAllowed("/home/anna/" + std::string(entry.relPath))) << entry.title;
        }
    }
}

TEST_F(DevCleanersTest, homeItselfParentsAndPathsInsideALocationAreRefused) {
    EXPECT_FALSE(isAllowed("/home/anna"));
    EXPECT_FALSE(isAllowed("/home/anna/.claude"));
    EXPECT_FALSE(isAllowed("/home/anna/Library/Developer/Xcode/DerivedData/App-abc"));
    EXPECT_FALSE(isAllowed("/home/anna/Library/Developer/Xcode"));
    EXPECT_FALSE(isAllowed("/"));
    EXPECT_FALSE(isAllowed(""));
}

TEST_F(DevCleanersTest, everyForbiddenParentIsRefused) {
    for (const auto& forbidden : DevCleaners::forbiddenTargets) {
        EXPECT_FALSE(isAllowed("/home/anna/" + std::string(forbidden)));
    }
}

TEST_F(DevCleanersTest, aTrailingSlashOrDotSegmentsMakeNoDifference) {
    EXPECT_TRUE(isAllowed("/home/anna/.npm/_cacache/"));
    EXPECT_TRUE(isAllowed("/home/anna/./.npm/./_cacache"));
    EXPECT_TRUE(isAllowed(npm, "/home/./anna/"));
}

TEST_F(DevCleanersTest, pathsAreComparedExactlyAsSpelled) {
    EXPECT_FALSE(isAllowed("/home/anna/.NPM/_cacache"));
    EXPECT_FALSE(isAllowed("/home/anna/.npm/_cacache "));
    EXPECT_FALSE(isAllowed("home/anna/.npm/_cacache"));
}

TEST_F(DevCleanersTest, anotherUsersCacheIsRefused) {
    EXPECT_FALSE(isAllowed("/home/bert/.npm/_cacache"));
    EXPECT_FALSE(isAllowed("/home/anna/../bert/.npm/_cacache"));
}

TEST_F(DevCleanersTest, aHomeThatIsNotAnAbsoluteFolderAllowsNothing) {
    EXPECT_FALSE(isAllowed("/.npm/_cacache", ""));
    EXPECT_FALSE(isAllowed("/.npm/_cacache", "/"));
    EXPECT_FALSE(isAllowed(".npm/_cacache", "."));
    EXPECT_FALSE(isAllowed("anna/.npm/_cacache", "anna"));
}

TEST_F(DevCleanersTest, aLocationBehindALinkIsRefusedAlthoughItIsMeasured) {
    add(npm, 6'000'000);
    fileQueries.links["/home/anna/.npm"] = "/mnt/big/npm";
    ASSERT_EQ(cleaners.scanAllTargets().size(), 1U);
    EXPECT_FALSE(isAllowed(npm));
    const auto result = cleaners.cleanReviewedTarget(targetAt(npm));
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, 1);
    EXPECT_TRUE(trash.requests.empty());
}

TEST_F(DevCleanersTest, aLocationThatIsItselfALinkIsRefused) {
    fileQueries.links[npm] = "/mnt/big/npm";
    EXPECT_FALSE(isAllowed(npm));
}

TEST_F(DevCleanersTest, aLinkedHomeRefusesEveryTarget) {
    fileQueries.links["/home"] = "/usr/home";
    EXPECT_FALSE(isAllowed(npm));
}

TEST_F(DevCleanersTest, ofAFolderAndOneInsideItOnlyTheOuterStays) {
    const auto kept = DevCleaners::nonOverlapping({targetAt("/h/a/b"), targetAt("/h/a"), targetAt("/h/c")});
    EXPECT_EQ(pathsOf(kept), (std::vector<std::string>{"/h/a", "/h/c"}));
}

TEST_F(DevCleanersTest, siblingsWhoseNamesShareAPrefixBothStay) {
    const auto kept = DevCleaners::nonOverlapping({targetAt("/h/ab"), targetAt("/h/a")});
    EXPECT_EQ(pathsOf(kept), (std::vector<std::string>{"/h/a", "/h/ab"}));
}

TEST_F(DevCleanersTest, duplicatesAfterTheFirstAreDropped) {
    CleanTarget second = targetAt("/h/a");
    second.title = "Second";
    const auto kept = DevCleaners::nonOverlapping({targetAt("/h/a"), second});
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].title, "Target");
}

TEST_F(DevCleanersTest, pathsOfEqualLengthKeepTheirOrderAndLengthCountsCharacters) {
    const auto kept = DevCleaners::nonOverlapping({targetAt("/h/zz"), targetAt("/h/aa"), targetAt("/h/é")});
    EXPECT_EQ(pathsOf(kept), (std::vector<std::string>{"/h/é", "/h/zz", "/h/aa"}));
}

TEST_F(DevCleanersTest, whatIsNotThereHasNoSizeAndIsNoIssue) {
    EXPECT_EQ(cleaners.calculateSize("/home/anna/none"), 0);
    EXPECT_TRUE(cleaners.scanIssues().empty());
}

TEST_F(DevCleanersTest, aSingleFileCountsItsLength) {
    fileQueries.addFile(npm, 1234);
    EXPECT_EQ(cleaners.calculateSize(npm), 1234);
}

TEST_F(DevCleanersTest, aSingleFileWhoseLengthCannotBeReadIsZeroWithoutAnIssue) {
    fileQueries.kinds[npm] = FileKind::other;
    EXPECT_EQ(cleaners.calculateSize(npm), 0);
    EXPECT_TRUE(cleaners.scanIssues().empty());
}

TEST_F(DevCleanersTest, aFolderThatCannotBeListedIsZeroAndAnIssue) {
    fileQueries.addDirectory(npm);
    EXPECT_EQ(cleaners.calculateSize(npm), 0);
    EXPECT_EQ(cleaners.scanIssues(), (std::vector<std::string>{npm}));
}

TEST_F(DevCleanersTest, unreadableItemsNameTheMeasuredFolderOnce) {
    add(npm, 500, 3);
    EXPECT_EQ(cleaners.calculateSize(npm), 500);
    EXPECT_EQ(cleaners.calculateSize(npm), 500);
    EXPECT_EQ(cleaners.scanIssues(), (std::vector<std::string>{npm}));
}

TEST_F(DevCleanersTest, aCancelledMeasurementAnswersWhatItHasSoFar) {
    add(npm, 1000);
    walker.walks[npm].entries = 10;
    int polls = 0;
    EXPECT_EQ(cleaners.calculateSize(npm, [&] { return ++polls > 4; }), 400);
}

TEST_F(DevCleanersTest, aLocationMustExceedItsCategorysFloor) {
    add(ollama, 1'000'000);
    add(npm, 5'000'000);
    add(logs, 10'000'000);
    EXPECT_TRUE(cleaners.scanAllTargets().empty());
    add(ollama, 1'000'001);
    add(npm, 5'000'001);
    add(logs, 10'000'001);
    EXPECT_EQ(pathsOf(cleaners.scanAllTargets()), (std::vector<std::string>{logs, npm, ollama}));
}

TEST_F(DevCleanersTest, aScanFillsInEveryFieldFromTheCatalog) {
    add(gradle, 7'000'000);
    const auto found = cleaners.scanAllTargets();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], (CleanTarget{CleanCategory::buildCaches, "Gradle Caches",
                                     "Downloaded packages and cached builds — recreated when needed", gradle, 7'000'000,
                                     false, std::nullopt}));
}

TEST_F(DevCleanersTest, equalSizesKeepShortestPathFirst) {
    add(ollama, 20'000'000);
    add(npm, 20'000'000);
    add(logs, 20'000'000);
    EXPECT_EQ(pathsOf(cleaners.scanAllTargets()), (std::vector<std::string>{logs, npm, ollama}));
}

TEST_F(DevCleanersTest, aPartlyUnreadableLocationIsStillReportedWithAnIssue) {
    add(npm, 6'000'000, 1);
    EXPECT_EQ(cleaners.scanAllTargets().size(), 1U);
    EXPECT_EQ(cleaners.scanIssues(), (std::vector<std::string>{npm}));
}

TEST_F(DevCleanersTest, everyScanForgetsTheIssuesOfTheLast) {
    add(npm, 6'000'000, 1);
    static_cast<void>(cleaners.scanAllTargets());
    add(npm, 6'000'000, 0);
    static_cast<void>(cleaners.scanAllTargets());
    EXPECT_TRUE(cleaners.scanIssues().empty());
}

TEST_F(DevCleanersTest, cancelledScanReturnsWhatWasCollectedSortedBySize) {
    add(ollama, 2'000'000);
    add("/home/anna/.cache/huggingface/hub", 3'000'000);
    add(gradle, 9'000'000);
    add(logs, 20'000'000);
    bool stop = false;
    walker.whileMeasuring = [&](const std::string& folder) { stop = folder == gradle; };
    const auto found = cleaners.scanAllTargets([&] { return stop; });
    EXPECT_EQ(pathsOf(found), (std::vector<std::string>{"/home/anna/.cache/huggingface/hub", ollama}));
    EXPECT_EQ(walker.measured.back(), gradle);
}

TEST_F(DevCleanersTest, aScanCancelledBeforeItBeginsMeasuresNothing) {
    add(ollama, 2'000'000);
    EXPECT_TRUE(cleaners.scanAllTargets([] { return true; }).empty());
    EXPECT_TRUE(walker.measured.empty());
}

TEST_F(DevCleanersTest, progressTellsEachExistingLocationBeforeItIsMeasured) {
    add(npm, 6'000'000);
    add(logs, 20'000'000);
    std::vector<std::string> told;
    static_cast<void>(cleaners.scanAllTargets({}, [&](int done, int total, std::string_view title) {
        told.push_back(std::to_string(done) + "/" + std::to_string(total) + " " + std::string(title) + " after " +
                       std::to_string(walker.measured.size()));
    }));
    EXPECT_EQ(told, (std::vector<std::string>{"12/20 NPM Global Cache after 0", "19/20 User Logs after 1"}));
}

TEST_F(DevCleanersTest, unreadableLocationsAreNamedInCatalogOrder) {
    fileQueries.addDirectory(logs);
    fileQueries.addDirectory(ollama);
    fileQueries.addDirectory(npm);
    fileQueries.unreadable = {logs, ollama, gradle};
    EXPECT_EQ(cleaners.unreadableTitles(), (std::vector<std::string>{"Ollama Models", "User Logs"}));
}

TEST_F(DevCleanersTest, aReviewedTargetMovesAndItsPlaceInTheTrashIsTold) {
    add(npm, 6'000'000);
    const auto result = cleaners.cleanReviewedTarget(targetAt(npm));
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), "/trash/_cacache");
    ASSERT_EQ(trash.requests.size(), 1U);
    EXPECT_EQ(trash.requests[0].home, "/home/anna");
    EXPECT_EQ(trash.requests[0].relativePath, ".npm/_cacache");
    EXPECT_EQ(trash.requests[0].expected, std::nullopt);
}

TEST_F(DevCleanersTest, theTrashGetsAPlainRelativePathHoweverTheTargetIsSpelled) {
    add("/home/anna/.npm/./_cacache/", 1);
    ASSERT_TRUE(cleaners.cleanReviewedTarget(targetAt("/home/anna/.npm/./_cacache/")).ok());
    EXPECT_EQ(trash.requests[0].relativePath, ".npm/_cacache");
}

TEST_F(DevCleanersTest, commandsAndForeignPathsAreProtected) {
    fileQueries.addDirectory(npm);
    fileQueries.addDirectory("/home/anna/Documents");
    CleanTarget command = targetAt(npm);
    command.isCommand = true;
    for (const auto& target : {command, targetAt("/home/anna/Documents")}) {
        const auto result = cleaners.cleanReviewedTarget(target);
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error(),
                  (CleanError{"Kestrune", 1, "This location is protected or has changed. Rescan before continuing."}));
    }
    EXPECT_TRUE(trash.requests.empty());
}

TEST_F(DevCleanersTest, aVanishedTargetIsNoLongerPresent) {
    const auto result = cleaners.cleanReviewedTarget(targetAt(npm));
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error(),
              (CleanError{"Kestrune", 2, "This item is no longer present. Rescan to update the list."}));
}

TEST_F(DevCleanersTest, aMoveWithoutALocationIsToldAsSuch) {
    fileQueries.addDirectory(npm);
    trash.tellsLocation = false;
    const auto result = cleaners.cleanReviewedTarget(targetAt(npm));
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error(),
              (CleanError{"Kestrune", 3,
                          "Moved to Trash, but macOS did not return its location. Open Trash to inspect it."}));
}

TEST_F(DevCleanersTest, theTrashsOwnRefusalsGetTheSameSentences) {
    fileQueries.addDirectory(npm);
    for (const auto& [failure, code] :
         {std::pair{TrashFailure::protectedOrChanged, 1}, std::pair{TrashFailure::missing, 2},
          std::pair{TrashFailure::locationUnknown, 3}}) {
        trash.failures[npm] = {failure, {}};
        const auto result = cleaners.cleanReviewedTarget(targetAt(npm));
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().domain, "Kestrune");
        EXPECT_EQ(result.error().code, code);
    }
}

TEST_F(DevCleanersTest, aSystemErrorIsPassedThroughUnchanged) {
    fileQueries.addDirectory(npm);
    trash.failures[npm] = {TrashFailure::system, "No space left on device"};
    const auto result = cleaners.cleanReviewedTarget(targetAt(npm));
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error(), (CleanError{"System", 0, "No space left on device"}));
}

TEST_F(DevCleanersTest, anItemThatTookThePlaceOfTheConfirmedOneIsRefused) {
    fileQueries.addDirectory(npm);
    const auto confirmed = cleaners.identity(targetAt(npm));
    ASSERT_TRUE(confirmed.has_value());
    trash.replaceItem(npm);
    const auto result = cleaners.cleanReviewedTarget(targetAt(npm), confirmed);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, 1);
    EXPECT_TRUE(trash.moved.empty());
}

TEST_F(DevCleanersTest, theIdentityOfAForeignPathIsNeverAskedFor) {
    EXPECT_EQ(cleaners.identity(targetAt("/home/anna/Documents")), std::nullopt);
    EXPECT_EQ(trash.identitiesTaken, 0);
}

TEST_F(DevCleanersTest, nothingIsEverDeletedPermanently) {
    fileQueries.addDirectory(npm);
    EXPECT_FALSE(cleaners.cleanTarget(targetAt(npm), true));
    EXPECT_TRUE(trash.requests.empty());
    EXPECT_TRUE(cleaners.cleanTarget(targetAt(npm), false));
    EXPECT_FALSE(cleaners.cleanTarget(targetAt(npm), false));
}

TEST_F(DevCleanersTest, pruningSimulatorsRunsTheToolAndIgnoresItsAnswer) {
    cleaners.pruneUnavailableSimulators();
    ASSERT_EQ(runner.calls.size(), 1U);
    EXPECT_EQ(runner.calls[0].executable, "/usr/bin/xcrun");
    EXPECT_EQ(runner.calls[0].arguments, (std::vector<std::string>{"simctl", "delete", "unavailable"}));
}

}  // namespace kestrune
