#include "ui/WorkspaceWindow.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QListWidget>
#include <QScreen>
#include <QSignalSpy>
#include <QStyle>
#include <map>
#include <set>

#include "tests/ui/WindowFixture.h"
#include "ui/Page.h"
#include "ui/Theme.h"

namespace kestrune {

namespace {

class WorkspaceWindowTest : public WindowFixture {
protected:
    void fill() {
        fixture.addCache("Gradle Caches", 6 * gigabyte);
        fixture.addCache("NPM Global Cache", 2 * gigabyte);
        fixture.addCache("Ollama Models", 11 * gigabyte);
        fixture.scan();
        fixture.store().setSelected(fixture.pathOf("Gradle Caches"), true);
        for (int index = 0; index < 4; ++index) {
            ActivityEntry entry;
            entry.id = std::to_string(index);
            entry.date = fixture.clock.now();
            entry.title = "Moved Gradle Caches to Trash";
            entry.detail = "6 GB estimated.";
            entry.trashPath = "/trash/" + entry.id;
            fixture.store().record(entry);
        }
        fixture.store().message.set("Moved 1 items to Trash. 0 failed.");
        fixture.settle();
    }
};

}  // namespace

TEST_F(WorkspaceWindowTest, opensWithItsTitleAndSize) {
    open(WorkspacePage::overview);
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Kestrune"));
    EXPECT_EQ(window().minimumSize(), QSize(880, 620).boundedTo(QGuiApplication::primaryScreen()->availableSize()));
    EXPECT_EQ(window().size(), QSize(1040, 720).boundedTo(QGuiApplication::primaryScreen()->availableSize()));
}

TEST_F(WorkspaceWindowTest, sidebarListsThePagesInOrder) {
    open(WorkspacePage::overview);
    const auto* list = qobject_cast<QListWidget*>(named(QStringLiteral("Pages")));
    ASSERT_NE(list, nullptr);
    QStringList titles;
    for (int row = 0; row < list->count(); ++row) {
        titles.append(list->item(row)->text());
    }
    const QStringList wanted{QStringLiteral("Overview"),      QStringLiteral("Storage"),
                             QStringLiteral("Disk Explorer"), QStringLiteral("AI Tools"),
                             QStringLiteral("Running Apps"),  QStringLiteral("Automation"),
                             QStringLiteral("Activity"),      QStringLiteral("Settings")};
    EXPECT_EQ(titles, wanted);
}

TEST_F(WorkspaceWindowTest, everyPageOpensWithItsTitleAndSubtitle) {
    for (const WorkspacePage page : allWorkspacePages) {
        open(page);
        EXPECT_TRUE(shows(QString::fromUtf8(rawValue(page).data()))) << rawValue(page);
        EXPECT_TRUE(shows(Page::subtitle(page))) << rawValue(page);
    }
    EXPECT_EQ(Page::subtitle(WorkspacePage::apps), QStringLiteral("See what's running before you close anything."));
    EXPECT_EQ(Page::subtitle(WorkspacePage::overview),
              QStringLiteral("See what’s using your Mac. Choose your next move."));
}

TEST_F(WorkspaceWindowTest, selectingInTheSidebarSetsThePageAndFollowsIt) {
    open(WorkspacePage::overview);
    auto* list = qobject_cast<QListWidget*>(named(QStringLiteral("Pages")));
    ASSERT_NE(list, nullptr);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::storage);
    QTest::keyClick(list, Qt::Key_End);
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::settings);
    fixture.store().page.set(WorkspacePage::activity);
    EXPECT_EQ(list->currentItem()->text(), QStringLiteral("Activity"));
    EXPECT_TRUE(shows(Page::subtitle(WorkspacePage::activity)));
}

TEST_F(WorkspaceWindowTest, closingHidesTheWindowKeepsItsFrameAndTells) {
    open(WorkspacePage::overview);
    const QSignalSpy closed(&window(), &WorkspaceWindow::closed);
    window().close();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(closed.count(), 1);
    ASSERT_TRUE(kept.has_value());
    ASSERT_EQ(kept->size(), 4U);
    EXPECT_EQ(static_cast<int>(kept->at(2)), window().width());
    open(WorkspacePage::storage);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(WorkspaceWindowTest, frameOfAWindowStillOpenIsKeptWhenTheProgramEnds) {
    open(WorkspacePage::overview);
    window().resize(910, 650);
    end();
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(kept->at(2), 910);
    EXPECT_EQ(kept->at(3), 650);
}

TEST_F(WorkspaceWindowTest, frameOutsideOfTheScreenComesBackOntoIt) {
    kept = std::vector<double>{90'000, -4000, 900, 640};
    open(WorkspacePage::overview);
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().intersects(window().geometry()));
    EXPECT_GE(window().y(), 0);
}

TEST_F(WorkspaceWindowTest, frameLargerThanTheScreenLeavesRoomForItsTitleBar) {
    kept = std::vector<double>{0, 0, 5000, 5000};
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    const int titleBar = window().style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window());
    ASSERT_GT(titleBar, 0);
    EXPECT_EQ(window().geometry(), room.adjusted(0, titleBar, 0, 0));
}

TEST_F(WorkspaceWindowTest, damagedFrameIsLeftAside) {
    kept = std::vector<double>{0, 0, std::numeric_limits<double>::quiet_NaN(), 640};
    EXPECT_GE(window().width(), 100);
    EXPECT_LE(window().width(), 1040);
}

