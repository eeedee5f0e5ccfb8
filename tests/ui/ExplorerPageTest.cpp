#include "ui/ExplorerPage.h"

#include <QMenu>
#include <QScrollBar>

#include "tests/ui/ExplorerPageFixture.h"
#include "ui/Breadcrumb.h"
#include "ui/ExplorerProgressStrip.h"

namespace kestrune {

namespace {

using ExplorerPageTest = ExplorerPageFixture;

const QString measuring = QStringLiteral("Measuring folders and finding large files…");
const QString chooseFolder = QStringLiteral("Choose folder…");
const QString stopScan = QStringLiteral("Stop scan");
const QString cutText = QStringLiteral("Showing the 200 largest entries. Explore a folder to see more detail.");
const QString method = QStringLiteral(
    "We include hidden files, skip linked folders and other mounted drives, and stop after 250,000 entries or about 45 "
    "seconds. macOS can share storage between files, so totals are estimates. Choose a smaller folder when a scan is "
    "incomplete.");

std::vector<WalkedItem> manyFolders(int count) {
    std::vector<WalkedItem> folders;
    for (int index = 0; index < count; ++index) {
        folders.push_back({"folder " + std::to_string(index), (count - index) * gigabyte, true});
    }
    return folders;
}

}  // namespace

TEST_F(ExplorerPageTest, beforeAnyResultItInvitesToChooseAFolder) {
    open(WorkspacePage::explorer);
    EXPECT_TRUE(shows(QStringLiteral("Where did the space go?")));
    EXPECT_TRUE(
        shows(QStringLiteral("Choose your home folder, Downloads, or a project. See what takes the most space, "
                             "then open anything in Finder.")));
    EXPECT_FALSE(shows(QStringLiteral("Rescan")));
    click(chooseFolder);
    ASSERT_EQ(fixture.folderChooser.asked.size(), 1U);
    EXPECT_FALSE(fixture.store().isExploring.get());
    EXPECT_TRUE(shows(QStringLiteral("Where did the space go?")));
}

TEST_F(ExplorerPageTest, aChosenFolderIsExplored) {
    layProjects();
    fixture.folderChooser.answer = projects;
    open(WorkspacePage::explorer);
    click(chooseFolder);
    finish();
    EXPECT_EQ(shownFolder(), projects);
    EXPECT_TRUE(shows(QStringLiteral("Where the space goes")));
    EXPECT_FALSE(shows(QStringLiteral("Where did the space go?")));
}

TEST_F(ExplorerPageTest, aShortScanKeepsWhatIsShownUntilItsEnd) {
    layProjects();
    open(WorkspacePage::explorer);
    fixture.store().explore(projects);
    QApplication::processEvents();
    EXPECT_TRUE(shows(QStringLiteral("Where did the space go?")));
    EXPECT_FALSE(shows(measuring));
    finish();
    EXPECT_NE(rowOf(projects + "/client-app"), nullptr);
    fixture.store().explore(projects + "/client-app");
    QApplication::processEvents();
    EXPECT_NE(rowOf(projects + "/client-app"), nullptr);
    EXPECT_FALSE(shows(stopScan));
    finish();
    EXPECT_NE(rowOf(projects + "/client-app/build"), nullptr);
}

TEST_F(ExplorerPageTest, aLongerScanShowsItsFolderAndTheWayToStopIt) {
    layProjects();
    open(WorkspacePage::explorer);
    fixture.store().explore(projects);
    QApplication::processEvents();
    letPatienceEnd();
    EXPECT_TRUE(shows(QStringLiteral("Projects")));
    EXPECT_TRUE(shows(measuring));
    EXPECT_FALSE(shows(chooseFolder));
    click(stopScan);
    finish();
    EXPECT_TRUE(fixture.store().explorerResult.get().stopped);
    EXPECT_TRUE(shows(chooseFolder));
    EXPECT_FALSE(shows(stopScan));
}

TEST_F(ExplorerPageTest, aPageShownDuringAScanShowsNothingOfTheOneBefore) {
    layProjects();
    openExplored(projects);
    fixture.store().page.set(WorkspacePage::overview);
    fixture.store().explore(projects + "/client-app");
    fixture.store().page.set(WorkspacePage::explorer);
    QApplication::processEvents();
    EXPECT_EQ(rowOf(projects + "/client-app"), nullptr);
    EXPECT_FALSE(shows(chooseFolder));
    letPatienceEnd();
    EXPECT_TRUE(shows(measuring));
    finish();
    EXPECT_NE(rowOf(projects + "/client-app/build"), nullptr);
}

TEST_F(ExplorerPageTest, firstProgressShowsWhatIsKnownAndWhereTheScanIs) {
    layProjects();
    open(WorkspacePage::explorer);
    fixture.store().explore(projects);
    tell(progressOf(12'345, 1'500'000'000));
    EXPECT_TRUE(shows(measuring));
    EXPECT_TRUE(shows(stopScan));
    const auto* strip = window().findChild<ExplorerProgressStrip*>();
    EXPECT_TRUE(strip->isVisible());
    EXPECT_EQ(strip->accessibleValue(),
              QStringLiteral("12,345 inspected, 1.5 GB found, ~/Projects/client-app/node_modules"));
    EXPECT_TRUE(window().findChild<Breadcrumb*>()->isVisible());
    EXPECT_FALSE(isEnabled(QStringLiteral("Up one folder")));
    EXPECT_NE(rowOf(projects + "/client-app"), nullptr);
    EXPECT_EQ(picture().tiles().size(), 1U);
    EXPECT_FALSE(shows(QStringLiteral("No files we can read here.")));
}

TEST_F(ExplorerPageTest, barsAndPictureGrowWithTheScanInTheirPlaces) {
    layProjects();
    open(WorkspacePage::explorer);
    fixture.store().explore(projects);
    tell(progressOf(1'000, 1 * gigabyte));
    const ExplorerRowView* row = rowOf(projects + "/client-app");
    ASSERT_NE(row, nullptr);
    const int top = picture().y();
    tell(progressOf(200'000, 20 * gigabyte));
    EXPECT_EQ(rowOf(projects + "/client-app"), row);
    EXPECT_EQ(row->row().bytes, 20 * gigabyte);
    EXPECT_EQ(picture().tiles().front().bytes, 20 * gigabyte);
    EXPECT_EQ(picture().y(), top);
}

TEST_F(ExplorerPageTest, escapeStopsARunningScan) {
    layProjects();
    open(WorkspacePage::explorer);
    fixture.store().explore(projects);
    tell(progressOf(10, gigabyte));
    press(Qt::Key_Escape);
    finish();
    EXPECT_TRUE(fixture.store().explorerResult.get().stopped);
}

TEST_F(ExplorerPageTest, aResultShowsCountsSectionsAndButtons) {
    layProjects();
    openExplored(projects);
    EXPECT_TRUE(shows(QStringLiteral("3 inspected · 2 files")));
    EXPECT_TRUE(shows(QStringLiteral("Where the space goes")));
    EXPECT_TRUE(shows(QStringLiteral("Your biggest files · top 50")));
    for (const char* button : {"Rescan", "Choose folder…", "Up one folder", "How this scan works"}) {
        EXPECT_TRUE(isEnabled(QString::fromUtf8(button))) << button;
    }
    EXPECT_TRUE(
        shows(QStringLiteral("A size shows what we found, not how much space you’ll recover. Disk Explorer only "
                             "looks; it never deletes files.")));
    EXPECT_EQ(picture().tiles().size(), 3U);
    EXPECT_FALSE(shows(cutText));
    EXPECT_FALSE(shows(stopScan));
}

TEST_F(ExplorerPageTest, theDisclosureTellsHowTheScanWorks) {
    layProjects();
    openExplored(projects);
    EXPECT_FALSE(shows(method));
    QWidget* title = named(QStringLiteral("How this scan works"));
    ASSERT_NE(title, nullptr);
    page().scrollArea()->ensureWidgetVisible(title);
    click(QStringLiteral("How this scan works"));
    EXPECT_TRUE(shows(method));
}

TEST_F(ExplorerPageTest, aResultCutAt200EntriesSaysSoUnderTheList) {
    lay(projects, manyFolders(200));
    lay("/home/anna/few", manyFolders(199));
    openExplored(projects);
    EXPECT_TRUE(shows(cutText));
    explore("/home/anna/few");
    EXPECT_FALSE(shows(cutText));
}

TEST_F(ExplorerPageTest, anIncompleteScanGivesTheCountOfUnreadLocations) {
    layProjects().unreadable = 12;
    openExplored(projects);
    const QString text = QStringLiteral(
        "This scan is incomplete. 12 locations couldn’t be read or were skipped. Try a smaller folder to see more.");
    EXPECT_TRUE(shows(text));
    explore(projects + "/client-app");
    EXPECT_FALSE(shows(text));
}

TEST_F(ExplorerPageTest, aFolderThatCannotBeReadSaysThatThereIsNothingToSee) {
    fixture.walker.walks["/root"].exists = true;
    openExplored("/root");
    EXPECT_TRUE(shows(QStringLiteral("No files or folders we can read here.")));
    EXPECT_TRUE(shows(QStringLiteral("No files we can read here.")));
    EXPECT_TRUE(
        shows(QStringLiteral("This scan is incomplete. 1 locations couldn’t be read or were skipped. Try a "
                             "smaller folder to see more.")));
    EXPECT_FALSE(picture().isVisible());
}

TEST_F(ExplorerPageTest, theEndOfAScanIsTold) {
    layProjects();
    openExplored(projects);
    EXPECT_TRUE(shows(QStringLiteral("Scan finished. 3 inspected · 2 files")));
    fixture.store().explore(projects);
    fixture.store().stopExploring();
    finish();
    EXPECT_TRUE(shows(QStringLiteral("Scan stopped. 0 inspected · 2 files")));
}

TEST_F(ExplorerPageTest, theEndOfAScanIsNotToldOfAnotherFolderOrOfARunningScan) {
    layProjects();
    openExplored(projects);
    explore(projects + "/client-app");
    EXPECT_TRUE(shows(QStringLiteral("Scan finished. 2 inspected · 1 files")));
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(shows(QStringLiteral("3 inspected · 2 files")));
    EXPECT_FALSE(shows(QStringLiteral("Scan finished. 2 inspected · 1 files")));
    fixture.store().rescanExplorer();
    finish();
    EXPECT_TRUE(shows(QStringLiteral("Scan finished. 3 inspected · 2 files")));
    fixture.store().rescanExplorer();
    tell(progressOf(2, gigabyte));
    EXPECT_FALSE(shows(QStringLiteral("Scan finished. 3 inspected · 2 files")));
}

TEST_F(ExplorerPageTest, nothingOffersToBeExploredWhileAScanRuns) {
    layProjects();
    openExplored(projects);
    fixture.store().rescanExplorer();
    tell(progressOf(2, gigabyte));
    ExplorerRowView& row = *rowOf(projects + "/client-app");
    EXPECT_FALSE(row.isActivatable());
    EXPECT_FALSE(row.focusStops().at(1)->isEnabled());
    EXPECT_TRUE(row.focusStops().at(2)->isEnabled());
    EXPECT_FALSE(picture().isExplorable(0));
    finish();
    EXPECT_TRUE(row.isActivatable());
    EXPECT_TRUE(row.focusStops().at(1)->isEnabled());
    EXPECT_TRUE(picture().isExplorable(0));
}

TEST_F(ExplorerPageTest, whoComesBackIsAtTheTileOfTheFolderTheyWereIn) {
    layProjects();
    lay(projects + "/mobile", {{"one", 3, true}, {"two", 2, true}, {"three", 1, true}});
    openExplored(projects);
    picture().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&picture(), Qt::Key_Right);
    QTest::keyClick(&picture(), Qt::Key_Return);
    finish();
    EXPECT_EQ(picture().currentIndex(), picture().indexOf(projects + "/mobile/one"));
    QTest::keyClick(&picture(), Qt::Key_End);
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(picture().currentIndex(), picture().indexOf(projects + "/mobile"));
}

TEST_F(ExplorerPageTest, rowsAndTilesLeadIntoTheirFolders) {
    layProjects();
    openExplored(projects);
    click(QStringLiteral("Explore: client-app"));
    finish();
    EXPECT_EQ(shownFolder(), projects + "/client-app");
    explore(projects);
    const QPoint tile = middleOfTile(projects + "/client-app");
    QTest::mouseClick(&picture(), Qt::LeftButton, {}, tile);
    QTest::mouseDClick(&picture(), Qt::LeftButton, {}, tile);
    finish();
    EXPECT_EQ(shownFolder(), projects + "/client-app");
    EXPECT_NE(rowOf(projects + "/client-app/build"), nullptr);
}

TEST_F(ExplorerPageTest, upOneFolderByButtonAndByKey) {
    layProjects();
    openExplored(projects + "/client-app");
    click(QStringLiteral("Up one folder"));
    finish();
    EXPECT_EQ(shownFolder(), projects);
    press(Qt::Key_Up, Qt::AltModifier);
    finish();
    EXPECT_EQ(shownFolder(), "/home/anna");
}

TEST_F(ExplorerPageTest, backAndForwardBringRememberedResultsByKeyAndByMouse) {
    layProjects();
    openExplored(projects);
    explore(projects + "/client-app");
    const std::size_t walks = fixture.walker.measured.size();
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_NE(rowOf(projects + "/mobile"), nullptr);
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_NE(rowOf(projects + "/client-app/build"), nullptr);
    QTest::mouseClick(rowOf(projects + "/client-app/build"), Qt::BackButton);
    QApplication::processEvents();
    EXPECT_NE(rowOf(projects + "/mobile"), nullptr);
    QTest::mouseClick(&picture(), Qt::ForwardButton);
    QApplication::processEvents();
    EXPECT_NE(rowOf(projects + "/client-app/build"), nullptr);
    EXPECT_EQ(fixture.walker.measured.size(), walks);
}

TEST_F(ExplorerPageTest, rescanByButtonAndByKeys) {
    layProjects();
    openExplored(projects);
    const std::size_t walks = fixture.walker.measured.size();
    click(QStringLiteral("Rescan"));
    finish();
    press(Qt::Key_F5);
    finish();
    press(Qt::Key_R, Qt::ControlModifier);
    finish();
    EXPECT_EQ(fixture.walker.measured.size(), walks + 3);
    EXPECT_EQ(fixture.walker.measured.back(), projects);
}

TEST_F(ExplorerPageTest, keysOfAPageThatIsNotShownDoNothing) {
    layProjects();
    openExplored(projects);
    const std::size_t walks = fixture.walker.measured.size();
    open(WorkspacePage::overview);
    press(Qt::Key_F5);
    finish();
    EXPECT_EQ(fixture.walker.measured.size(), walks);
}

TEST_F(ExplorerPageTest, showInFinderRevealsRowsOfBothLists) {
    layProjects();
    openExplored(projects);
    click(QStringLiteral("Show in Finder: mobile"));
    const QString ofFile = QStringLiteral("Show in Finder: client.ipa, client-app/build");
    page().scrollArea()->ensureWidgetVisible(named(ofFile));
    click(ofFile);
    EXPECT_EQ(fixture.fileViewer.revealed,
              (std::vector<std::string>{projects + "/mobile", projects + "/client-app/build/client.ipa"}));
}

TEST_F(ExplorerPageTest, theMenuOffersTheSameForTilesAndRows) {
    layProjects();
    openExplored(projects);
    Q_EMIT picture().menuWanted(projects + "/dataset.parquet", QPoint(100, 100));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions().first()->text(), QStringLiteral("Show in Finder"));
    menu->actions().first()->trigger();
    menu->close();
    EXPECT_EQ(fixture.fileViewer.revealed, std::vector<std::string>{projects + "/dataset.parquet"});
    Q_EMIT window().findChild<ExplorerList*>()->menuWanted(projects + "/client-app", QPoint(100, 100));
    menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 2);
    EXPECT_EQ(menu->actions().first()->text(), QStringLiteral("Explore"));
    menu->actions().first()->trigger();
    menu->close();
    finish();
    EXPECT_EQ(shownFolder(), projects + "/client-app");
}

TEST_F(ExplorerPageTest, aClickInThePictureChoosesTheRowAndBringsItIntoViewLater) {
    lay(projects, manyFolders(12));
    openExplored(projects);
    window().resize(window().minimumSize());
    QApplication::processEvents();
    QTest::mouseClick(&picture(), Qt::LeftButton, {}, middleOfTile(projects + "/folder 9"));
    const QScrollBar* bar = page().scrollArea()->verticalScrollBar();
    EXPECT_EQ(bar->value(), 0);
    letDoubleClickTimePass();
    const ExplorerRowView* row = rowOf(projects + "/folder 9");
    EXPECT_GT(bar->value(), 0);
    EXPECT_FALSE(row->visibleRegion().isEmpty());
}

TEST_F(ExplorerPageTest, aClickInTheListChoosesTheTileAndScrollsNothing) {
    layProjects();
    openExplored(projects);
    ExplorerRowView* row = rowOf(projects + "/mobile");
    ASSERT_NE(row, nullptr);
    QTest::mouseClick(row, Qt::LeftButton, {}, QPoint(row->width() / 3, row->height() / 2));
    EXPECT_EQ(picture().selectedIndex(), picture().indexOf(projects + "/mobile"));
    letDoubleClickTimePass();
    EXPECT_EQ(page().scrollArea()->verticalScrollBar()->value(), 0);
}

TEST_F(ExplorerPageTest, everyControlHasANameOfItsOwn) {
    layProjects();
    openExplored(projects);
    QStringList names;
    for (const Seen& piece : seen()) {
        if (piece.focusable) {
            EXPECT_FALSE(piece.name.isEmpty()) << piece.widget->metaObject()->className();
            EXPECT_FALSE(names.contains(piece.name)) << piece.name.toStdString();
            names.append(piece.name);
        }
    }
}

TEST_F(ExplorerPageTest, namesThatAreNoTextAreShownReadablyAndExploredByTheirBytes) {
    const std::string hostile = "bad\xff\nname";
    lay(projects, {{hostile, 2 * gigabyte, true}, {std::string("bad\xfe\nname"), gigabyte, true}});
    lay(projects + "/" + hostile, {{"inside", gigabyte, true}});
    openExplored(projects);
    ExplorerRowView* row = rowOf(projects + "/" + hostile);
    ASSERT_NE(row, nullptr);
    EXPECT_FALSE(row->accessibleName().contains(QLatin1Char('\n')));
    EXPECT_NE(rowOf(projects + "/bad\xfe\nname"), nullptr);
    Q_EMIT row->explored();
    finish();
    EXPECT_EQ(fixture.walker.measured.back(), projects + "/" + hostile);
    EXPECT_NE(rowOf(projects + "/" + hostile + "/inside"), nullptr);
}

TEST_F(ExplorerPageTest, anotherFolderBeginsAtTheTopWithNothingChosen) {
    lay(projects, manyFolders(40));
    lay(projects + "/folder 3", manyFolders(40));
    openExplored(projects);
    QScrollBar* bar = page().scrollArea()->verticalScrollBar();
    bar->setValue(bar->maximum());
    ASSERT_GT(bar->value(), 0);
    explore(projects + "/folder 3");
    EXPECT_EQ(bar->value(), 0);
    EXPECT_FALSE(picture().selectedIndex().has_value());
}

TEST_F(ExplorerPageTest, aHiddenPageIsNotTouchedAndCatchesUpWhenShown) {
    layProjects();
    openExplored(projects);
    fixture.store().page.set(WorkspacePage::overview);
    explore(projects + "/client-app");
    const std::vector<ExplorerRow> rows = window().findChild<ExplorerList*>()->rows();
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front().path, projects + "/client-app");
    fixture.store().page.set(WorkspacePage::explorer);
    EXPECT_NE(rowOf(projects + "/client-app/build"), nullptr);
}

TEST_F(ExplorerPageTest, everythingIsReachableInTheSmallestWindow) {
    layProjects().unreadable = 12;
    openExplored(projects);
    window().resize(window().minimumSize());
    QApplication::processEvents();
    for (const Seen& piece : seen()) {
        if (piece.focusable && piece.role == QAccessible::Button) {
            EXPECT_GE(piece.widget->width(), piece.widget->sizeHint().width()) << piece.name.toStdString();
            const int right = piece.widget->mapTo(&window(), QPoint(piece.widget->width(), 0)).x();
            EXPECT_LE(right, window().width()) << piece.name.toStdString();
        }
    }
    EXPECT_EQ(picture().mapTo(&page(), QPoint(0, 0)).x(), 24);
    EXPECT_EQ(picture().width(), page().width() - 48);
}

}  // namespace kestrune
