#include "tests/ui/ExplorerPageFixture.h"

namespace kestrune {

namespace {

using ExplorerPageKeyboardTest = ExplorerPageFixture;

const QString stopScan = QStringLiteral("Stop scan");

}  // namespace

TEST_F(ExplorerPageKeyboardTest, whoExploredByKeyboardFindsStopAndThenThePicture) {
    layProjects();
    openExplored(projects);
    QWidget* explore = named(QStringLiteral("Explore: client-app"));
    ASSERT_NE(explore, nullptr);
    explore->setFocus(Qt::TabFocusReason);
    QTest::keyClick(explore, Qt::Key_Return);
    QApplication::processEvents();
    letPatienceEnd();
    ASSERT_NE(window().focusWidget(), nullptr);
    EXPECT_EQ(window().focusWidget()->accessibleName(), stopScan);
    tell(progressOf(10, gigabyte));
    EXPECT_EQ(window().focusWidget()->accessibleName(), stopScan);
    EXPECT_TRUE(window().focusWidget()->isVisible());
    finish();
    EXPECT_EQ(window().focusWidget(), &picture());
}

TEST_F(ExplorerPageKeyboardTest, rescanKeepsTheKeyboardThroughTheScan) {
    layProjects();
    openExplored(projects);
    QWidget* rescan = named(QStringLiteral("Rescan"));
    rescan->setFocus(Qt::TabFocusReason);
    QTest::keyClick(rescan, Qt::Key_Space);
    tell(progressOf(10, gigabyte));
    EXPECT_EQ(window().focusWidget()->accessibleName(), stopScan);
    finish();
    EXPECT_EQ(window().focusWidget(), rescan);
}

TEST_F(ExplorerPageKeyboardTest, rescanLeavesTheKeyboardInTheRowItWasIn) {
    layProjects();
    openExplored(projects);
    rowOf(projects + "/mobile")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_F5);
    finish();
    EXPECT_EQ(window().focusWidget(), rowOf(projects + "/mobile"));
}

TEST_F(ExplorerPageKeyboardTest, aScanThatEndsLeavesTheKeyboardWhereTheUserTookIt) {
    layProjects();
    open(WorkspacePage::explorer);
    QWidget* pages = named(QStringLiteral("Pages"));
    pages->setFocus(Qt::TabFocusReason);
    explore(projects);
    EXPECT_EQ(window().focusWidget(), pages);
}

TEST_F(ExplorerPageKeyboardTest, tabGoesThroughHeaderPathPictureListsAndDisclosure) {
    layProjects();
    openExplored(projects);
    const QStringList order = tabStops();
    const auto at = [&order](const char* name) { return order.indexOf(QString::fromUtf8(name)); };
    EXPECT_EQ(at("Pages"), 0);
    EXPECT_EQ(at("Rescan"), 1) << order.join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(at("Choose folder…"), 2);
    EXPECT_GT(at("Up one folder"), at("Choose folder…"));
    const qsizetype pictureAt = order.indexOf(picture().accessibleName());
    EXPECT_GT(pictureAt, at("Up one folder"));
    EXPECT_GT(at("Explore: client-app"), pictureAt);
    EXPECT_GT(at("Explore: mobile"), at("Explore: client-app"));
    EXPECT_EQ(at("How this scan works"), order.size() - 1) << order.join(QStringLiteral(" | ")).toStdString();
}

}  // namespace kestrune
