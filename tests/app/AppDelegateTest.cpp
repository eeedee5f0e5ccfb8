#include "app/AppDelegate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/fakes/FakeStatusItem.h"
#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

class Shell {
public:
    Shell() {
        world.hostStatistics.memoryPages =
            MemoryPages{.free = 100, .active = 300, .inactive = 0, .pageSize = 1U << 20U};
    }

    AppDelegate& delegate() {
        if (!m_delegate) {
            m_delegate = std::make_unique<AppDelegate>(
                AppDelegateParts{world.store(), world.engine, world.alerts, world.mainQueue, statusItem,
                                 [this] { pagesShown.push_back(world.store().page.get()); }, [this] { ++exits; }});
        }
        return *m_delegate;
    }

    /// A cleanup of one item that has been confirmed and waits for the action queue.
    void startCleanup() {
        world.addCache(DevCleaners::devCandidates[0].title, 900'000'000);
        world.scan();
        world.store().selectRecommended();
        world.store().clean();
        world.mainQueue.runPosted();
        ASSERT_TRUE(world.store().isCleaning.get());
        world.alerts.alerts.clear();
    }

    StoreFixture world;
    FakeStatusItem statusItem;
    std::vector<WorkspacePage> pagesShown;
    int exits = 0;

private:
    std::unique_ptr<AppDelegate> m_delegate;
};

const MenuItem& dailyItem(const AppDelegate& delegate) {
    return delegate.menu().items()[15];
}

}  // namespace

TEST(AppDelegate, refreshShowsAndPublishesTheFigures) {
    Shell shell;
    shell.delegate().refresh();
    const MemorySummary memory = shell.world.engine.getMemorySummary();
    EXPECT_EQ(shell.statusItem.title(), "🧹 " + std::to_string(memory.pct) + "%");
    EXPECT_EQ(shell.world.store().memoryPercent.get(), memory.pct);
    EXPECT_GT(shell.world.store().memoryPercent.get(), 0);
    EXPECT_DOUBLE_EQ(shell.world.store().availableMemoryGB.get(), memory.freeMB / 1024);
    EXPECT_EQ(shell.world.store().disk.get(), shell.world.engine.getDiskSummary());
    EXPECT_EQ(shell.world.store().disk.get().freeGB, 100);
    EXPECT_EQ(shell.delegate().menu().items()[1].title,
              "Memory " + std::to_string(memory.pct) + "% · 100 GB disk available");
}

TEST(AppDelegate, figuresArePublishedBeforeTelemetryTakesItsSample) {
    Shell shell;
    shell.delegate().refresh();
    ASSERT_EQ(shell.world.store().telemetryHistory.get().size(), 1U);
    EXPECT_EQ(shell.world.store().telemetryHistory.get()[0].memoryPercent, shell.world.store().memoryPercent.get());
}

TEST(AppDelegate, launchRefreshesOnceAndThenEveryFiveSeconds) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_EQ(shell.statusItem.updates, 1);
    shell.world.mainQueue.advance(std::chrono::milliseconds{4999});
    EXPECT_EQ(shell.statusItem.updates, 1);
    shell.world.mainQueue.advance(std::chrono::milliseconds{1});
    EXPECT_EQ(shell.statusItem.updates, 2);
    shell.world.mainQueue.advance(std::chrono::seconds{10});
    EXPECT_EQ(shell.statusItem.updates, 4);
}

TEST(AppDelegate, launchStartsMonitoring) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_EQ(shell.world.mainQueue.timers(), 2U);
}

TEST(AppDelegate, openingTheMenuRefreshesIt) {
    Shell shell;
    shell.world.store().message.set("Moved 1 item to Trash.");
    shell.delegate().menuWillOpen();
    EXPECT_EQ(shell.delegate().menu().items()[2].title, "Moved 1 item to Trash.");
}

TEST(AppDelegate, timerListsNoProcesses) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    shell.world.mainQueue.advance(std::chrono::seconds{30});
    EXPECT_EQ(shell.world.actions().waiting(), 0U);
    EXPECT_TRUE(shell.world.store().running.get().empty());
}

