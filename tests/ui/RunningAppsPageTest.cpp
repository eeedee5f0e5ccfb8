#include "ui/RunningAppsPage.h"

#include <QCheckBox>

#include "tests/ui/RunningItems.h"
#include "tests/ui/WindowFixture.h"

namespace kestrune {

namespace {

class RunningAppsPageTest : public WindowFixture {
protected:
    void list(std::vector<RunningItem> items) {
        fixture.store().running.set(std::move(items));
        fixture.store().processesListed.set(true);
        QApplication::processEvents();
    }
};

}  // namespace

TEST_F(RunningAppsPageTest, beforeTheFirstListItAsksToRefresh) {
    open(WorkspacePage::apps);
    EXPECT_TRUE(shows(QStringLiteral("Refresh to inspect your running applications.")));
    EXPECT_FALSE(shows(QStringLiteral("No apps to show")));
}

TEST_F(RunningAppsPageTest, anEmptyListSaysSo) {
    open(WorkspacePage::apps);
    list({});
    EXPECT_TRUE(shows(QStringLiteral("No apps to show")));
    EXPECT_FALSE(shows(QStringLiteral("Refresh to inspect your running applications.")));
}

TEST_F(RunningAppsPageTest, aRowReadsAsOneSentence) {
    open(WorkspacePage::apps);
    list({runningProcess(5521, "server", 1394, {"*:3000", "*:9229"})});
    EXPECT_TRUE(shows(QStringLiteral("server, 1,394 MB, 1.5% CPU, PID 5521 · Open ports: *:3000, *:9229")));
}

TEST_F(RunningAppsPageTest, anIconIsLookedForWhenItsRowIsDrawn) {
    constexpr int count = 100;
    std::vector<RunningItem> items;
    for (int index = 0; index < count; ++index) {
        items.push_back(runningApp(1000 + index, "App " + std::to_string(index)));
    }
    list(items);
    EXPECT_EQ(fixture.applications.iconQuestions, 0);
    open(WorkspacePage::apps);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
    QApplication::processEvents();
    EXPECT_GT(fixture.applications.iconQuestions, 0);
    EXPECT_LT(fixture.applications.iconQuestions, count);
}

TEST_F(RunningAppsPageTest, aProtectedRowCanNeitherBeQuitNorForced) {
    fixture.store().protectedApps.set({"Notes"});
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes")});
    EXPECT_TRUE(shows(QStringLiteral("Notes, Protected, 100 MB, 1.5% CPU, PID 7")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Quit: Notes")));
    EXPECT_FALSE(isEnabled(QStringLiteral("More actions for Notes")));
    EXPECT_TRUE(isEnabled(QStringLiteral("Toggle protection for Notes")));
}

TEST_F(RunningAppsPageTest, theShieldProtectsAndTakesItBack) {
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes")});
    const auto* shield = qobject_cast<QCheckBox*>(named(QStringLiteral("Toggle protection for Notes")));
    ASSERT_NE(shield, nullptr);
    EXPECT_EQ(shield->toolTip(), QStringLiteral("Protect this app from quitting"));
    EXPECT_FALSE(shield->isChecked());
    click(QStringLiteral("Toggle protection for Notes"));
    EXPECT_EQ(fixture.store().protectedApps.get().count("Notes"), 1U);
    EXPECT_TRUE(shield->isChecked());
    EXPECT_FALSE(isEnabled(QStringLiteral("Quit: Notes")));
    click(QStringLiteral("Remove protection: Notes"));
    EXPECT_EQ(fixture.store().protectedApps.get().count("Notes"), 0U);
    EXPECT_FALSE(shield->isChecked());
    EXPECT_FALSE(shows(QStringLiteral("Protected apps")));
}

TEST_F(RunningAppsPageTest, quittingAsksTheVeryProcessOfTheRow) {
    RunningItem item = runningProcess(5521, "server");
    item.startTime = 42;
    fixture.processControl.running = {{5521, item.executable, 42}};
    open(WorkspacePage::apps);
    list({item, runningProcess(5522, "other")});
    fixture.alerts.whileOpen = [&] {
        // The list changes while the question is open.
        fixture.store().running.set({runningProcess(5522, "other"), item});
        QApplication::processEvents();
    };
    click(QStringLiteral("Quit: server"));
    fixture.settle();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "Quit server?");
    ASSERT_EQ(fixture.processControl.requests.size(), 1U);
    EXPECT_EQ(fixture.processControl.requests[0].pid, 5521);
    EXPECT_EQ(fixture.processControl.requests[0].startTime, 42U);
}

TEST_F(RunningAppsPageTest, saysSoWhereTheDesktopHidesTheAppInFront) {
    const QString note = QStringLiteral(
        "This desktop doesn’t tell Kestrune which app is in front, so Keep My Current App Open can’t find yours. "
        "Protect it here instead.");
    open(WorkspacePage::apps);
    EXPECT_FALSE(shows(note));
    fixture.applications.frontmostIsTold = false;
    open(WorkspacePage::overview);
    open(WorkspacePage::apps);
    EXPECT_TRUE(shows(note));
}

TEST_F(RunningAppsPageTest, everyPieceHasANameOfItsOwn) {
    fixture.store().protectedApps.set({"a", "b"});
    open(WorkspacePage::apps);
    list({runningProcess(5, "node"), runningProcess(6, "node"), runningApp(7, "<b>x</b>"), runningApp(8, "&File")});
    QStringList controls;
    for (const Seen& piece : seen()) {
        if (piece.focusable) {
            EXPECT_FALSE(piece.name.isEmpty());
            controls.append(piece.name);
        }
    }
    EXPECT_EQ(controls.removeDuplicates(), 0);
    EXPECT_TRUE(controls.contains(QStringLiteral("Quit: &File")));
}

}  // namespace kestrune
