#include "workspace/WorkspaceStore.h"

#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"
#include "workspace/ActivityLog.h"

namespace kestrune {

namespace {

ActivityEntry entryTitled(const std::string& title) {
    return {makeActivityId(), WallTime{Seconds{1'700'000'000}}, title, "detail", std::nullopt, false};
}

}  // namespace

TEST(WorkspaceStore, everyFieldBeginsWithItsInitialValue) {
    StoreFixture fixture;
    const WorkspaceStore& store = fixture.store();
    EXPECT_EQ(store.page.get(), WorkspacePage::overview);
    EXPECT_TRUE(store.targets.get().empty());
    EXPECT_EQ(store.explorerRoot.get(), std::nullopt);
    EXPECT_EQ(store.explorerResult.get(), DiskExplorerResult{});
    EXPECT_FALSE(store.isExploring.get());
    EXPECT_TRUE(store.selection.get().empty());
    EXPECT_TRUE(store.scanNotes.get().empty());
    EXPECT_FALSE(store.isScanning.get());
    EXPECT_FALSE(store.isCleaning.get());
    EXPECT_FALSE(store.isPurging.get());
    EXPECT_EQ(store.progress.get(), "");
    EXPECT_EQ(store.message.get(), std::nullopt);
    EXPECT_TRUE(store.failures.get().empty());
    EXPECT_EQ(store.lastScan.get(), std::nullopt);
    EXPECT_EQ(store.memoryPercent.get(), 0);
    EXPECT_EQ(store.cpuPercent.get(), 0);
    EXPECT_EQ(store.downloadRate.get(), std::nullopt);
    EXPECT_EQ(store.uploadRate.get(), std::nullopt);
    EXPECT_EQ(store.batteryReading.get(), std::nullopt);
    EXPECT_EQ(store.availableMemoryGB.get(), 0);
    EXPECT_TRUE(store.running.get().empty());
    EXPECT_EQ(store.pressure.get(), "Observing");
    EXPECT_FALSE(store.updateAvailable.get());
    EXPECT_EQ(store.updateStatus.get(), "Automatic checks run daily.");
    EXPECT_TRUE(store.history.get().empty());
    EXPECT_TRUE(store.excluded.get().empty());
    EXPECT_TRUE(store.protectedApps.get().empty());
    EXPECT_FALSE(store.reminders.get());
    EXPECT_EQ(store.lastReminder.get(), std::nullopt);
    EXPECT_EQ(store.checkUpdates, nullptr);
    EXPECT_FALSE(store.isConfirming());
}

TEST(WorkspaceStore, theDiskFigureIsReadAtConstruction) {
    StoreFixture fixture;
    EXPECT_EQ(fixture.store().disk.get(), fixture.engine.getDiskSummary());
    EXPECT_EQ(fixture.store().disk.get().totalGB, 500);
}

TEST(WorkspaceStore, storedSettingsAndTheLogAreRead) {
    StoreFixture fixture;
    const WallTime reminded{Seconds{1'799'999'000}};
    fixture.preferences.values["kestrune_scan_reminders"] = true;
    fixture.preferences.values["kestrune_last_scan_reminder"] = reminded;
    fixture.preferences.values["kestrune_exclusions"] = Preferences::Texts{"/b", "/a", "/b"};
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"Safari"};
    ASSERT_TRUE(ActivityLog::save(fixture.fileStore, fixture.home, {entryTitled("earlier")}));
    const WorkspaceStore& store = fixture.store();
    EXPECT_TRUE(store.reminders.get());
    EXPECT_EQ(store.lastReminder.get(), reminded);
    EXPECT_EQ(store.excluded.get(), (std::set<std::string>{"/a", "/b"}));
    EXPECT_EQ(store.protectedApps.get(), (std::set<std::string>{"Safari"}));
    ASSERT_EQ(store.history.get().size(), 1U);
    EXPECT_EQ(store.history.get()[0].title, "earlier");
}

TEST(WorkspaceStore, settingsOfAnotherTypeReadAsAbsent) {
    StoreFixture fixture;
    fixture.preferences.values["kestrune_scan_reminders"] = Preferences::Texts{"yes"};
    fixture.preferences.values["kestrune_exclusions"] = true;
    EXPECT_FALSE(fixture.store().reminders.get());
    EXPECT_TRUE(fixture.store().excluded.get().empty());
}

TEST(WorkspaceStore, anUndecodableLogLeavesHistoryEmptyAndIsNotReported) {
    StoreFixture fixture;
    fixture.fileStore.files[ActivityLog::path(fixture.home)] = "[{\"title\":\"cut";
    EXPECT_TRUE(fixture.store().history.get().empty());
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
    fixture.store().record(entryTitled("next"));
    fixture.settle();
    EXPECT_EQ(ActivityLog::load(fixture.fileStore, fixture.home).size(), 1U);
}

TEST(WorkspaceStore, jobsThatComeBackAfterTheStoreIsGoneDoNothing) {
    StoreFixture fixture;
    fixture.addCache("Gradle Caches", 9'000'000);
    bool finished = false;
    fixture.store().scan([&] { finished = true; });
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.endStore();
    fixture.mainQueue.runPosted();
    EXPECT_FALSE(finished);
}

TEST(WorkspaceStore, thePressureSourceMayOutliveTheStore) {
    StoreFixture fixture;
    fixture.store().startMonitoring();
    fixture.endStore();
    fixture.memoryPressure.send({false, true, false});
    EXPECT_EQ(fixture.mainQueue.timers(), 0U);
}

TEST(WorkspaceStore, itsEndWaitsForRealQueuesAndKeepsEveryRecord) {
    StoreFixture fixture;
    {
        WorkspaceStore store(fixture.partsOnThreads());
        for (int i = 0; i < 20; ++i) {
            store.record(entryTitled(std::to_string(i)));
        }
    }
    const auto kept = ActivityLog::load(fixture.fileStore, fixture.home);
    ASSERT_EQ(kept.size(), 20U);
    EXPECT_EQ(kept[0].title, "19");
}

TEST(WorkspaceStore, itsEndWaitsForAListingAndAStopThatRun) {
    StoreFixture fixture;
    RunningItem row;
    row.id = 300;
    row.name = "node";
    row.executable = "/usr/bin/node";
    fixture.processControl.running = {{300, "/usr/bin/node", 0}};
    {
        WorkspaceStore store(fixture.partsOnThreads());
        store.refreshProcesses();
        store.quitApp(row, false);
    }
    fixture.mainQueue.runPosted();
    EXPECT_EQ(fixture.processes.reads, 1);
    EXPECT_EQ(fixture.processControl.requests.size(), 1U);
    const auto kept = ActivityLog::load(fixture.fileStore, fixture.home);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].title, "Stop requested: node");
}

}  // namespace kestrune
