#include "app/StatusMenuPopup.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QTest>

#include <vector>

#include "ui/UiText.h"

namespace kestrune {

namespace {

/// The menu that is open now.
QMenu* openMenu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

class StatusMenuPopupTest : public ::testing::Test {
protected:
    StatusMenuPopupTest() {
        m_model.refresh({.memoryPercent = 63});
        m_popup.toggle(m_model.items());
    }

    StatusMenuModel m_model;
    std::vector<MenuAction> m_performed;
    StatusMenuPopup m_popup{[this](MenuAction action) { m_performed.push_back(action); }};
};

}  // namespace

TEST_F(StatusMenuPopupTest, showsEveryLineWithTooltipAndShortcut) {
    ASSERT_NE(openMenu(), nullptr);
    const QList<QAction*> actions = openMenu()->actions();
    ASSERT_EQ(actions.size(), 23);
    EXPECT_TRUE(openMenu()->toolTipsVisible());
    EXPECT_TRUE(actions[3]->isSeparator());
    EXPECT_EQ(actions[4]->toolTip(),
              QStringLiteral(
                  "Review files your developer tools can build or download again, then choose what goes to Trash."));
    EXPECT_EQ(actions[4]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_L));
    EXPECT_FALSE(actions[2]->isVisible());
    EXPECT_TRUE(actions[15]->isCheckable());
    EXPECT_EQ(actions[19]->text(), QStringLiteral("⚙️ Settings && Help…"));
}

TEST_F(StatusMenuPopupTest, aChosenItemRunsItsCommandOnce) {
    openMenu()->actions()[10]->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_performed, std::vector{MenuAction::openOverview});
}

TEST_F(StatusMenuPopupTest, aClickOnALineRunsItsCommandThoughTheMenuGoes) {
    QMenu* menu = openMenu();
    ASSERT_NE(menu, nullptr);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions()[10]).center());
    EXPECT_EQ(openMenu(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_performed, std::vector{MenuAction::openOverview});
}

TEST_F(StatusMenuPopupTest, aSecondClickClosesTheMenu) {
    m_popup.toggle(m_model.items());
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(StatusMenuPopupTest, anOpenMenuFollowsTheFiguresButNoLineComesOrGoes) {
    m_model.refresh({.memoryPercent = 64, .message = "Done.", .isScanning = true});
    m_popup.update(m_model.items());
    const QList<QAction*> actions = openMenu()->actions();
    EXPECT_EQ(actions[1]->text(), QStringLiteral("Memory 64% · 0 GB disk available"));
    EXPECT_EQ(actions[4]->text(), QStringLiteral("🧹 Scanning Caches…"));
    EXPECT_FALSE(actions[4]->isEnabled());
    EXPECT_FALSE(actions[2]->isVisible());
}

TEST_F(StatusMenuPopupTest, aLongMessageIsCutAndExplainedByItsTooltip) {
    m_popup.toggle(m_model.items());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const std::string message(400, 'm');
    m_model.refresh({.message = message});
    m_popup.toggle(m_model.items());
    ASSERT_NE(openMenu(), nullptr);
    const QAction* line = openMenu()->actions()[2];
    EXPECT_TRUE(line->isVisible());
    EXPECT_LT(line->text().size(), 200);
    EXPECT_EQ(line->toolTip(), QString::fromStdString(message));
}

TEST_F(StatusMenuPopupTest, foreignNamesInTheMessageAreShownAsTheyAre) {
    m_popup.toggle(m_model.items());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_model.refresh({.message = "Close R&D <b>Tool</b>\t_x_ first."});
    m_popup.toggle(m_model.items());
    ASSERT_NE(openMenu(), nullptr);
    const QAction* line = openMenu()->actions()[2];
    EXPECT_EQ(line->text(), QStringLiteral("Close R&&D <b>Tool</b> _x_ first."));
    EXPECT_EQ(line->toolTip(), asToolTip(QStringLiteral("Close R&D <b>Tool</b>\t_x_ first.")));
    m_model.refresh({.message = "Close R&D first."});
    m_popup.update(m_model.items());
    EXPECT_EQ(line->text(), QStringLiteral("Close R&&D first."));
    EXPECT_EQ(line->toolTip(), QStringLiteral("Close R&D first."));
}

}  // namespace kestrune
