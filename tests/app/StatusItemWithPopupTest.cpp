#include "app/StatusItemWithPopup.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>

#include "app/StatusMenuModel.h"
#include "tests/fakes/FakeStatusItem.h"

namespace kestrune {

namespace {

/// A desktop that hands clicks to the program.
class StatusItemWithPopupTest : public ::testing::Test {
protected:
    StatusItemWithPopupTest() {
        m_item.start({.perform = [](MenuAction) {},
                      .menuWillOpen =
                          [this] {
                              ++m_openings;
                              m_model.refresh({.memoryPercent = 63, .freeDiskGB = 120});
                              m_item.update(m_model.content());
                          },
                      .toggleMenu = {},
                      .unavailable = {}});
        m_item.update(m_model.content());
    }

    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    FakeStatusItem m_desktop;
    StatusItemWithPopup m_item{m_desktop};
    StatusMenuModel m_model;
    int m_openings = 0;
};

}  // namespace

TEST_F(StatusItemWithPopupTest, aClickOpensTheMenuWithTheFiguresOfThatMomentAndTheNextClosesIt) {
    m_desktop.handlers.toggleMenu();
    EXPECT_EQ(m_openings, 1);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(openMenu()->actions().at(1)->text(), QStringLiteral("Memory 63% · 120 GB disk available"));
    m_desktop.handlers.toggleMenu();
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(StatusItemWithPopupTest, theOpenMenuAndTheDesktopsOwnItemFollowEachUpdate) {
    m_desktop.handlers.toggleMenu();
    m_model.refresh({.memoryPercent = 70, .freeDiskGB = 119});
    m_item.update(m_model.content());
    EXPECT_EQ(openMenu()->actions().at(1)->text(), QStringLiteral("Memory 70% · 119 GB disk available"));
    EXPECT_EQ(m_desktop.content, m_model.content());
}

TEST_F(StatusItemWithPopupTest, itIsShownWhereTheDesktopShowsIt) {
    EXPECT_TRUE(m_item.isShown());
    m_desktop.shown = false;
    EXPECT_FALSE(m_item.isShown());
}

}  // namespace kestrune
