#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"
#include "workspace/ActivityLog.h"

namespace kestrune {

namespace {

constexpr const char* gone =
    "This item is no longer at its recorded Trash location. It may have been restored or emptied.";
constexpr const char* wait = "Wait until the current scan or action has finished, then try again.";

class WorkspaceStorePutBack : public testing::Test {
protected:
    WorkspaceStorePutBack() { fixture.trash.plans[location] = plan; }

    void putBack() {
        fixture.store().putBack(entry);
        fixture.settle();
    }

    [[nodiscard]] std::string text() { return fixture.store().message.get().value_or("(none)"); }

    /// What is said when there is nothing to plan.
    std::string refusal(const PutBackError& error) {
        fixture.trash.planFailure = error;
        putBack();
        return text();
    }

    StoreFixture fixture;
    const std::string place = fixture.home + "/.npm/_cacache";
    const std::string location = "/trash/_cacache";
    const PutBackPlan plan{location, place, {1, 2, 3, 4}};
    const ActivityEntry entry{
        makeActivityId(), WallTime{Seconds{1}}, "Moved NPM Global Cache to Trash", "20.5 MB", location, false};
};

}  // namespace

TEST_F(WorkspaceStorePutBack, theQuestionTellsWhatGoesWhere) {
    putBack();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    const Alert& alert = fixture.alerts.alerts[0];
    EXPECT_EQ(alert.style, AlertStyle::informational);
    EXPECT_EQ(alert.symbol, "arrow.uturn.backward");
    EXPECT_EQ(alert.messageText, "Put back NPM Global Cache?");
    EXPECT_EQ(alert.informativeText(),
              "• NPM Global Cache\n  /home/anna/.npm/_cacache\n\nMoves the item from the Trash to the place it came "
              "from. Nothing that is there now is replaced.");
    EXPECT_EQ(alert.buttons, (std::vector<std::string>{"Put Back", "Cancel"}));
}

TEST_F(WorkspaceStorePutBack, whatIsConfirmedGoesBackAndIsRecorded) {
    putBack();
    EXPECT_EQ(fixture.trash.putBacks, (std::vector<PutBackPlan>{plan}));
    EXPECT_EQ(text(), "Put back NPM Global Cache. Storage lists it after the next scan.");
    const auto& history = fixture.store().history.get();
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history[0].title, "Put back NPM Global Cache");
    EXPECT_EQ(history[0].detail, "It's at ~/.npm/_cacache again.");
    EXPECT_EQ(history[0].date, fixture.clock.wall);
    EXPECT_EQ(history[0].trashPath, std::nullopt);
    EXPECT_FALSE(history[0].failed);
    EXPECT_EQ(ActivityLog::load(fixture.fileStore, fixture.home), history);
}

TEST_F(WorkspaceStorePutBack, nothingMovesOnTheMainThread) {
    fixture.store().putBack(entry);
    EXPECT_TRUE(fixture.trash.putBacks.empty());
    EXPECT_EQ(fixture.actions().waiting(), 1U);
}

TEST_F(WorkspaceStorePutBack, anythingButTheFirstButtonMovesNothing) {
    fixture.alerts.answer = 1;
    putBack();
    EXPECT_TRUE(fixture.trash.putBacks.empty());
    EXPECT_TRUE(fixture.store().history.get().empty());
    EXPECT_EQ(text(), "(none)");
}

TEST_F(WorkspaceStorePutBack, aSecondTimeSaysThatTheItemIsGone) {
    putBack();
    putBack();
    EXPECT_EQ(text(), gone);
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.store().history.get().size(), 1U);
}

TEST_F(WorkspaceStorePutBack, anItemOutsideTheCatalogGoesByItsOwnName) {
    fixture.trash.plans[location].originalPath = fixture.home + "/old\nname";
    putBack();
    EXPECT_EQ(fixture.alerts.alerts.at(0).messageText, "Put back old␊name?");
    EXPECT_EQ(fixture.alerts.alerts.at(0).items.at(0).subtitle, "/home/anna/old␊name");
    EXPECT_EQ(fixture.store().history.get().at(0).detail, "It's at ~/old␊name again.");
}

TEST_F(WorkspaceStorePutBack, anEntryWithoutATrashLocationDoesNothing) {
    fixture.store().putBack({makeActivityId(), WallTime{}, "other", "detail", std::nullopt, false});
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    EXPECT_EQ(text(), "(none)");
}

