#include "app/AppDelegate.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/app/Shell.h"

namespace kestrune {

namespace {

/// How many listings this much time brings, each answered before the next second.
int listingsWithin(Shell& shell, std::chrono::seconds time) {
    const int before = shell.world.processes.reads;
    for (std::chrono::seconds second{0}; second < time; ++second) {
        shell.world.mainQueue.advance(std::chrono::seconds{1});
        shell.world.settle();
    }
    return shell.world.processes.reads - before;
}

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

TEST(AppDelegate, launchTurnsStartAtLoginOnThenStartsTheUpdaterThenMonitoring) {
    Shell shell;
    int loginChanges = -1;
    std::size_t timers = 1;
    shell.updater.whenStarted = [&] {
        loginChanges = shell.world.loginItem.changes;
        timers = shell.world.mainQueue.timers();
        EXPECT_EQ(shell.statusItem.updates, 0);
    };
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_EQ(loginChanges, 1);
    EXPECT_EQ(timers, 0U);
    EXPECT_TRUE(shell.world.loginItem.registered);
    EXPECT_EQ(shell.updater.delegate, &shell.delegate());
}

TEST(AppDelegate, theFirstLaunchTellsThatTheProgramStartsAtLogin) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_EQ(shell.world.notificationCenter.delivered,
              (std::vector<FakeNotificationCenter::Delivered>{{"Kestrune", "Start at Login: ON"}}));
}

TEST(AppDelegate, aLaterLaunchLeavesStartAtLoginAsTheUserWantsIt) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    shell.world.engine.toggleLaunchAtLogin();
    ASSERT_FALSE(shell.world.loginItem.registered);
    shell.endDelegate();
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_FALSE(shell.world.loginItem.registered);
}

TEST(AppDelegate, launchStartsMonitoring) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_EQ(shell.world.mainQueue.timers(), 2U) << "the shell's and the store's";
}

TEST(AppDelegate, openingTheMenuRefreshesIt) {
    Shell shell;
    shell.world.store().message.set("Moved 1 item to Trash.");
    shell.delegate().menuWillOpen();
    EXPECT_EQ(shell.delegate().menu().items()[2].title, "Moved 1 item to Trash.");
}

TEST(AppDelegate, withTheWindowClosedTheTimerNeverListsProcesses) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    shell.world.settle();
    for (const WorkspacePage page : allWorkspacePages) {
        shell.world.store().page.set(page);
        EXPECT_EQ(listingsWithin(shell, std::chrono::seconds{30}), 0) << rawValue(page);
    }
    shell.portsAreOpen = true;
    EXPECT_EQ(listingsWithin(shell, std::chrono::seconds{30}), 0);
}

