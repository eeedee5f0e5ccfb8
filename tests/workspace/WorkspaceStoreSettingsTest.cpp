#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

using Addresses = std::vector<std::string>;

class WorkspaceStoreSettings : public testing::Test {
protected:
    [[nodiscard]] std::string message() { return fixture.store().message.get().value_or(""); }

    /// A store whose pages are on the web.
    [[nodiscard]] std::unique_ptr<WorkspaceStore> storeWithWebPages() {
        WorkspaceStoreParts parts = fixture.partsOnThreads();
        parts.helpPages = {"https://example.org/help", "https://example.org/updates", "https://example.org/news"};
        return std::make_unique<WorkspaceStore>(std::move(parts));
    }

    StoreFixture fixture;
};

}  // namespace

TEST_F(WorkspaceStoreSettings, startAtLoginIsReadFromTheSystemEachTime) {
    EXPECT_FALSE(fixture.store().launchesAtLogin.get());
    fixture.loginItem.registered = true;
    EXPECT_FALSE(fixture.store().launchesAtLogin.get());
    fixture.store().refreshSettings();
    EXPECT_TRUE(fixture.store().launchesAtLogin.get());
    fixture.loginItem.registered = false;
    fixture.store().refreshSettings();
    EXPECT_FALSE(fixture.store().launchesAtLogin.get());
}

TEST_F(WorkspaceStoreSettings, startAtLoginTurnsOnAndOff) {
    fixture.store().toggleLaunchAtLogin();
    EXPECT_TRUE(fixture.loginItem.registered);
    EXPECT_TRUE(fixture.store().launchesAtLogin.get());
    fixture.store().toggleLaunchAtLogin();
    EXPECT_FALSE(fixture.loginItem.registered);
    EXPECT_FALSE(fixture.store().launchesAtLogin.get());
}

TEST_F(WorkspaceStoreSettings, startAtLoginThatCannotBeChangedStaysAsItIs) {
    fixture.loginItem.refuses = true;
    fixture.loginItem.agentFails = true;
    fixture.store().toggleLaunchAtLogin();
    EXPECT_FALSE(fixture.store().launchesAtLogin.get());
    EXPECT_GT(fixture.loginItem.changes, 0);
}

TEST_F(WorkspaceStoreSettings, reducedMotionIsReadAtTheStart) {
    fixture.preferences.values["reduceFX"] = true;
    EXPECT_TRUE(fixture.store().reducedMotion.get());
}

TEST_F(WorkspaceStoreSettings, reducedMotionIsOffUntilItIsAskedFor) {
    EXPECT_FALSE(fixture.store().reducedMotion.get());
}

TEST_F(WorkspaceStoreSettings, reducedMotionIsStored) {
    fixture.store().setReducedMotion(true);
    EXPECT_TRUE(fixture.store().reducedMotion.get());
    EXPECT_EQ(fixture.preferences.boolean("reduceFX"), true);
    fixture.store().setReducedMotion(false);
    EXPECT_FALSE(fixture.store().reducedMotion.get());
    EXPECT_EQ(fixture.preferences.boolean("reduceFX"), false);
    EXPECT_EQ(message(), "");
}

TEST_F(WorkspaceStoreSettings, reducedMotionThatCannotBeSavedHoldsForTheSessionAndSaysSo) {
    fixture.preferences.failsSaving = true;
    fixture.store().setReducedMotion(true);
    EXPECT_TRUE(fixture.store().reducedMotion.get());
    EXPECT_EQ(message(), "This setting works for this session, but couldn't be saved.");
}

TEST_F(WorkspaceStoreSettings, notificationsAreAllowedWhenTheSystemSaysSo) {
    fixture.store().refreshSettings();
    EXPECT_TRUE(fixture.store().notificationsAllowed.get());
    fixture.notificationCenter.authorization = NotificationAuthorization::denied;
    fixture.store().refreshSettings();
    EXPECT_FALSE(fixture.store().notificationsAllowed.get());
}

TEST_F(WorkspaceStoreSettings, answerAboutNotificationsMayComeLater) {
    fixture.notificationCenter.holdAnswers = true;
    fixture.store().refreshSettings();
    EXPECT_FALSE(fixture.store().notificationsAllowed.get());
    fixture.notificationCenter.answerHeld();
    EXPECT_TRUE(fixture.store().notificationsAllowed.get());
}

TEST_F(WorkspaceStoreSettings, answerAboutNotificationsAfterTheEndOfTheStoreReachesNobody) {
    fixture.notificationCenter.holdAnswers = true;
    int told = 0;
    fixture.store().refreshSettings();
    const Subscription subscription = fixture.store().notificationsAllowed.observe([&told] { ++told; });
    fixture.endStore();
    fixture.notificationCenter.answerHeld();
    EXPECT_EQ(told, 0);
}

TEST_F(WorkspaceStoreSettings, enablingNotificationsAsksTheSystemAndTakesItsAnswer) {
    fixture.notificationCenter.authorization = NotificationAuthorization::denied;
    fixture.store().enableNotifications();
    EXPECT_EQ(fixture.notificationCenter.requests, 1);
    EXPECT_FALSE(fixture.store().notificationsAllowed.get());
    fixture.notificationCenter.authorization = NotificationAuthorization::authorized;
    fixture.store().enableNotifications();
    EXPECT_TRUE(fixture.store().notificationsAllowed.get());
}

TEST_F(WorkspaceStoreSettings, eachPageOpensItsOwnAddress) {
    fixture.store().openHelp();
    fixture.store().openUpdateHelp();
    fixture.store().openReleaseNotes();
    EXPECT_EQ(fixture.linkOpener.opened, (Addresses{"help", "updates", "whats-new"}));
    EXPECT_EQ(message(), "");
    const auto store = storeWithWebPages();
    store->openReleaseNotes();
    EXPECT_EQ(fixture.linkOpener.opened.back(), "https://example.org/news");
}

TEST_F(WorkspaceStoreSettings, pageThatCannotBeOpenedSaysWhichAndWhatToDo) {
    fixture.linkOpener.answer = false;
    fixture.store().openHelp();
    EXPECT_EQ(message(), "The help page couldn't be opened. Choose a default web browser, then try again.");
    fixture.store().openUpdateHelp();
    EXPECT_EQ(message(), "The update help couldn't be opened. Choose a default web browser, then try again.");
    fixture.store().openReleaseNotes();
    EXPECT_EQ(message(), "The release notes couldn't be opened. Choose a default web browser, then try again.");
}

TEST_F(WorkspaceStoreSettings, pageOnTheWebThatCannotBeOpenedNamesItsAddress) {
    fixture.linkOpener.answer = false;
    const auto store = storeWithWebPages();
    store->openHelp();
    EXPECT_EQ(store->message.get(),
              "The help page couldn't be opened. Choose a default web browser, or open https://example.org/help "
              "yourself.");
}

}  // namespace kestrune
