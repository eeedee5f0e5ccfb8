#include "ui/ActivityPage.h"

#include <QElapsedTimer>
#include <QSet>

#include "tests/ui/WindowFixture.h"
#include "ui/ActivityRow.h"

namespace kestrune {

namespace {

class ActivityPageTest : public WindowFixture {
protected:
    ActivityEntry entry(int number, double secondsAgo) {
        ActivityEntry result;
        result.id = std::to_string(number);
        result.date = fixture.clock.now() - Seconds{secondsAgo};
        result.title = "Moved Gradle Caches to Trash";
        result.detail = "6 GB estimated. Empty Trash in Finder when you're ready to reclaim space.";
        result.trashPath = "/trash/" + std::to_string(number);
        return result;
    }

    [[nodiscard]] std::vector<ActivityRow*> rows() {
        std::vector<ActivityRow*> result;
        for (const Seen& piece : seen()) {
            if (auto* row = qobject_cast<ActivityRow*>(piece.widget)) {
                result.push_back(row);
            }
        }
        return result;
    }
};

}  // namespace

TEST_F(ActivityPageTest, emptyLogIsACleanSlate) {
    open(WorkspacePage::activity);
    EXPECT_TRUE(shows(QStringLiteral("A clean slate")));
    EXPECT_TRUE(shows(QStringLiteral("Your cleanup and app actions will appear here.")));
    EXPECT_TRUE(
        shows(QStringLiteral("Your last 100 actions are saved on this Mac. Moving files to Trash doesn't free "
                             "space until you empty Trash in Finder.")));
}

TEST_F(ActivityPageTest, entriesAreGroupedByDay) {
    fixture.store().history.set({entry(1, 0), entry(2, 86'400), entry(3, 10 * 86'400)});
    open(WorkspacePage::activity);
    EXPECT_TRUE(shows(QStringLiteral("Today")));
    EXPECT_TRUE(shows(QStringLiteral("Yesterday")));
    EXPECT_EQ(rows().size(), 3U);
    EXPECT_FALSE(shows(QStringLiteral("A clean slate")));
}

TEST_F(ActivityPageTest, showInTrashRevealsWhatIsThere) {
    fixture.store().history.set({entry(1, 0)});
    fixture.fileQueries.addDirectory("/trash/1");
    open(WorkspacePage::activity);
    click(QStringLiteral("Show in Trash: Moved Gradle Caches to Trash"));
    EXPECT_EQ(fixture.fileViewer.revealed, std::vector<std::string>{"/trash/1"});
}

TEST_F(ActivityPageTest, showInTrashOfAGoneItemShowsTheMissingItemMessage) {
    fixture.store().history.set({entry(1, 0)});
    open(WorkspacePage::activity);
    click(QStringLiteral("Show in Trash: Moved Gradle Caches to Trash"));
    EXPECT_TRUE(fixture.fileViewer.revealed.empty());
    EXPECT_TRUE(shows(QStringLiteral(
        "This item is no longer at its recorded Trash location. It may have been restored or emptied.")));
}

TEST_F(ActivityPageTest, putBackAsksTheStoreToPutTheEntryBack) {
    const ActivityEntry moved = entry(1, 0);
    const FileIdentity item{1, 2, 3, 0};
    fixture.trash.plans[*moved.trashPath] = {*moved.trashPath, "/home/anna/.gradle/caches", item};
    fixture.store().history.set({moved});
    open(WorkspacePage::activity);
    click(QStringLiteral("Put Back: Moved Gradle Caches to Trash"));
    fixture.settle();
    ASSERT_EQ(fixture.trash.putBacks.size(), 1U);
    EXPECT_EQ(fixture.trash.putBacks.front().location, *moved.trashPath);
}

TEST_F(ActivityPageTest, buttonsOfEntriesWithTheSameTitleHaveNamesOfTheirOwn) {
    fixture.store().history.set({entry(1, 0), entry(2, 0), entry(3, 0)});
    open(WorkspacePage::activity);
    QSet<QString> names;
    for (const ActivityRow* row : rows()) {
        const QList<QWidget*> stops = row->focusStops();
        ASSERT_EQ(stops.size(), 2);
        EXPECT_TRUE(stops.at(0)->accessibleName().startsWith(QStringLiteral("Put Back: Moved Gradle")));
        EXPECT_TRUE(stops.at(1)->accessibleName().startsWith(QStringLiteral("Show in Trash: Moved Gradle")));
        names.insert(stops.at(0)->accessibleName());
        names.insert(stops.at(1)->accessibleName());
    }
    EXPECT_EQ(names.size(), 6);
}

TEST_F(ActivityPageTest, tabGoesFromPutBackToShowInTrashAndDownTheRows) {
    fixture.store().history.set({entry(1, 0), entry(2, 86'400)});
    open(WorkspacePage::activity);
    QStringList stops = tabStops();
    stops.removeAll(QString());
    ASSERT_EQ(stops.size(), 5);
    EXPECT_EQ(stops.at(1), QStringLiteral("Put Back: Moved Gradle Caches to Trash"));
    EXPECT_EQ(stops.at(2), QStringLiteral("Show in Trash: Moved Gradle Caches to Trash"));
    EXPECT_TRUE(stops.at(3).startsWith(QStringLiteral("Put Back: Moved Gradle Caches to Trash, Yesterday")));
}

TEST_F(ActivityPageTest, buttonsGoBelowATextThatHasTooLittleRoom) {
    ActivityRow row(entry(1, 0), QStringLiteral("Today"), QStringLiteral("14:22"), QStringLiteral("Moved"));
    row.show();
    const auto putBackAt = [&row](int width) {
        row.resize(width, row.heightFor(width));
        return row.focusStops().at(0)->geometry();
    };
    EXPECT_GT(putBackAt(700).left(), 350) << "beside the text";
    const int wide = row.height();
    const QRect below = putBackAt(300);
    EXPECT_GT(row.height(), wide);
    EXPECT_GT(below.top(), wide / 2);
    EXPECT_GE(below.left(), 0);
    EXPECT_LE(row.focusStops().at(1)->geometry().right(), 300);
}

TEST_F(ActivityPageTest, entryWithoutATrashPathHasNoButton) {
    ActivityEntry plain = entry(1, 0);
    plain.trashPath.reset();
    fixture.store().history.set({plain});
    open(WorkspacePage::activity);
    ASSERT_EQ(rows().size(), 1U);
    EXPECT_TRUE(rows().front()->focusStops().isEmpty());
}

TEST_F(ActivityPageTest, newEntryComesFirstAndKeepsTheOtherRows) {
    fixture.store().history.set({entry(1, 60)});
    open(WorkspacePage::activity);
    ActivityRow* old = rows().front();
    fixture.store().history.set({entry(2, 0), entry(1, 60)});
    ASSERT_EQ(rows().size(), 2U);
    EXPECT_EQ(rows().back(), old);
}

TEST_F(ActivityPageTest, aHundredEntriesOpenAtOnce) {
    std::vector<ActivityEntry> history;
    for (int number = 0; number < 100; ++number) {
        history.push_back(entry(number, number * 7000.0));
    }
    fixture.store().history.set(history);
    open(WorkspacePage::overview);
    QElapsedTimer time;
    time.start();
    open(WorkspacePage::activity);
    EXPECT_EQ(rows().size(), 100U);
    EXPECT_LT(time.elapsed(), 2000) << "milliseconds, far above what an idle machine needs";
}

}  // namespace kestrune