TEST(AppDelegate, pageCommandsShowTheirPage) {
    Shell shell;
    for (const MenuAction action :
         {MenuAction::openOverview, MenuAction::openStorage, MenuAction::openExplorer, MenuAction::openAI,
          MenuAction::openApps, MenuAction::openAutomation, MenuAction::openActivity, MenuAction::openSettings}) {
        shell.delegate().perform(action);
    }
    EXPECT_EQ(shell.pagesShown, (std::vector<WorkspacePage>(allWorkspacePages.begin(), allWorkspacePages.end())));
}

TEST(AppDelegate, togglingRemindersFlipsTheCheckMarkAtOnce) {
    Shell shell;
    shell.delegate().perform(MenuAction::toggleDaily);
    EXPECT_EQ(dailyItem(shell.delegate()).checked, true);
    EXPECT_TRUE(shell.world.store().reminders.get());
    shell.delegate().perform(MenuAction::toggleDaily);
    EXPECT_EQ(dailyItem(shell.delegate()).checked, false);
    EXPECT_FALSE(shell.world.store().reminders.get());
}

TEST(AppDelegate, cleaningTheSameFoldersWithoutSavedOnesExplainsHowToSaveThem) {
    Shell shell;
    shell.delegate().perform(MenuAction::cleanSaved);
    EXPECT_EQ(shell.pagesShown, std::vector{WorkspacePage::storage});
    EXPECT_EQ(shell.world.store().message.get(),
              "Choose folders in Storage, then click Save for Next Time. You can review those same folders from the "
              "menu next time.");
    EXPECT_FALSE(shell.world.store().isScanning.get());
}

TEST(AppDelegate, cleaningTheSameFoldersStartsAReviewOfSavedOnes) {
    Shell shell;
    shell.world.preferences.values["kestrune_saved_selection"] =
        Preferences::Texts{shell.world.pathOf(DevCleaners::devCandidates[0].title)};
    shell.delegate().perform(MenuAction::cleanSaved);
    EXPECT_TRUE(shell.world.store().isScanning.get());
    EXPECT_TRUE(shell.pagesShown.empty());
}

TEST(AppDelegate, quickCleanStartsAScan) {
    Shell shell;
    shell.delegate().perform(MenuAction::quickClean);
    EXPECT_TRUE(shell.world.store().isScanning.get());
}

TEST(AppDelegate, commandsOfOtherVersionsDoNothing) {
    Shell shell;
    for (const MenuAction action : {MenuAction::openPorts, MenuAction::protectCurrent, MenuAction::quitOtherApps,
                                    MenuAction::clearMemory, MenuAction::checkUpdates}) {
        shell.delegate().perform(action);
    }
    EXPECT_TRUE(shell.pagesShown.empty());
    EXPECT_EQ(shell.world.actions().waiting(), 0U);
}

TEST(AppDelegate, quittingEndsTheProgram) {
    Shell shell;
    shell.delegate().perform(MenuAction::quit);
    EXPECT_EQ(shell.exits, 1);
    EXPECT_TRUE(shell.world.alerts.alerts.empty());
}

TEST(AppDelegate, quittingDuringAScanEndsTheProgramAtOnce) {
    Shell shell;
    shell.world.store().scan();
    ASSERT_TRUE(shell.world.store().isScanning.get());
    EXPECT_TRUE(shell.delegate().terminate());
    EXPECT_EQ(shell.exits, 1);
}

TEST(AppDelegate, quittingDuringACleanupShowsAnAlertAndGoesOn) {
    Shell shell;
    shell.startCleanup();
    EXPECT_FALSE(shell.delegate().terminate());
    EXPECT_EQ(shell.exits, 0);
    ASSERT_EQ(shell.world.alerts.alerts.size(), 1U);
    const Alert& alert = shell.world.alerts.alerts[0];
    EXPECT_EQ(alert.messageText, "An action is still running");
    EXPECT_EQ(alert.text,
              "Wait for the current action to finish before quitting or installing an update. You can stop cleanup "
              "after its current item.");
    EXPECT_EQ(alert.buttons.size(), 1U);
    EXPECT_TRUE(shell.world.store().isCleaning.get());
}

