#include "app/AppDelegate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/Shell.h"

namespace kestrune {

namespace {

using Policy = DockTile::ActivationPolicy;

class AppDelegateUpdates : public ::testing::Test {
protected:
    AppDelegateUpdates() {
        m_shell.world.preferences.setBoolean("kestrune_login_default_2_1", true);
        m_shell.delegate().applicationDidFinishLaunching();
    }

    UpdaterDelegate& told() { return *m_shell.updater.delegate; }

    [[nodiscard]] WorkspaceStore& store() { return m_shell.world.store(); }

    [[nodiscard]] const std::string& status() { return store().updateStatus.get(); }

    [[nodiscard]] const std::string& lineOfTheMenu() { return m_shell.delegate().menu().items()[18].title; }

    [[nodiscard]] bool titleHasMark() const { return m_shell.statusItem.title().starts_with("🧹 ↑ "); }

    [[nodiscard]] const auto& notifications() const { return m_shell.world.notificationCenter.delivered; }

    void find(bool userInitiated) {
        told().didFindValidUpdate(item);
        told().willHandleShowingUpdate(item, userInitiated);
    }

    void advance(int milliseconds) { m_shell.world.mainQueue.advance(std::chrono::milliseconds{milliseconds}); }

    const UpdateItem item{
        .version = "2.2.0", .displayVersion = "2.2", .notes = {}, .archiveUrl = {}, .archiveSignature = {}};
    Shell m_shell;
};

}  // namespace

TEST_F(AppDelegateUpdates, aCheckByTheUserBringsTheProgramForwardAndAsksTheUpdater) {
    m_shell.delegate().perform(MenuAction::checkUpdates);
    EXPECT_EQ(m_shell.updater.checks, 1);
    EXPECT_EQ(m_shell.activations, 1);
    EXPECT_EQ(m_shell.dockTile.policy, Policy::regular);
    EXPECT_EQ(status(), "Checking for updates…");
    EXPECT_TRUE(m_shell.pagesShown.empty());
}

TEST_F(AppDelegateUpdates, theStoreCanStartTheSameCheck) {
    store().checkUpdates();
    EXPECT_EQ(m_shell.updater.checks, 1);
    EXPECT_EQ(status(), "Checking for updates…");
}

TEST_F(AppDelegateUpdates, theStoresWayToACheckDoesNotKeepTheShellAlive) {
    m_shell.endDelegate();
    store().checkUpdates();
    EXPECT_EQ(m_shell.updater.checks, 0);
}

TEST_F(AppDelegateUpdates, aCheckLeavesAKnownUpdateMarked) {
    find(true);
    m_shell.delegate().perform(MenuAction::checkUpdates);
    EXPECT_TRUE(store().updateAvailable.get());
    EXPECT_EQ(m_shell.dockTile.badge, "↑");
}

TEST_F(AppDelegateUpdates, anUpdateThatWasFoundIsShownAtOnceInTheMenuAndTheStatusItem) {
    told().didFindValidUpdate(item);
    EXPECT_TRUE(store().updateAvailable.get());
    EXPECT_EQ(status(), "Version 2.2 is available");
    EXPECT_TRUE(titleHasMark());
    EXPECT_EQ(lineOfTheMenu(), "Update Available — Install…");
    EXPECT_TRUE(m_shell.delegate().menu().tooltip().ends_with(" · Update available"));
    EXPECT_EQ(m_shell.dockTile.badge, "") << "it is not about to be shown yet";
}

TEST_F(AppDelegateUpdates, anUpdateFromTheUsersCheckComesForwardWithoutANotification) {
    find(true);
    EXPECT_EQ(m_shell.dockTile.badge, "↑");
    EXPECT_EQ(m_shell.dockTile.policy, Policy::regular);
    EXPECT_EQ(m_shell.activations, 1);
    EXPECT_TRUE(notifications().empty());
    advance(600);
    EXPECT_EQ(m_shell.updater.checks, 0);
    EXPECT_EQ(m_shell.activations, 1);
}

TEST_F(AppDelegateUpdates, anUpdateFromAScheduledCheckNotifiesAndComesForwardHalfASecondLater) {
    find(false);
    EXPECT_EQ(notifications(), (std::vector<FakeNotificationCenter::Delivered>{
                                   {"Kestrune update available",
                                    "Open Kestrune's menu and choose Update Available to install version 2.2."}}));
    EXPECT_EQ(m_shell.dockTile.badge, "↑");
    EXPECT_EQ(m_shell.dockTile.policy, Policy::regular);
    EXPECT_TRUE(titleHasMark());
    advance(499);
    EXPECT_EQ(m_shell.activations, 0);
    EXPECT_EQ(m_shell.updater.checks, 0);
    advance(1);
    EXPECT_EQ(m_shell.activations, 1);
    EXPECT_EQ(m_shell.updater.checks, 1);
    EXPECT_EQ(status(), "Version 2.2 is available");
}

TEST_F(AppDelegateUpdates, aShellThatIsGoneHalfASecondLaterAsksForNothing) {
    find(false);
    m_shell.endDelegate();
    advance(600);
    EXPECT_EQ(m_shell.updater.checks, 0);
}

TEST_F(AppDelegateUpdates, anUpdateThatTheUserAskedForMeanwhileIsNotAskedForTwice) {
    find(false);
    told().willHandleShowingUpdate(item, true);
    advance(600);
    EXPECT_EQ(m_shell.updater.checks, 0);
}

TEST_F(AppDelegateUpdates, skippingClearsTheBadgeAndTheMarkAtOnce) {
    find(true);
    told().userDidMake(UpdateChoice::skip, item);
    EXPECT_FALSE(store().updateAvailable.get());
    EXPECT_EQ(status(), "Skipped version 2.2. You can check again manually.");
    EXPECT_EQ(m_shell.dockTile.badge, "");
    EXPECT_FALSE(titleHasMark());
    EXPECT_EQ(lineOfTheMenu(), "Check for Updates…");
}

TEST_F(AppDelegateUpdates, remindingLaterAndInstallingLeaveTheUpdateMarked) {
    find(true);
    for (const UpdateChoice choice : {UpdateChoice::dismiss, UpdateChoice::install}) {
        told().userDidMake(choice, item);
        EXPECT_TRUE(store().updateAvailable.get());
        EXPECT_EQ(status(), "Version 2.2 is available");
        EXPECT_EQ(m_shell.dockTile.badge, "↑");
        EXPECT_TRUE(titleHasMark());
    }
}

TEST_F(AppDelegateUpdates, findingNoneClearsWhatWasKnown) {
    find(true);
    told().didNotFindUpdate();
    EXPECT_FALSE(store().updateAvailable.get());
    EXPECT_EQ(status(), "No compatible update found. Last checked just now.");
    EXPECT_EQ(m_shell.dockTile.badge, "");
    EXPECT_FALSE(titleHasMark());
}

TEST_F(AppDelegateUpdates, theAbortAfterFindingNoneSaysNothing) {
    m_shell.delegate().perform(MenuAction::checkUpdates);
    told().didAbortWithError({UpdaterError::noUpdate, "You’re up to date."});
    EXPECT_EQ(status(), "Checking for updates…");
    told().didNotFindUpdate();
    EXPECT_EQ(status(), "No compatible update found. Last checked just now.");
}

TEST_F(AppDelegateUpdates, anAbortSaysWhatHappenedAndWhereElseToGetIt) {
    find(true);
    const int updates = m_shell.statusItem.updates;
    told().didAbortWithError({UpdaterError::network, "The server didn’t answer."});
    EXPECT_EQ(status(), "Update couldn't finish: The server didn’t answer. Retry or download from downloads.example.");
    EXPECT_TRUE(store().updateAvailable.get());
    EXPECT_EQ(m_shell.dockTile.badge, "↑");
    EXPECT_EQ(m_shell.statusItem.updates, updates) << "an abort changes nothing there";
}

TEST_F(AppDelegateUpdates, whatTheUserStoppedIsNoFailure) {
    m_shell.delegate().perform(MenuAction::checkUpdates);
    told().didAbortWithError({UpdaterError::cancelled, "The check was cancelled."});
    EXPECT_EQ(status(), "Stopped. You can check again manually.");
}

TEST_F(AppDelegateUpdates, anUpdateIsNotInstalledDuringACleanup) {
    EXPECT_TRUE(told().shouldInstallUpdate());
    m_shell.startCleanup();
    EXPECT_FALSE(told().shouldInstallUpdate());
    ASSERT_EQ(m_shell.world.alerts.alerts.size(), 1U);
    EXPECT_EQ(m_shell.world.alerts.alerts[0].messageText, "An action is still running");
    m_shell.world.settle();
    EXPECT_TRUE(told().shouldInstallUpdate());
}

TEST_F(AppDelegateUpdates, closingTheWindowLeavesTheDockWhileAnUpdateWaits) {
    find(true);
    m_shell.delegate().windowWillClose();
    EXPECT_EQ(m_shell.dockTile.policy, Policy::regular);
    EXPECT_EQ(m_shell.dockTile.badge, "↑");
    told().userDidMake(UpdateChoice::skip, item);
    m_shell.delegate().windowWillClose();
    EXPECT_EQ(m_shell.dockTile.policy, Policy::accessory);
}

TEST(AppDelegateWithoutAFeed, theSettingsSayThatThisBuildLooksForNothing) {
    const std::string sentence = "This build doesn’t look for updates. Get new versions from downloads.example.";
    Shell shell;
    shell.updater.configured = false;
    shell.delegate().applicationDidFinishLaunching();
    EXPECT_EQ(shell.updater.delegate, nullptr);
    EXPECT_EQ(shell.world.store().updateStatus.get(), sentence);
    shell.world.store().page.set(WorkspacePage::storage);
    shell.delegate().perform(MenuAction::checkUpdates);
    EXPECT_EQ(shell.pagesShown, std::vector{WorkspacePage::settings});
    EXPECT_EQ(shell.world.store().updateStatus.get(), sentence);
    // The page then shows its button disabled, with the reason.
    EXPECT_FALSE(shell.world.store().checkUpdates);
    EXPECT_EQ(shell.updater.checks, 0);
}

}  // namespace kestrune
