#include "ui/PortReviewWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <QTest>

#include "tests/fakes/StoreFixture.h"
#include "tests/ui/RunningItems.h"
#include "tests/ui/SeenPieces.h"

namespace kestrune {

namespace {

class PortReviewWindowTest : public ::testing::Test {
protected:
    void open(std::vector<RunningItem> items) {
        fixture.store().running.set(std::move(items));
        fixture.store().processesListed.set(true);
        window.present();
        QApplication::processEvents();
    }

    [[nodiscard]] QWidget* named(const QString& name) { return namedIn(window, name); }

    [[nodiscard]] bool shows(const QString& name) { return named(name) != nullptr; }

    [[nodiscard]] QLineEdit* search() { return window.findChild<QLineEdit*>(); }

    StoreFixture fixture;
    PortReviewWindow window{fixture.store()};
};

const RunningItem server = runningProcess(5521, "server", 100, {"*:3000", "*:9229"});

}  // namespace

TEST_F(PortReviewWindowTest, isSmallAndCannotBeMinimised) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("What’s Using a Port?"));
    EXPECT_EQ(window.size(), QSize(580, 440));
    EXPECT_EQ(window.minimumSize(), QSize(480, 320));
    EXPECT_FALSE(window.windowFlags() & Qt::WindowMinimizeButtonHint);
}

TEST_F(PortReviewWindowTest, severalPortsStandOnOneLine) {
    open({server, runningProcess(7, "portless")});
    EXPECT_TRUE(shows(QStringLiteral("server, PID 5521 · *:3000, *:9229")));
    EXPECT_TRUE(shows(QStringLiteral("Stop process: server, *:3000, *:9229")));
    EXPECT_FALSE(shows(QStringLiteral("portless, PID 7 · ")));
}

TEST_F(PortReviewWindowTest, aProtectedProcessIsListedButCannotBeStopped) {
    fixture.store().protectedApps.set({"server"});
    open({server});
    EXPECT_TRUE(shows(QStringLiteral("server, Protected, PID 5521 · *:3000, *:9229")));
    QWidget* button = named(QStringLiteral("Protected: server"));
    ASSERT_NE(button, nullptr);
    EXPECT_FALSE(button->isEnabled());
    EXPECT_FALSE(shows(QStringLiteral("Stop process: server, *:3000, *:9229")));
}

TEST_F(PortReviewWindowTest, openingTwiceCentresAgainAndListsAgain) {
    window.present();
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 1);
    // How thick the desktop's frame is shows only after the first time.
    constexpr int frame = 8;
    const QPoint centre = window.frameGeometry().center();
    window.move(3, 4);
    window.present();
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 2);
    EXPECT_LE((window.frameGeometry().center() - centre).manhattanLength(), frame);
    EXPECT_LE((centre - QApplication::primaryScreen()->availableGeometry().center()).manhattanLength(), frame);
}

TEST_F(PortReviewWindowTest, withoutServersItSaysSo) {
    open({runningProcess(7, "portless")});
    EXPECT_TRUE(shows(QStringLiteral("No servers found using a port. Refresh after starting one.")));
    fixture.store().running.set({server});
    QApplication::processEvents();
    EXPECT_FALSE(shows(QStringLiteral("No servers found using a port. Refresh after starting one.")));
}

TEST_F(PortReviewWindowTest, warnsBeforeAnythingIsStopped) {
    open({server});
    EXPECT_TRUE(shows(QStringLiteral("What’s using your ports?")));
    EXPECT_TRUE(
        shows(QStringLiteral("Stopping a server closes its whole process, including its other work. Save first. "
                             "Protected apps stay running.")));
}

TEST_F(PortReviewWindowTest, refreshListsAgain) {
    open({server});
    fixture.settle();
    const int before = fixture.processes.reads;
    QTest::mouseClick(named(QStringLiteral("Refresh")), Qt::LeftButton);
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, before + 1);
}

TEST_F(PortReviewWindowTest, stoppingAsksForTheVeryProcess) {
    fixture.processControl.running = {{5521, server.executable, server.startTime}};
    open({server, runningProcess(8, "other", 90, {"*:80"})});
    QTest::mouseClick(named(QStringLiteral("Stop process: server, *:3000, *:9229")), Qt::LeftButton);
    fixture.settle();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "Quit server?");
    ASSERT_EQ(fixture.processControl.requests.size(), 1U);
    EXPECT_EQ(fixture.processControl.requests[0].pid, 5521);
}

TEST_F(PortReviewWindowTest, typingAPortLeavesWhoHoldsIt) {
    open({server, runningProcess(8, "other", 90, {"*:80"})});
    EXPECT_TRUE(search()->hasFocus());
    QTest::keyClicks(search(), QStringLiteral("3000"));
    EXPECT_TRUE(shows(QStringLiteral("Stop process: server, *:3000, *:9229")));
    EXPECT_FALSE(shows(QStringLiteral("Stop process: other, *:80")));
    QTest::keyClicks(search(), QStringLiteral("7"));
    EXPECT_TRUE(shows(QStringLiteral("No server matches “30007”.")));
    QTest::keyClick(search(), Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible()) << "the first Escape clears";
    EXPECT_TRUE(shows(QStringLiteral("Stop process: other, *:80")));
    QTest::keyClick(search(), Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(PortReviewWindowTest, namesakesAreToldApartAlsoWhileTheSearchHidesOne) {
    open({server, runningProcess(8, "server", 90, {"*:80"})});
    EXPECT_TRUE(shows(QStringLiteral("Stop process: server, PID 5521, *:3000, *:9229")));
    QTest::keyClicks(search(), QStringLiteral("3000"));
    EXPECT_TRUE(shows(QStringLiteral("Stop process: server, PID 5521, *:3000, *:9229")));
    EXPECT_FALSE(shows(QStringLiteral("Stop process: server, PID 8, *:80")));
    fixture.store().running.set({server});
    QApplication::processEvents();
    EXPECT_TRUE(shows(QStringLiteral("Stop process: server, *:3000, *:9229")));
}

TEST_F(PortReviewWindowTest, tabGoesFromRefreshToTheSearchToTheRows) {
    open({server, runningProcess(8, "other", 90, {"*:80"})});
    EXPECT_TRUE(search()->hasFocus());
    QStringList order;
    for (int step = 0; step < 4; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order.append(QApplication::focusWidget()->accessibleName());
    }
    const QStringList wanted{QStringLiteral("Stop process: server, *:3000, *:9229"),
                             QStringLiteral("Stop process: other, *:80"), QStringLiteral("Refresh"),
                             search()->accessibleName()};
    EXPECT_EQ(order, wanted) << order.join(QStringLiteral(" | ")).toStdString();
}

TEST_F(PortReviewWindowTest, controlWClosesIt) {
    open({server});
    QTest::keyClick(search(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(PortReviewWindowTest, foreignTextStaysPlain) {
    open({runningProcess(9, "<b>&x</b>", 1, {"*:1"})});
    EXPECT_TRUE(shows(QStringLiteral("Stop process: <b>&x</b>, *:1")));
}

TEST_F(PortReviewWindowTest, tellsTheOutcomeOfStoppingAndNotOlderNews) {
    fixture.store().message.set("Moved 2 items to Trash.");
    open({server});
    EXPECT_FALSE(shows(QStringLiteral("Moved 2 items to Trash.")));
    fixture.store().message.set("Process changed or couldn't be stopped.");
    EXPECT_TRUE(shows(QStringLiteral("Process changed or couldn't be stopped.")));
}

}  // namespace kestrune
