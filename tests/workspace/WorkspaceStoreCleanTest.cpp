#include <gtest/gtest.h>

#include <array>

#include "tests/fakes/StoreFixture.h"
#include "workspace/ActivityLog.h"

namespace kestrune {

namespace {

constexpr std::array<const char*, 5> fiveTitles{"NPM Global Cache", "Bun Install Cache", "Cargo Registry Cache",
                                                "Yarn Global Cache", "PNPM Store"};

class WorkspaceStoreClean : public testing::Test {
protected:
    /// Lays the first count caches down, scans and selects them.
    void select(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            fixture.addCache(fiveTitles.at(i), 9'000'000);
        }
        fixture.scan();
        fixture.store().selectRecommended();
        ASSERT_EQ(fixture.store().selected().size(), count);
    }

    void cleanToItsEnd() {
        fixture.store().clean();
        fixture.settle();
    }

    [[nodiscard]] std::string text() { return fixture.store().message.get().value_or("(none)"); }

    StoreFixture fixture;
};

}  // namespace

TEST_F(WorkspaceStoreClean, oneItemIsAskedForInTheSingular) {
    select(1);
    cleanToItsEnd();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "Move 1 item to Trash?");
}

TEST_F(WorkspaceStoreClean, threeItemsAreAskedForInThePlural) {
    select(3);
    cleanToItsEnd();
    EXPECT_EQ(fixture.alerts.alerts.at(0).messageText, "Move 3 items to Trash?");
}

TEST_F(WorkspaceStoreClean, theQuestionShowsEveryItemAndWhatFollows) {
    select(2);
    cleanToItsEnd();
    const Alert& alert = fixture.alerts.alerts.at(0);
    EXPECT_EQ(alert.style, AlertStyle::warning);
    EXPECT_EQ(alert.symbol, "trash");
    EXPECT_EQ(alert.buttons, (std::vector<std::string>{"Move to Trash", "Cancel"}));
    EXPECT_EQ(alert.informativeText(),
              "• NPM Global Cache — 9 MB\n  Downloaded packages — fetched again on the next install\n"
              "• Bun Install Cache — 9 MB\n  Downloaded Bun packages — fetched again when needed\n\n"
              "Close the tools using these files first. Builds may need to rebuild caches; models may require another "
              "download. Space is recovered only after Trash is emptied. You can restore eligible items from Finder's "
              "Trash.");
}

TEST_F(WorkspaceStoreClean, anythingButTheFirstButtonMovesNothing) {
    select(2);
    fixture.alerts.answer = 1;
    cleanToItsEnd();
    EXPECT_FALSE(fixture.store().isCleaning.get());
    EXPECT_TRUE(fixture.trash.requests.empty());
    EXPECT_TRUE(fixture.store().history.get().empty());
    EXPECT_EQ(fixture.store().selected().size(), 2U);
}

TEST_F(WorkspaceStoreClean, withoutASelectionNothingIsAsked) {
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.scan();
    cleanToItsEnd();
    EXPECT_TRUE(fixture.alerts.alerts.empty());
}

TEST_F(WorkspaceStoreClean, aStoppedScanMustBeRepeatedFirst) {
    select(1);
    fixture.store().scan();
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.store().cancelCleanup();
    fixture.mainQueue.runPosted();
    ASSERT_EQ(fixture.store().selected().size(), 1U);
    cleanToItsEnd();
    EXPECT_EQ(text(), "Finish a new scan before cleaning.");
    EXPECT_TRUE(fixture.alerts.alerts.empty());
}