TEST(AppDelegate, theTimerListsProcessesWhileTheWindowShowsThem) {
    Shell shell;
    shell.windowIsVisible = true;
    shell.delegate().applicationDidFinishLaunching();
    shell.world.settle();
    for (const WorkspacePage page : allWorkspacePages) {
        shell.world.store().page.set(page);
        const bool lists = page == WorkspacePage::ai || page == WorkspacePage::apps;
        EXPECT_EQ(listingsWithin(shell, std::chrono::seconds{30}), lists ? 6 : 0) << rawValue(page);
    }
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

TEST(AppDelegate, findingAPortShowsThePortWindow) {
    Shell shell;
    shell.delegate().perform(MenuAction::openPorts);
    EXPECT_EQ(shell.portsShown, 1);
    EXPECT_TRUE(shell.pagesShown.empty());
}

TEST(AppDelegate, keepingTheCurrentAppProtectsTheOneTheUserWorkedIn) {
    Shell shell;
    static_cast<void>(shell.delegate());
    shell.world.applications.start(20, "Mousepad");
    shell.world.applications.activate(20);
    shell.delegate().perform(MenuAction::protectCurrent);
    EXPECT_EQ(shell.world.store().protectedApps.get(), std::set<std::string>{"Mousepad"});
    EXPECT_TRUE(shell.pagesShown.empty());
}

TEST(AppDelegate, keepingTheCurrentAppLeadsToTheListWhereTheDesktopHidesWhichOneItIs) {
    Shell shell;
    static_cast<void>(shell.delegate());
    shell.world.applications.frontmostIsTold = false;
    shell.delegate().perform(MenuAction::protectCurrent);
    EXPECT_EQ(shell.pagesShown, std::vector{WorkspacePage::apps});
    EXPECT_TRUE(shell.world.store().protectedApps.get().empty());
}

TEST(AppDelegate, quittingOtherAppsAsksFirst) {
    Shell shell;
    static_cast<void>(shell.delegate());
    shell.world.applications.start(20, "Mousepad");
    shell.world.applications.start(21, "Galculator");
    shell.delegate().perform(MenuAction::quitOtherApps);
    ASSERT_EQ(shell.world.alerts.alerts.size(), 1U);
    EXPECT_EQ(shell.world.alerts.alerts[0].messageText, "Quit 2 other apps?");
}

TEST(AppDelegate, clearingMemoryAsksFirst) {
    Shell shell;
    shell.delegate().perform(MenuAction::clearMemory);
    ASSERT_EQ(shell.world.alerts.alerts.size(), 1U);
    EXPECT_EQ(shell.world.alerts.alerts[0].messageText, "Clear cached memory?");
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

TEST(AppDelegate, theSessionMayEndAtOnceWhileNothingRuns) {
    Shell shell;
    EXPECT_TRUE(shell.delegate().sessionWillEnd(true));
    EXPECT_TRUE(shell.world.alerts.alerts.empty());
    // The session's own request to quit follows.
    EXPECT_EQ(shell.exits, 0);
}

TEST(AppDelegate, theSessionIsHeldBackDuringACleanupWhereTheUserCanBeAsked) {
    Shell shell;
    shell.startCleanup();
    EXPECT_FALSE(shell.delegate().sessionWillEnd(true));
    ASSERT_EQ(shell.world.alerts.alerts.size(), 1U);
    EXPECT_EQ(shell.world.alerts.alerts[0].messageText, "An action is still running");
    EXPECT_TRUE(shell.world.store().isCleaning.get());
}

TEST(AppDelegate, aSessionThatEndsWithoutAskingWaitsForTheCurrentItemOnly) {
    Shell shell;
    shell.startCleanup();
    EXPECT_TRUE(shell.delegate().sessionWillEnd(false));
    EXPECT_TRUE(shell.world.alerts.alerts.empty());
    EXPECT_EQ(shell.exits, 0);
    shell.world.settle();
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

TEST(AppDelegate, theProgramIsInTheDockFromItsFirstWindowUntilTheWorkspaceWindowCloses) {
    Shell shell;
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_EQ(shell.dockTile.policy, DockTile::ActivationPolicy::accessory);
    shell.delegate().perform(MenuAction::openStorage);
    EXPECT_EQ(shell.dockTile.policy, DockTile::ActivationPolicy::regular);
    shell.delegate().windowWillClose();
    EXPECT_EQ(shell.dockTile.policy, DockTile::ActivationPolicy::accessory);
    shell.delegate().applicationShouldHandleReopen();
    EXPECT_EQ(shell.dockTile.policy, DockTile::ActivationPolicy::regular);
}

TEST(AppDelegate, closingThePortWindowLeavesTheProgramInTheDock) {
    Shell shell;
    shell.delegate().perform(MenuAction::openPorts);
    EXPECT_EQ(shell.dockTile.policy, DockTile::ActivationPolicy::regular);
    shell.delegate().endWithoutWindows();
    EXPECT_EQ(shell.dockTile.policy, DockTile::ActivationPolicy::regular);
}

TEST(AppDelegate, closingOneWindowKeepsTheProgramWhileTheOtherIsOpen) {
    Shell shell;
    shell.statusItem.shown = false;
    shell.portsAreOpen = true;
    shell.delegate().windowWillClose();
    EXPECT_EQ(shell.exits, 0);
    shell.portsAreOpen = false;
    shell.windowIsVisible = true;
    shell.delegate().windowWillClose();
    EXPECT_EQ(shell.exits, 0);
    shell.windowIsVisible = false;
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
