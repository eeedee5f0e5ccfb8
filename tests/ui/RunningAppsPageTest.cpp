#include "ui/RunningAppsPage.h"

#include <QCheckBox>
#include <QEnterEvent>

#include "tests/ui/RunningItems.h"
#include "tests/ui/WindowFixture.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

class RunningAppsPageTest : public WindowFixture {
protected:
    void list(std::vector<RunningItem> items) {
        fixture.store().running.set(std::move(items));
        fixture.store().processesListed.set(true);
        QApplication::processEvents();
    }

    /// The pointer rests on the rows.
    void pointerComes() {
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(named(QStringLiteral("Running apps")), &enter);
    }

    void pointerLeaves() {
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(named(QStringLiteral("Running apps")), &leave);
        QApplication::processEvents();
        QApplication::processEvents();
    }

    [[nodiscard]] int topOfRows() { return named(QStringLiteral("Running apps"))->mapTo(&window(), QPoint(0, 0)).y(); }

    void press(const QString& name, Qt::Key key = Qt::Key_Space) {
        QWidget* control = named(name);
        ASSERT_NE(control, nullptr) << name.toStdString();
        control->setFocus(Qt::TabFocusReason);
        QTest::keyClick(control, key);
        QApplication::processEvents();
    }

    [[nodiscard]] static QString focused() {
        return QApplication::focusWidget() == nullptr ? QString() : QApplication::focusWidget()->accessibleName();
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

TEST_F(RunningAppsPageTest, theFirstProtectionMovesNoRowFromUnderThePointer) {
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes"), runningApp(8, "Mail")});
    pointerComes();
    const int before = topOfRows();
    click(QStringLiteral("Toggle protection for Notes"));
    EXPECT_EQ(topOfRows(), before);
    EXPECT_FALSE(shows(QStringLiteral("Protected apps")));
    EXPECT_TRUE(shows(QStringLiteral("Notes, Protected, 100 MB, 1.5% CPU, PID 7")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Quit: Notes")));
    click(QStringLiteral("Toggle protection for Notes"));
    EXPECT_TRUE(fixture.store().protectedApps.get().empty()) << "the second click met the same app";
    click(QStringLiteral("Toggle protection for Notes"));
    pointerLeaves();
    EXPECT_TRUE(shows(QStringLiteral("Remove protection: Notes")));
    EXPECT_GT(topOfRows(), before);
}

TEST_F(RunningAppsPageTest, theLastProtectionTakenBackMovesNoRowEither) {
    fixture.store().protectedApps.set({"Notes"});
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes"), runningApp(8, "Mail")});
    pointerComes();
    const int before = topOfRows();
    click(QStringLiteral("Toggle protection for Notes"));
    EXPECT_EQ(topOfRows(), before);
    EXPECT_TRUE(shows(QStringLiteral("Protected apps")));
    EXPECT_TRUE(shows(QStringLiteral("Notes, 100 MB, 1.5% CPU, PID 7")));
    pointerLeaves();
    EXPECT_FALSE(shows(QStringLiteral("Protected apps")));
    EXPECT_LT(topOfRows(), before);
}

TEST_F(RunningAppsPageTest, removingAProtectionActsAtOnceWhereverThePointerIs) {
    fixture.store().protectedApps.set({"Mail", "Notes"});
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes")});
    pointerComes();
    press(QStringLiteral("Remove protection: Mail"));
    EXPECT_FALSE(shows(QStringLiteral("Remove protection: Mail")));
    EXPECT_TRUE(shows(QStringLiteral("Remove protection: Notes")));
}

TEST_F(RunningAppsPageTest, focusOfARemovedProtectionGoesToTheNextOneAndThenToTheList) {
    fixture.store().protectedApps.set({"Mail", "Notes", "Zed"});
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes")});
    press(QStringLiteral("Remove protection: Notes"));
    EXPECT_EQ(focused(), QStringLiteral("Remove protection: Zed"));
    press(QStringLiteral("Remove protection: Zed"));
    EXPECT_EQ(focused(), QStringLiteral("Remove protection: Mail"));
    press(QStringLiteral("Remove protection: Mail"));
    EXPECT_EQ(focused(), QStringLiteral("Toggle protection for Notes"));
    EXPECT_FALSE(shows(QStringLiteral("Protected apps")));
}

TEST_F(RunningAppsPageTest, aClickOnTheStripLeavesTheKeyboardWhereItIs) {
    fixture.store().protectedApps.set({"Notes"});
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes")});
    named(QStringLiteral("Refresh"))->setFocus(Qt::TabFocusReason);
    click(QStringLiteral("Remove protection: Notes"));
    EXPECT_EQ(focused(), QStringLiteral("Refresh"));
}

TEST_F(RunningAppsPageTest, focusOfAQuitAppStaysInTheList) {
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes"), runningApp(8, "Mail")});
    press(QStringLiteral("Quit: Notes"));
    list({runningApp(8, "Mail")});
    EXPECT_EQ(focused(), QStringLiteral("Notes, 100 MB, 1.5% CPU, PID 7 · Ended"));
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    list({runningApp(8, "Mail")});
    other.close();
    window().activateWindow();
    QApplication::processEvents();
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_TRUE(named(QStringLiteral("Running apps"))->isAncestorOf(QApplication::focusWidget()))
        << focused().toStdString();
}

TEST_F(RunningAppsPageTest, tabGoesFromTheHeaderThroughTheProtectedAppsToTheRows) {
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes")});
    fixture.store().protectedApps.set({"Zed"});
    fixture.store().protectedApps.set({"Mail", "Zed"});
    QApplication::processEvents();
    const QStringList order = tabStops();
    const QStringList wanted{QStringLiteral("Pages"),
                             QStringLiteral("Refresh"),
                             QStringLiteral("Remove protection: Mail"),
                             QStringLiteral("Remove protection: Zed"),
                             QStringLiteral("Toggle protection for Notes"),
                             QStringLiteral("Quit: Notes"),
                             QStringLiteral("More actions for Notes")};
    EXPECT_EQ(order, wanted) << order.join(QStringLiteral(" | ")).toStdString();
}

TEST_F(RunningAppsPageTest, thereIsRoomForARingAroundEveryControlOfARow) {
    open(WorkspacePage::apps);
    list({runningApp(7, "Notes")});
    const QRect shield = named(QStringLiteral("Toggle protection for Notes"))->geometry();
    const QRect quit = named(QStringLiteral("Quit: Notes"))->geometry();
    const QRect more = named(QStringLiteral("More actions for Notes"))->geometry();
    EXPECT_EQ(quit.left() - shield.right() - 1, 8);
    EXPECT_EQ(more.left() - quit.right() - 1, 8);
}

TEST_F(RunningAppsPageTest, noNameTurnsTheLineOrHides) {
    fixture.store().protectedApps.set({"", "\u200B", "Zed\u202E"});
    open(WorkspacePage::apps);
    RunningItem nameless = runningApp(7, "\u200B\u2060\uFEFF");
    nameless.executable = "/opt/editor/editor-bin";
    RunningItem unknown = runningApp(8, "\U000E0041");
    unknown.executable = "";
    list({nameless, unknown, runningApp(9, "a\u2066\u202Eb\u0085c\u2028d"), runningApp(10, "Firefox\u200B"),
          runningApp(11, "Firefox\u200C"), runningApp(12, "Firefox")});
    EXPECT_TRUE(shows(QStringLiteral("Quit: editor-bin")));
    EXPECT_TRUE(shows(QStringLiteral("Quit: PID 8")));
    EXPECT_TRUE(shows(QStringLiteral("Quit: a\uFFFD\uFFFDb\uFFFDc\uFFFDd")));
    EXPECT_TRUE(shows(QStringLiteral("Quit: Firefox\uFFFD, PID 10")));
    EXPECT_TRUE(shows(QStringLiteral("Quit: Firefox\uFFFD, PID 11")));
    EXPECT_TRUE(shows(QStringLiteral("Quit: Firefox")));
    EXPECT_TRUE(shows(QStringLiteral("Remove protection: “”")));
    EXPECT_TRUE(shows(QStringLiteral("Remove protection: \uFFFD")));
    EXPECT_TRUE(shows(QStringLiteral("Remove protection: Zed\uFFFD")));
    for (const Seen& piece : seen()) {
        for (const QString& text : {piece.name, piece.widget->accessibleDescription(), piece.widget->toolTip()}) {
            EXPECT_EQ(shown(text.toStdString()), text) << text.toStdString();
        }
    }
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