TEST(AppDelegate, quittingDuringAPurgeShowsAnAlertAndGoesOn) {
    Shell shell;
    shell.world.store().isPurging.set(true);
    EXPECT_FALSE(shell.delegate().terminate());
    EXPECT_EQ(shell.world.alerts.alerts.size(), 1U);
    EXPECT_EQ(shell.exits, 0);
}

TEST(AppDelegate, aRefusedQuitIsNotRemembered) {
    Shell shell;
    shell.startCleanup();
    EXPECT_FALSE(shell.delegate().terminate());
    shell.world.settle();
    ASSERT_FALSE(shell.world.store().isCleaning.get());
    EXPECT_EQ(shell.exits, 0);
    EXPECT_TRUE(shell.delegate().terminate());
}

TEST(AppDelegate, aSecondQuitWhileTheAlertIsOpenShowsNoSecondAlert) {
    Shell shell;
    shell.startCleanup();
    shell.world.alerts.whileOpen = [&] { EXPECT_FALSE(shell.delegate().terminate()); };
    EXPECT_FALSE(shell.delegate().terminate());
    EXPECT_EQ(shell.world.alerts.alerts.size(), 1U);
}

TEST(AppDelegate, aSystemsRequestEndsAnIdleProgramAtOnce) {
    Shell shell;
    shell.delegate().terminateAfterCurrentItem();
    EXPECT_EQ(shell.exits, 1);
}

TEST(AppDelegate, aSystemsRequestDuringACleanupWaitsForTheCurrentItem) {
    Shell shell;
    shell.startCleanup();
    shell.delegate().terminateAfterCurrentItem();
    shell.world.mainQueue.runPosted();
    EXPECT_EQ(shell.exits, 0);
    EXPECT_TRUE(shell.world.alerts.alerts.empty());
    shell.world.settle();
    EXPECT_EQ(shell.exits, 1);
    EXPECT_FALSE(shell.world.store().isCleaning.get());
}

TEST(AppDelegate, aSystemsRequestLeavesTheItemsThatWereNotStarted) {
    Shell shell;
    const std::string second = shell.world.addCache(DevCleaners::devCandidates[1].title, 800'000'000);
    shell.startCleanup();
    ASSERT_GE(shell.world.store().selected().size(), 2U);
    shell.delegate().terminateAfterCurrentItem();
    shell.world.settle();
    EXPECT_LE(shell.world.trash.requests.size(), 1U);
    EXPECT_EQ(shell.exits, 1);
}

TEST(AppDelegate, startingTheProgramAgainShowsItsWindow) {
    Shell shell;
    shell.world.store().page.set(WorkspacePage::activity);
    shell.delegate().applicationShouldHandleReopen();
    EXPECT_EQ(shell.pagesShown, std::vector{WorkspacePage::activity});
}

TEST(AppDelegate, closingTheWindowKeepsTheProgramInItsStatusItem) {
    Shell shell;
    shell.statusItem.shown = true;
    shell.delegate().windowWillClose();
    EXPECT_EQ(shell.exits, 0);
}

TEST(AppDelegate, closingTheWindowWithoutAStatusItemQuits) {
    Shell shell;
    shell.statusItem.shown = false;
    shell.delegate().windowWillClose();
    EXPECT_EQ(shell.exits, 1);
}

TEST(AppDelegate, closingTheWindowDuringACleanupWithoutAStatusItemShowsItAgain) {
    Shell shell;
    shell.statusItem.shown = false;
    shell.startCleanup();
    shell.delegate().windowWillClose();
    EXPECT_EQ(shell.exits, 0);
    EXPECT_EQ(shell.world.alerts.alerts.size(), 1U);
    EXPECT_EQ(shell.pagesShown.size(), 1U);
}

}  // namespace kestrune
