#include "ui/SettingsPage.h"

#include <QCheckBox>

#include "tests/ui/WindowFixture.h"
#include "ui/Metrics.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

class SettingsPageTest : public WindowFixture {
protected:
    [[nodiscard]] bool isOn(const QString& name) {
        const auto* toggle = qobject_cast<QCheckBox*>(named(name));
        return toggle != nullptr && toggle->isChecked();
    }

    /// Switches as a screen reader does.
    void switchByScreenReader(const QString& name) {
        QAccessibleInterface* toggle = QAccessible::queryAccessibleInterface(named(name));
        ASSERT_NE(toggle, nullptr);
        ASSERT_NE(toggle->actionInterface(), nullptr);
        toggle->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    }

    const QString login = QStringLiteral("Start at login");
    const QString motion = QStringLiteral("Reduce animations");
    const QString notifications = QStringLiteral("Enable macOS notifications");
    const QString check = QStringLiteral("Check for updates…");
    const QString purge = QStringLiteral("Clear Cached Memory (Advanced)…");
};

}  // namespace

TEST_F(SettingsPageTest, panelsSayWhatTheyAreAbout) {
    open(WorkspacePage::settings);
    for (const char* text :
         {"Updates", "Kestrune " KESTRUNE_VERSION, "Automatic checks run daily.", "Preferences",
          "Update indicators stay visible in the menu even if notifications are disabled.", "Advanced memory action",
          "macOS normally manages memory itself. Clearing inactive memory can require an administrator password and "
          "may temporarily slow apps as caches refill. It is never part of a scheduled scan or storage cleanup."}) {
        EXPECT_TRUE(shows(QString::fromUtf8(text))) << text;
    }
}

TEST_F(SettingsPageTest, updateStatusFollowsTheStore) {
    open(WorkspacePage::settings);
    fixture.store().updateStatus.set("Version 2.2.0 is available");
    EXPECT_TRUE(shows(QStringLiteral("Version 2.2.0 is available")));
    EXPECT_FALSE(shows(QStringLiteral("Automatic checks run daily.")));
}

TEST_F(SettingsPageTest, updateButtonStartsACheck) {
    int checks = 0;
    fixture.store().checkUpdates = [&checks] { ++checks; };
    open(WorkspacePage::settings);
    EXPECT_TRUE(named(check)->accessibleDescription().isEmpty());
    click(check);
    EXPECT_EQ(checks, 1);
}

TEST_F(SettingsPageTest, updateButtonOfACopyWithoutChecksIsOffAndSaysWhy) {
    open(WorkspacePage::settings);
    EXPECT_FALSE(isEnabled(check));
    EXPECT_EQ(named(check)->accessibleDescription(),
              QStringLiteral("This copy of Kestrune does not look for updates itself."));
    EXPECT_EQ(named(check)->toolTip(), named(check)->accessibleDescription());
}

TEST_F(SettingsPageTest, linksAndTheHelpRowOpenTheirPages) {
    open(WorkspacePage::settings);
    click(QStringLiteral("What's new"));
    click(QStringLiteral("Download & update help"));
    click(QStringLiteral("Kestrune help"));
    EXPECT_EQ(fixture.linkOpener.opened, (std::vector<std::string>{"whats-new", "updates", "help"}));
}

TEST_F(SettingsPageTest, pageThatCannotBeOpenedIsToldOnThePage) {
    fixture.linkOpener.answer = false;
    open(WorkspacePage::settings);
    QTest::keyClick(named(QStringLiteral("Kestrune help")), Qt::Key_Return);
    EXPECT_TRUE(
        shows(QStringLiteral("The help page couldn't be opened. Choose a default web browser, then try again.")));
}

TEST_F(SettingsPageTest, selectingThePageReadsStartAtLoginAndNotificationsAnew) {
    open(WorkspacePage::settings);
    EXPECT_FALSE(isOn(login));
    EXPECT_TRUE(isOn(notifications));
    open(WorkspacePage::overview);
    fixture.loginItem.registered = true;
    fixture.notificationCenter.authorization = NotificationAuthorization::denied;
    open(WorkspacePage::settings);
    EXPECT_TRUE(isOn(login));
    EXPECT_FALSE(isOn(notifications));
}

TEST_F(SettingsPageTest, comingBackFromTheSystemsSettingsReadsThemAnew) {
    open(WorkspacePage::settings);
    fixture.loginItem.registered = true;
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(&window(), &back);
    EXPECT_TRUE(isOn(login));
}

TEST_F(SettingsPageTest, startAtLoginSwitchesByMouseKeyboardAndScreenReader) {
    open(WorkspacePage::settings);
    click(login);
    EXPECT_TRUE(fixture.loginItem.registered);
    EXPECT_TRUE(isOn(login));
    QTest::keyClick(named(login), Qt::Key_Space);
    EXPECT_FALSE(fixture.loginItem.registered);
    EXPECT_FALSE(isOn(login));
    switchByScreenReader(login);
    EXPECT_TRUE(fixture.loginItem.registered);
    EXPECT_TRUE(isOn(login));
}

