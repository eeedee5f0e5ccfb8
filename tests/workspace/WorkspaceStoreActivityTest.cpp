#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"
#include "workspace/ActivityLog.h"

namespace kestrune {

namespace {

ActivityEntry entryTitled(const std::string& title, std::optional<std::string> trashPath = std::nullopt) {
    return {makeActivityId(), WallTime{Seconds{1'700'000'000}}, title, "detail", std::move(trashPath), false};
}

}  // namespace

TEST(WorkspaceStoreActivity, theNewestEntryComesFirst) {
    StoreFixture fixture;
    fixture.store().record(entryTitled("first"));
    fixture.store().record(entryTitled("second"));
    ASSERT_EQ(fixture.store().history.get().size(), 2U);
    EXPECT_EQ(fixture.store().history.get()[0].title, "second");
    fixture.settle();
    EXPECT_EQ(ActivityLog::load(fixture.fileStore, fixture.home), fixture.store().history.get());
}

TEST(WorkspaceStoreActivity, the101stRecordPushesOutTheOldestInMemoryAndInTheFile) {
    StoreFixture fixture;
    for (int i = 1; i <= 101; ++i) {
        fixture.store().record(entryTitled(std::to_string(i)));
        EXPECT_LE(fixture.store().history.get().size(), 100U);
    }
    fixture.settle();
    const auto file = ActivityLog::decode(fixture.fileStore.files.at(ActivityLog::path(fixture.home)));
    ASSERT_TRUE(file.has_value());
    ASSERT_EQ(file->size(), 100U);
    EXPECT_EQ(file->front().title, "101");
    EXPECT_EQ(file->back().title, "2");
    EXPECT_EQ(*file, fixture.store().history.get());
}

TEST(WorkspaceStoreActivity, everySaveWritesTheListOfItsOwnMoment) {
    StoreFixture fixture;
    fixture.store().record(entryTitled("first"));
    fixture.store().record(entryTitled("second"));
    ASSERT_TRUE(fixture.actions().runOne());
    EXPECT_EQ(ActivityLog::load(fixture.fileStore, fixture.home).size(), 1U);
    ASSERT_TRUE(fixture.actions().runOne());
    EXPECT_EQ(ActivityLog::load(fixture.fileStore, fixture.home).size(), 2U);
}

TEST(WorkspaceStoreActivity, aLogThatCannotBeSavedIsToldAndTheEntryStillShows) {
    StoreFixture fixture;
    fixture.fileStore.failsReplacing = true;
    fixture.store().record(entryTitled("kept"));
    fixture.settle();
    EXPECT_EQ(fixture.store().message.get(), "Activity is visible for this session, but couldn't be saved.");
    EXPECT_EQ(fixture.store().history.get().size(), 1U);
}

TEST(WorkspaceStoreActivity, aLaterRecordRetriesTheWholeSave) {
    StoreFixture fixture;
    fixture.fileStore.failsReplacing = true;
    fixture.store().record(entryTitled("first"));
    fixture.settle();
    fixture.fileStore.failsReplacing = false;
    fixture.store().record(entryTitled("second"));
    fixture.settle();
    EXPECT_EQ(ActivityLog::load(fixture.fileStore, fixture.home).size(), 2U);
}

TEST(WorkspaceStoreActivity, aTrashedItemIsRevealedWhereItLies) {
    StoreFixture fixture;
    fixture.fileQueries.addDirectory("/trash/caches");
    fixture.store().showInTrash(entryTitled("moved", "/trash/caches"));
    EXPECT_EQ(fixture.fileViewer.revealed, (std::vector<std::string>{"/trash/caches"}));
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
}

TEST(WorkspaceStoreActivity, aTrashedItemThatIsGoneIsToldAsSuch) {
    StoreFixture fixture;
    fixture.store().showInTrash(entryTitled("moved", "/trash/caches"));
    EXPECT_TRUE(fixture.fileViewer.revealed.empty());
    EXPECT_EQ(fixture.store().message.get(),
              "This item is no longer at its recorded Trash location. It may have been restored or emptied.");
}

TEST(WorkspaceStoreActivity, anEntryWithoutATrashLocationShowsNothing) {
    StoreFixture fixture;
    fixture.store().showInTrash(entryTitled("other"));
    EXPECT_TRUE(fixture.fileViewer.revealed.empty());
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
}

TEST(WorkspaceStoreActivity, revealHandsThePathToTheFileManager) {
    StoreFixture fixture;
    fixture.store().reveal("/home/anna/.npm/_cacache");
    EXPECT_EQ(fixture.fileViewer.revealed, (std::vector<std::string>{"/home/anna/.npm/_cacache"}));
}

}  // namespace kestrune
