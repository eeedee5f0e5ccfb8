#include "ui/ActivityPage.h"

#include <QElapsedTimer>

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