TEST_F(WorkspaceStorePutBack, whatCannotBePlannedIsToldAndNeitherAskedNorRecorded) {
    EXPECT_EQ(refusal({PutBackFailure::missing, {}, {}}), gone);
    EXPECT_EQ(refusal({PutBackFailure::noRecord, {}, {}}),
              "The Trash doesn't say where this item came from. Open the Trash and move the item yourself.");
    EXPECT_EQ(refusal({PutBackFailure::inTheWay, {}, place}),
              "Something else is at ~/.npm/_cacache now. Rename or move it first, then try again.");
    EXPECT_EQ(refusal({PutBackFailure::noFolder, {}, fixture.home + "/.npm"}),
              "The folder ~/.npm is gone or leads elsewhere now. Make it again, then try again.");
    EXPECT_EQ(refusal({PutBackFailure::changed, {}, {}}),
              "This item is protected or has changed, so it wasn't put back. Open the Trash to inspect it.");
    EXPECT_EQ(refusal({PutBackFailure::otherDisk, {}, fixture.home + "/.npm"}),
              "The folder ~/.npm is on another disk now. Move the item with your file manager instead.");
    EXPECT_EQ(refusal({PutBackFailure::system, "Disk says no. Try again.", {}}), "Disk says no. Try again.");
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    EXPECT_TRUE(fixture.trash.putBacks.empty());
    EXPECT_TRUE(fixture.store().history.get().empty());
}

TEST_F(WorkspaceStorePutBack, aFailureAfterTheQuestionIsToldAndRecordedAsOne) {
    fixture.trash.putBackFailure = PutBackError{PutBackFailure::inTheWay, {}, place};
    putBack();
    EXPECT_EQ(text(), "Something else is at ~/.npm/_cacache now. Rename or move it first, then try again.");
    ASSERT_EQ(fixture.store().history.get().size(), 1U);
    const ActivityEntry& failed = fixture.store().history.get()[0];
    EXPECT_EQ(failed.title, "Couldn't put back NPM Global Cache");
    EXPECT_EQ(failed.detail, text());
    EXPECT_TRUE(failed.failed);
    EXPECT_EQ(failed.trashPath, std::nullopt);
}

TEST_F(WorkspaceStorePutBack, onlyTheVeryItemThatWasConfirmedGoesBack) {
    fixture.alerts.whileOpen = [&] { fixture.trash.plans[location].item.inode = 77; };
    putBack();
    EXPECT_EQ(fixture.trash.putBacks.at(0).item, plan.item);
    EXPECT_TRUE(fixture.store().history.get().at(0).failed);
    EXPECT_TRUE(fixture.trash.plans.contains(location));
}

TEST_F(WorkspaceStorePutBack, anEntryThatLeavesTheLogWhileTheQuestionIsOpenGoesBackAllTheSame) {
    auto shown = std::make_unique<ActivityEntry>(entry);
    fixture.alerts.whileOpen = [&] { shown.reset(); };
    fixture.store().putBack(*shown);
    fixture.settle();
    EXPECT_EQ(fixture.trash.putBacks.size(), 1U);
}

TEST_F(WorkspaceStorePutBack, duringAScanTheUserIsAskedToWait) {
    fixture.store().scan();
    ASSERT_TRUE(fixture.store().isScanning.get());
    fixture.store().putBack(entry);
    EXPECT_EQ(text(), wait);
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    fixture.settle();
    putBack();
    EXPECT_EQ(fixture.trash.putBacks.size(), 1U);
}

TEST_F(WorkspaceStorePutBack, duringACleanupTheUserIsAskedToWait) {
    fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.scan();
    fixture.store().selectRecommended();
    fixture.store().clean();
    ASSERT_TRUE(fixture.store().isCleaning.get());
    fixture.store().putBack(entry);
    EXPECT_EQ(text(), wait);
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
}

TEST_F(WorkspaceStorePutBack, whileMemoryIsClearedTheUserIsAskedToWait) {
    fixture.store().purgeMemoryWithReview();
    ASSERT_TRUE(fixture.store().isPurging.get());
    fixture.store().putBack(entry);
    EXPECT_EQ(text(), wait);
}

TEST_F(WorkspaceStorePutBack, aSecondPressWhileTheItemGoesBackAsksNothing) {
    fixture.store().putBack(entry);
    fixture.store().putBack(entry);
    EXPECT_EQ(text(), wait);
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    fixture.settle();
    EXPECT_EQ(fixture.trash.putBacks.size(), 1U);
}

TEST_F(WorkspaceStorePutBack, whileTheQuestionIsOpenNothingElseStarts) {
    fixture.alerts.answer = 1;
    fixture.alerts.whileOpen = [&] {
        EXPECT_TRUE(fixture.store().isConfirming());
        fixture.store().putBack(entry);
        fixture.store().scan();
        fixture.store().purgeMemoryWithReview();
        EXPECT_FALSE(fixture.store().isScanning.get());
        EXPECT_FALSE(fixture.store().isPurging.get());
    };
    putBack();
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(text(), "(none)");
}

TEST_F(WorkspaceStorePutBack, theMoveThatEndsWithTheStoreIsStillLogged) {
    fixture.store().putBack(entry);
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.endStore();
    const auto logged = ActivityLog::load(fixture.fileStore, fixture.home);
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_EQ(logged[0].title, "Put back NPM Global Cache");
}

}  // namespace kestrune