TEST_F(WorkspaceWindowTest, everyControlHasANameOfItsOwn) {
    fill();
    for (const WorkspacePage page : allWorkspacePages) {
        open(page);
        std::map<QString, int> names;
        for (const Seen& piece : seen()) {
            if (piece.focusable) {
                EXPECT_FALSE(piece.name.isEmpty())
                    << rawValue(page) << ": " << piece.widget->metaObject()->className() << " has no name";
                EXPECT_EQ(++names[piece.name], 1) << rawValue(page) << ": " << piece.name.toStdString() << " twice";
            }
        }
        EXPECT_GE(names.size(), 1U);
    }
}

TEST_F(WorkspaceWindowTest, tabGoesThroughSidebarHeaderBodyAndFooter) {
    fill();
    fixture.store().message.set({});
    open(WorkspacePage::storage);
    const QStringList order = tabStops();
    const auto at = [&order](const char* name) { return order.indexOf(QLatin1String(name)); };
    EXPECT_EQ(at("Pages"), 0);
    EXPECT_EQ(at("Scan now"), 1);
    EXPECT_GT(at("Category: All categories"), at("Scan now"));
    EXPECT_GT(at("Select Ollama Models"), at("Select build caches"));
    EXPECT_GT(at("Show in Finder: Ollama Models"), at("Select Ollama Models"));
    EXPECT_GT(at("Select Gradle Caches"), at("Exclude: Ollama Models"));
    EXPECT_EQ(at("Review & move to Trash"), order.size() - 1);
}

TEST_F(WorkspaceWindowTest, messageShowsOnTheCurrentPageUntilItIsClosed) {
    fill();
    open(WorkspacePage::activity);
    EXPECT_TRUE(shows(QStringLiteral("Moved 1 items to Trash. 0 failed.")));
    click(QStringLiteral("Close message"));
    EXPECT_FALSE(fixture.store().message.get().has_value());
    EXPECT_FALSE(shows(QStringLiteral("Moved 1 items to Trash. 0 failed.")));
}

TEST_F(WorkspaceWindowTest, scanButtonStartsAScanAndMakesRoomForStopping) {
    fixture.addCache("Gradle Caches", gigabyte);
    for (const WorkspacePage page : {WorkspacePage::overview, WorkspacePage::storage, WorkspacePage::ai}) {
        open(page);
        EXPECT_FALSE(shows(QStringLiteral("Stop scan")));
        click(QStringLiteral("Scan now"));
        EXPECT_TRUE(fixture.store().isScanning.get());
        EXPECT_FALSE(isEnabled(QStringLiteral("Scan now")));
        click(QStringLiteral("Stop scan"));
        fixture.settle();
        EXPECT_EQ(fixture.store().scanNotes.get().back(),
                  "Scan stopped. Results are incomplete; rescan before cleanup.");
        EXPECT_TRUE(isEnabled(QStringLiteral("Scan now")));
    }
}

TEST_F(WorkspaceWindowTest, openingOnAProcessPageListsAtOnceAndOtherPagesNeverList) {
    for (const WorkspacePage page : allWorkspacePages) {
        const int before = fixture.processes.reads;
        open(page);
        fixture.settle();
        const bool lists = page == WorkspacePage::ai || page == WorkspacePage::apps;
        EXPECT_EQ(fixture.processes.reads - before, lists ? 1 : 0) << rawValue(page);
        window().close();
        open(page);
        fixture.settle();
        EXPECT_EQ(fixture.processes.reads - before, lists ? 2 : 0) << rawValue(page) << " once more";
        window().close();
    }
}

TEST_F(WorkspaceWindowTest, changingToAProcessPageInAnOpenWindowListsAtOnce) {
    open(WorkspacePage::overview);
    fixture.settle();
    fixture.store().page.set(WorkspacePage::apps);
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 1);
    fixture.store().page.set(WorkspacePage::ai);
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 2);
    fixture.store().page.set(WorkspacePage::settings);
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 2);
}

TEST_F(WorkspaceWindowTest, whileItIsClosedAChangeOfPageListsNothing) {
    fixture.store().page.set(WorkspacePage::apps);
    static_cast<void>(window());
    fixture.store().page.set(WorkspacePage::ai);
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 0);
}

TEST_F(WorkspaceWindowTest, lightAndDarkChangeWhileItIsOpen) {
    open(WorkspacePage::overview);
    const auto corner = [this] { return window().grab().toImage().pixelColor(window().width() - 3, 3); };
    EXPECT_EQ(corner(), Theme::colour(Colour::window));
    Theme::setDark(true);
    EXPECT_EQ(corner(), QColor(0x1C, 0x1D, 0x20));
    Theme::setDark(false);
    EXPECT_EQ(corner(), QColor(0xFA, 0xFA, 0xFB));
}

TEST_F(WorkspaceWindowTest, nothingIsCutAtTheSmallestSize) {
    fill();
    for (const WorkspacePage page : allWorkspacePages) {
        open(page);
        window().resize(window().minimumSize());
        QApplication::processEvents();
        EXPECT_EQ(window().size(), window().minimumSize());
        for (const Seen& piece : seen()) {
            if (piece.focusable && piece.role == QAccessible::Button) {
                EXPECT_GE(piece.widget->width(), piece.widget->sizeHint().width()) << piece.name.toStdString();
                const int right = piece.widget->mapTo(&window(), QPoint(piece.widget->width(), 0)).x();
                EXPECT_LE(right, window().width()) << piece.name.toStdString();
            }
        }
    }
}

}  // namespace kestrune