TEST_F(WorkspaceStoreClean, aFinishedCleanupIsSummedUpRecordedAndNotified) {
    select(2);
    fixture.volumes.volumes["/"] = {500'000'000'000, 250'000'000'000};
    cleanToItsEnd();
    EXPECT_EQ(text(), "Moved 2 items to Trash. 0 failed.");
    EXPECT_TRUE(fixture.store().targets.get().empty());
    EXPECT_TRUE(fixture.store().selection.get().empty());
    EXPECT_FALSE(fixture.store().isCleaning.get());
    EXPECT_EQ(fixture.store().progress.get(), "");
    EXPECT_EQ(fixture.store().operationProgress.get(), OperationProgress{});
    EXPECT_EQ(fixture.store().disk.get().pct, 50);
    ASSERT_EQ(fixture.notificationCenter.delivered.size(), 1U);
    EXPECT_EQ(fixture.notificationCenter.delivered[0].title, "Kestrune cleanup results");
    EXPECT_EQ(fixture.notificationCenter.delivered[0].body, "Moved 2 items to Trash. 0 failed.");

    const auto& history = fixture.store().history.get();
    ASSERT_EQ(history.size(), 2U);
    EXPECT_EQ(history[0].title, "Moved Bun Install Cache to Trash");
    EXPECT_EQ(history[1].title, "Moved NPM Global Cache to Trash");
    EXPECT_EQ(history[1].detail, "9 MB estimated. Empty Trash in Finder when you're ready to reclaim space.");
    EXPECT_EQ(history[1].trashPath, "/trash/_cacache");
    EXPECT_EQ(history[1].date, fixture.clock.wall);
    EXPECT_FALSE(history[1].failed);
    EXPECT_EQ(ActivityLog::load(fixture.fileStore, fixture.home), history);
}

TEST_F(WorkspaceStoreClean, progressNamesEachItemAndItsNumber) {
    select(2);
    std::vector<std::string> lines;
    std::vector<OperationProgress> steps;
    const auto first = fixture.store().progress.observe([&] { lines.push_back(fixture.store().progress.get()); });
    const auto second =
        fixture.store().operationProgress.observe([&] { steps.push_back(fixture.store().operationProgress.get()); });
    cleanToItsEnd();
    EXPECT_EQ(lines,
              (std::vector<std::string>{"Moving 1 of 2 · NPM Global Cache", "Moving 2 of 2 · Bun Install Cache", ""}));
    EXPECT_EQ(steps, (std::vector<OperationProgress>{{0, 2, "NPM Global Cache"}, {1, 2, "Bun Install Cache"}, {}}));
}

TEST_F(WorkspaceStoreClean, aSelectionWithAFolderInsideAnotherMovesOnlyTheOuterOne) {
    select(1);
    auto targets = fixture.store().targets.get();
    CleanTarget inner = targets[0];
    inner.path += "/content-v2";
    targets.insert(targets.begin(), inner);
    fixture.store().targets.set(targets);
    fixture.store().setSelected(inner.path, true);
    cleanToItsEnd();
    EXPECT_EQ(fixture.alerts.alerts.at(0).messageText, "Move 1 item to Trash?");
    EXPECT_EQ(fixture.trash.moved, (std::vector<std::string>{fixture.pathOf("NPM Global Cache")}));
}

TEST_F(WorkspaceStoreClean, aVanishedFolderFailsAndTheOthersStillMove) {
    select(3);
    const std::string bun = fixture.pathOf("Bun Install Cache");
    fixture.removeCache("Bun Install Cache");
    cleanToItsEnd();
    EXPECT_EQ(text(), "Moved 2 items to Trash. 1 failed.");
    ASSERT_EQ(fixture.store().history.get().size(), 3U);
    const auto& failed = fixture.store().history.get()[1];
    EXPECT_EQ(failed.title, "Couldn't move Bun Install Cache");
    EXPECT_EQ(failed.detail, "This item is no longer present. Rescan to update the list.");
    EXPECT_TRUE(failed.failed);
    EXPECT_EQ(failed.trashPath, std::nullopt);
    EXPECT_EQ(
        fixture.store().failures.get(),
        (std::map<std::string, std::string>{{bun, "This item is no longer present. Rescan to update the list."}}));
    ASSERT_EQ(fixture.store().targets.get().size(), 1U);
    EXPECT_EQ(fixture.store().selection.get(), (std::set<std::string>{bun}));
}

TEST_F(WorkspaceStoreClean, cancellingDuringTheThirdOfFiveItemsMovesExactlyThree) {
    select(5);
    fixture.trash.whileMoving = [&](const TrashRequest&) {
        if (fixture.trash.requests.size() == 3) {
            fixture.store().cancelCleanup();
        }
    };
    cleanToItsEnd();
    EXPECT_EQ(fixture.trash.moved.size(), 3U);
    EXPECT_EQ(text(), "Moved 3 items to Trash. 0 failed. Cleanup stopped; remaining items were kept.");
    EXPECT_EQ(fixture.store().targets.get().size(), 2U);
    EXPECT_EQ(fixture.store().selected().size(), 2U);
}

