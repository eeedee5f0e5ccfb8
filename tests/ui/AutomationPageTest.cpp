#include "ui/AutomationPage.h"

#include <QCheckBox>

#include "tests/ui/WindowFixture.h"

namespace kestrune {

namespace {

class AutomationPageTest : public WindowFixture {
protected:
    [[nodiscard]] bool isOn() {
        const auto* toggle = qobject_cast<QCheckBox*>(named(reminders));
        return toggle != nullptr && toggle->isChecked();
    }

    /// The sentence about the last scan.
    [[nodiscard]] QString lastScan() {
        for (const Seen& piece : seen()) {
            if (piece.name.startsWith(QLatin1String("Last scheduled scan: "))) {
                return piece.name.mid(static_cast<qsizetype>(qstrlen("Last scheduled scan: ")));
            }
        }
        return {};
    }

    const QString reminders = QStringLiteral("Enable daily scans and reminders");
    const QString paused = QStringLiteral("Paused. Turn on when you'd like a daily review.");
    const QString promise = QStringLiteral(
        "We’ll check again about 24 hours after the last scan while Kestrune is running. macOS controls whether "
        "reminders appear.");
    const QString review = QStringLiteral("Review storage now");
    const QString stop = QStringLiteral("Stop scan");
    const QString openStorage = QStringLiteral("Open Storage");
};

}  // namespace

TEST_F(AutomationPageTest, panelSaysWhatTheReviewDoes) {
    open(WorkspacePage::automation);
    EXPECT_TRUE(shows(QStringLiteral("Daily storage review")));
    EXPECT_TRUE(
        shows(QStringLiteral("Let Kestrune check for caches once a day and remind you to review them. You still choose "
                             "what to clean. Nothing is deleted or closed in the background.")));
    EXPECT_FALSE(shows(QStringLiteral("Scan now")));
}

TEST_F(AutomationPageTest, offItIsPaused) {
    open(WorkspacePage::automation);
    EXPECT_FALSE(isOn());
    EXPECT_TRUE(shows(paused));
    EXPECT_FALSE(shows(promise));
    EXPECT_EQ(lastScan(), QString());
}

TEST_F(AutomationPageTest, turningItOnAndOffReachesTheStore) {
    open(WorkspacePage::automation);
    click(reminders);
    EXPECT_TRUE(fixture.store().reminders.get());
    EXPECT_TRUE(isOn());
    EXPECT_TRUE(shows(promise));
    EXPECT_FALSE(shows(paused));
    QTest::keyClick(named(reminders), Qt::Key_Space);
    EXPECT_FALSE(fixture.store().reminders.get());
    EXPECT_FALSE(isOn());
    EXPECT_TRUE(shows(paused));
}

TEST_F(AutomationPageTest, menuTurnsTheSwitchToo) {
    open(WorkspacePage::automation);
    fixture.store().setReminders(true);
    EXPECT_TRUE(isOn());
}

TEST_F(AutomationPageTest, withoutAnyScanThereIsNoneYet) {
    fixture.store().reminders.set(true);
    open(WorkspacePage::automation);
    EXPECT_EQ(lastScan(), QStringLiteral("Not yet"));
}

TEST_F(AutomationPageTest, lastScanIsToldByDayAndTime) {
    fixture.store().reminders.set(true);
    open(WorkspacePage::automation);
    fixture.scan();
    EXPECT_TRUE(lastScan().startsWith(QLatin1String("Today at "))) << lastScan().toStdString();
    fixture.clock.advance(Seconds{86'400});
    open(WorkspacePage::overview);
    open(WorkspacePage::automation);
    EXPECT_TRUE(lastScan().startsWith(QLatin1String("Yesterday at "))) << lastScan().toStdString();
}

TEST_F(AutomationPageTest, beforeTheFirstScanOfASessionTheLastReviewCounts) {
    fixture.store().reminders.set(true);
    fixture.store().lastReminder.set(fixture.clock.now() - Seconds{86'400});
    open(WorkspacePage::automation);
    EXPECT_TRUE(lastScan().startsWith(QLatin1String("Yesterday at "))) << lastScan().toStdString();
    fixture.scan();
    EXPECT_TRUE(lastScan().startsWith(QLatin1String("Today at "))) << lastScan().toStdString();
}

TEST_F(AutomationPageTest, reviewingNowScansAndLeadsToStorage) {
    fixture.addCache("Gradle Caches", 6 * gigabyte);
    open(WorkspacePage::automation);
    EXPECT_FALSE(shows(openStorage));
    click(review);
    EXPECT_TRUE(fixture.store().isScanning.get());
    EXPECT_FALSE(isEnabled(review));
    EXPECT_TRUE(shows(QStringLiteral("Scanning supported locations…")));
    fixture.settle();
    EXPECT_TRUE(isEnabled(review));
    EXPECT_FALSE(shows(QStringLiteral("Scanning supported locations…")));
    EXPECT_TRUE(shows(QStringLiteral("Scan finished. 6 GB to review in Storage; nothing was moved.")));
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::automation);
    click(openStorage);
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::storage);
}

TEST_F(AutomationPageTest, reviewThatFindsNothingSaysSo) {
    open(WorkspacePage::automation);
    click(review);
    fixture.settle();
    EXPECT_TRUE(shows(QStringLiteral("Scan finished. Nothing to review in the supported locations.")));
    click(openStorage);
    open(WorkspacePage::automation);
    EXPECT_FALSE(shows(QStringLiteral("Scan finished. Nothing to review in the supported locations.")));
}

TEST_F(AutomationPageTest, reviewThatEndsWhileAnotherPageIsOpenIsToldOnReturn) {
    open(WorkspacePage::automation);
    click(review);
    open(WorkspacePage::activity);
    fixture.settle();
    open(WorkspacePage::automation);
    EXPECT_TRUE(shows(QStringLiteral("Scan finished. Nothing to review in the supported locations.")));
}

TEST_F(AutomationPageTest, stoppedReviewSaysThatItsResultsAreIncomplete) {
    fixture.addCache("Gradle Caches", 6 * gigabyte);
    open(WorkspacePage::automation);
    click(review);
    click(stop);
    fixture.settle();
    EXPECT_TRUE(shows(QStringLiteral("Scan stopped. Results are incomplete; rescan before cleanup.")));
    EXPECT_FALSE(shows(stop));
    EXPECT_TRUE(isEnabled(review));
}

TEST_F(AutomationPageTest, scanOfSomebodyElseIsNotToldAsAReview) {
    open(WorkspacePage::automation);
    click(review);
    fixture.settle();
    fixture.store().scan();
    EXPECT_FALSE(shows(QStringLiteral("Scan finished. Nothing to review in the supported locations.")));
    EXPECT_TRUE(shows(stop));
    fixture.settle();
    EXPECT_FALSE(shows(QStringLiteral("Scan finished. Nothing to review in the supported locations.")));
    EXPECT_TRUE(shows(openStorage));
}

TEST_F(AutomationPageTest, duringACleanupNothingIsReviewed) {
    open(WorkspacePage::automation);
    fixture.store().isCleaning.set(true);
    EXPECT_FALSE(isEnabled(review));
    fixture.store().isCleaning.set(false);
    EXPECT_TRUE(isEnabled(review));
}

TEST_F(AutomationPageTest, keyboardFindsTheWayToStopAndThenToTheResults) {
    fixture.addCache("Gradle Caches", 6 * gigabyte);
    open(WorkspacePage::automation);
    named(review)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(named(review), Qt::Key_Return);
    ASSERT_TRUE(fixture.store().isScanning.get());
    EXPECT_EQ(QApplication::focusWidget(), named(stop));
    fixture.settle();
    EXPECT_EQ(QApplication::focusWidget(), named(openStorage));
}

TEST_F(AutomationPageTest, tabGoesThroughTheControlsInReadingOrder) {
    fixture.scan();
    open(WorkspacePage::automation);
    QStringList stops = tabStops();
    stops.removeAll(QString());
    EXPECT_EQ(stops, (QStringList{QStringLiteral("Pages"), reminders, review, openStorage}));
}

}  // namespace kestrune