TEST_F(SettingsPageTest, startAtLoginThatCannotBeChangedGoesBack) {
    fixture.loginItem.refuses = true;
    fixture.loginItem.agentFails = true;
    open(WorkspacePage::settings);
    click(login);
    EXPECT_FALSE(isOn(login));
}

TEST_F(SettingsPageTest, reduceAnimationsIsStored) {
    open(WorkspacePage::settings);
    EXPECT_FALSE(isOn(motion));
    click(motion);
    EXPECT_TRUE(isOn(motion));
    EXPECT_EQ(fixture.preferences.boolean("reduceFX"), true);
    click(motion);
    EXPECT_FALSE(isOn(motion));
    EXPECT_EQ(fixture.preferences.boolean("reduceFX"), false);
}

TEST_F(SettingsPageTest, notificationsShowWhatTheSystemDecidedAndNotTheWish) {
    fixture.notificationCenter.authorization = NotificationAuthorization::denied;
    open(WorkspacePage::settings);
    click(notifications);
    EXPECT_EQ(fixture.notificationCenter.requests, 1);
    EXPECT_FALSE(isOn(notifications));
    fixture.notificationCenter.authorization = NotificationAuthorization::authorized;
    click(notifications);
    EXPECT_TRUE(isOn(notifications));
}

TEST_F(SettingsPageTest, notificationsThatAreOnStayOn) {
    open(WorkspacePage::settings);
    click(notifications);
    EXPECT_TRUE(isOn(notifications));
}

TEST_F(SettingsPageTest, noteAboutNotificationsIsReadWithTheirSwitch) {
    open(WorkspacePage::settings);
    EXPECT_EQ(named(notifications)->accessibleDescription(),
              QStringLiteral("Update indicators stay visible in the menu even if notifications are disabled."));
}

TEST_F(SettingsPageTest, clickAnywhereOnARowSwitchesIt) {
    open(WorkspacePage::settings);
    QWidget* toggle = named(motion);
    QTest::mouseClick(toggle, Qt::LeftButton, {}, QPoint(toggle->width() / 2, 3));
    EXPECT_TRUE(fixture.store().reducedMotion.get());
}

TEST_F(SettingsPageTest, clearingMemoryAsksAndThenWaits) {
    fixture.alerts.answer = 0;
    open(WorkspacePage::settings);
    QTest::keyClick(named(purge), Qt::Key_Space);
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_TRUE(fixture.store().isPurging.get());
    EXPECT_FALSE(shows(purge));
    EXPECT_FALSE(isEnabled(QStringLiteral("Waiting for macOS…")));
    fixture.settle();
    EXPECT_TRUE(isEnabled(purge));
    EXPECT_FALSE(shows(QStringLiteral("Waiting for macOS…")));
}

TEST_F(SettingsPageTest, focusComesBackOnceMemoryIsCleared) {
    open(WorkspacePage::settings);
    named(purge)->setFocus(Qt::TabFocusReason);
    fixture.store().isPurging.set(true);
    EXPECT_EQ(QApplication::focusWidget(), named(QStringLiteral("Kestrune help")));
    fixture.store().isPurging.set(false);
    EXPECT_EQ(QApplication::focusWidget(), named(purge));
}

TEST_F(SettingsPageTest, tabGoesThroughThePanelsInReadingOrder) {
    fixture.store().checkUpdates = [] {};
    open(WorkspacePage::settings);
    QStringList stops = tabStops();
    stops.removeAll(QString());
    const QStringList wanted{QStringLiteral("Pages"),
                             check,
                             QStringLiteral("What's new"),
                             QStringLiteral("Download & update help"),
                             login,
                             motion,
                             notifications,
                             purge,
                             QStringLiteral("Kestrune help")};
    EXPECT_EQ(stops, wanted);
}

TEST_F(SettingsPageTest, longStatusWrapsBesideItsButton) {
    fixture.store().checkUpdates = [] {};
    fixture.store().updateStatus.set("Update couldn't finish: " + std::string(400, 'x') + ". Retry or download.");
    open(WorkspacePage::settings);
    window().resize(window().minimumSize());
    QApplication::processEvents();
    const QWidget* status = named(shown(fixture.store().updateStatus.get()));
    ASSERT_NE(status, nullptr);
    EXPECT_GT(status->height(), 3 * Metrics::lineHeight(FontRole::body));
    const int right = status->mapTo(&window(), QPoint(status->width(), 0)).x();
    EXPECT_LT(right, named(check)->mapTo(&window(), QPoint(0, 0)).x());
}

}  // namespace kestrune