TEST_F(WorkspaceStoreClean, cancellingBeforeAWaitingItemBeginsKeepsIt) {
    select(2);
    fixture.store().clean();
    fixture.store().cancelCleanup();
    fixture.settle();
    EXPECT_TRUE(fixture.trash.requests.empty());
    EXPECT_EQ(text(), "Moved 0 items to Trash. 0 failed. Cleanup stopped; remaining items were kept.");
}

TEST_F(WorkspaceStoreClean, cancellingDuringTheLastItemIsNoStop) {
    select(2);
    fixture.trash.whileMoving = [&](const TrashRequest&) {
        if (fixture.trash.requests.size() == 2) {
            fixture.store().cancelCleanup();
        }
    };
    cleanToItsEnd();
    EXPECT_EQ(text(), "Moved 2 items to Trash. 0 failed.");
}

TEST_F(WorkspaceStoreClean, eachEntryIsDurableBeforeTheNextItemMoves) {
    select(3);
    std::vector<std::size_t> logged;
    fixture.trash.whileMoving = [&](const TrashRequest&) {
        logged.push_back(ActivityLog::load(fixture.fileStore, fixture.home).size());
    };
    cleanToItsEnd();
    EXPECT_EQ(logged, (std::vector<std::size_t>{0, 1, 2}));
}

TEST_F(WorkspaceStoreClean, aLogThatCannotBeSavedStopsNoMoveAndIsTold) {
    select(2);
    fixture.fileStore.failsReplacing = true;
    cleanToItsEnd();
    EXPECT_EQ(fixture.trash.moved.size(), 2U);
    EXPECT_EQ(text(), "Activity is visible for this session, but couldn't be saved.");
    EXPECT_EQ(fixture.notificationCenter.delivered.at(0).body, "Moved 2 items to Trash. 0 failed.");
}

TEST_F(WorkspaceStoreClean, theMoveThatEndsWithTheStoreIsStillLogged) {
    select(3);
    fixture.store().clean();
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.endStore();
    EXPECT_EQ(fixture.trash.moved.size(), 1U);
    const auto logged = ActivityLog::load(fixture.fileStore, fixture.home);
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_EQ(logged[0].title, "Moved NPM Global Cache to Trash");
    EXPECT_EQ(logged[0].trashPath, "/trash/_cacache");
}

TEST_F(WorkspaceStoreClean, onlyTheVeryItemThatWasConfirmedMoves) {
    select(2);
    fixture.alerts.whileOpen = [&] { fixture.trash.replaceItem(fixture.pathOf("NPM Global Cache")); };
    cleanToItsEnd();
    EXPECT_EQ(fixture.trash.moved, (std::vector<std::string>{fixture.pathOf("Bun Install Cache")}));
    EXPECT_EQ(fixture.store().failures.get().at(fixture.pathOf("NPM Global Cache")),
              "This location is protected or has changed. Rescan before continuing.");
}

TEST_F(WorkspaceStoreClean, whatAppearsWhereNothingLayBeforeTheQuestionDoesNotMove) {
    select(1);
    const std::string npm = fixture.pathOf("NPM Global Cache");
    fixture.trash.missing.insert(npm);
    fixture.alerts.whileOpen = [&] { fixture.trash.missing.clear(); };
    cleanToItsEnd();
    EXPECT_TRUE(fixture.trash.moved.empty());
    EXPECT_EQ(text(), "Moved 0 items to Trash. 1 failed.");
}

TEST_F(WorkspaceStoreClean, withXcodeRunningItsCachesAreRefusedBeforeAnythingMoves) {
    fixture.addCache("Xcode DerivedData", 9'000'000);
    fixture.scan();
    fixture.store().selectRecommended();
    fixture.programs.running = {"Finder", "Xcode", "Simulator"};
    cleanToItsEnd();
    EXPECT_EQ(text(), "Close these apps before cleaning their files: Simulator, Xcode");
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "Close the tools using these caches first");
    EXPECT_EQ(fixture.alerts.alerts[0].informativeText(), text());
    EXPECT_EQ(fixture.alerts.alerts[0].symbol, "exclamationmark.triangle");
    EXPECT_EQ(fixture.alerts.alerts[0].buttons, (std::vector<std::string>{"OK"}));
    EXPECT_TRUE(fixture.trash.requests.empty());
    EXPECT_FALSE(fixture.store().isCleaning.get());
}

TEST_F(WorkspaceStoreClean, aToolStartedWhileTheQuestionWasOpenIsRefusedToo) {
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.scan();
    fixture.store().selectRecommended();
    fixture.alerts.whileOpen = [&] { fixture.programs.running = {"Android Studio"}; };
    cleanToItsEnd();
    EXPECT_EQ(text(), "Close these apps before cleaning their files: Android Studio");
    EXPECT_EQ(fixture.alerts.alerts.size(), 2U);
    EXPECT_TRUE(fixture.trash.requests.empty());
}

TEST_F(WorkspaceStoreClean, whatIsDeselectedOrExcludedWhileTheQuestionIsOpenIsKept) {
    select(3);
    const auto targets = fixture.store().targets.get();
    fixture.alerts.whileOpen = [&] {
        fixture.store().setSelected(targets[0].id(), false);
        fixture.store().toggleExclusion(targets[1]);
    };
    cleanToItsEnd();
    EXPECT_EQ(fixture.trash.moved, (std::vector<std::string>{targets[2].path}));
    EXPECT_EQ(text(), "Moved 1 items to Trash. 0 failed.");
}

TEST_F(WorkspaceStoreClean, whatIsSelectedWhileTheQuestionIsOpenDoesNotMove) {
    select(2);
    const std::string bun = fixture.pathOf("Bun Install Cache");
    fixture.store().setSelected(bun, false);
    fixture.alerts.whileOpen = [&] { fixture.store().setSelected(bun, true); };
    cleanToItsEnd();
    EXPECT_EQ(fixture.trash.moved, (std::vector<std::string>{fixture.pathOf("NPM Global Cache")}));
}

TEST_F(WorkspaceStoreClean, whenNothingIsLeftAfterTheQuestionNothingHappens) {
    select(1);
    fixture.alerts.whileOpen = [&] { fixture.store().clearSelection(); };
    cleanToItsEnd();
    EXPECT_FALSE(fixture.store().isCleaning.get());
    EXPECT_TRUE(fixture.trash.requests.empty());
    EXPECT_TRUE(fixture.notificationCenter.delivered.empty());
}

TEST_F(WorkspaceStoreClean, whileTheQuestionIsOpenNeitherScanNorCleanNorQuickCleanStarts) {
    select(1);
    fixture.alerts.answer = 1;
    fixture.alerts.whileOpen = [&] {
        EXPECT_TRUE(fixture.store().isConfirming());
        fixture.store().scan();
        fixture.store().clean();
        fixture.store().quickClean(false);
        EXPECT_FALSE(fixture.store().isScanning.get());
        EXPECT_EQ(fixture.actions().waiting(), 0U);
    };
    cleanToItsEnd();
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_FALSE(fixture.store().isConfirming());
}

TEST_F(WorkspaceStoreClean, whileACleanupRunsNeitherScanNorCleanStarts) {
    select(2);
    fixture.store().clean();
    ASSERT_TRUE(fixture.store().isCleaning.get());
    fixture.store().scan();
    fixture.store().clean();
    fixture.store().quickClean(true);
    EXPECT_FALSE(fixture.store().isScanning.get());
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.actions().waiting(), 1U);
}

TEST_F(WorkspaceStoreClean, aSecondCleanupForgetsTheFailuresOfTheFirst) {
    select(1);
    const std::string npm = fixture.pathOf("NPM Global Cache");
    fixture.trash.failures[npm] = {TrashFailure::system, "No space left on device"};
    cleanToItsEnd();
    EXPECT_EQ(fixture.store().failures.get().at(npm), "No space left on device");
    EXPECT_EQ(fixture.store().history.get().at(0).detail, "No space left on device");
    fixture.trash.failures.clear();
    cleanToItsEnd();
    EXPECT_TRUE(fixture.store().failures.get().empty());
    EXPECT_EQ(text(), "Moved 1 items to Trash. 0 failed.");
}

}  // namespace kestrune
