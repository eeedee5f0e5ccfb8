#include "app/MainMenuBar.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>

#include <vector>

namespace kestrune {
namespace {

class MainMenuBarTest : public ::testing::Test {
protected:
    [[nodiscard]] QList<QAction*> lines(int menu) { return m_menus.bar().actions()[menu]->menu()->actions(); }

    /// The line with that key, wherever it is.
    QAction* lineWithKey(Qt::Key key) {
        for (const QAction* const menu : m_menus.bar().actions()) {
            for (QAction* const line : menu->menu()->actions()) {
                if (line->shortcut() == QKeySequence(Qt::CTRL | key)) {
                    return line;
                }
            }
        }
        return nullptr;
    }

    /// Shows field in front, with the focus.
    static void focus(QWidget& field) {
        field.show();
        field.activateWindow();
        field.setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&field));
        ASSERT_EQ(QApplication::focusWidget(), &field);
    }

    std::vector<MenuAction> m_performed;
    MainMenuBar m_menus{[this](MenuAction action) { m_performed.push_back(action); }};
};

TEST_F(MainMenuBarTest, thereAreFourMenusThatBelongToNoWindow) {
    QStringList titles;
    for (const QAction* const menu : m_menus.bar().actions()) {
        titles << menu->text();
    }
    EXPECT_EQ(titles,
              (QStringList{QString(), QStringLiteral("Edit"), QStringLiteral("Actions"), QStringLiteral("View")}));
    EXPECT_EQ(m_menus.bar().parentWidget(), nullptr);
    EXPECT_EQ(lines(0).size(), 1);
    EXPECT_EQ(lines(1).size(), 5);
    EXPECT_EQ(lines(2).size(), 6);
    EXPECT_EQ(lines(3).size(), 7);
}

TEST_F(MainMenuBarTest, theMenusHoldTheirLinesInOrder) {
    EXPECT_EQ(lines(0)[0]->text(), QStringLiteral("Quit Kestrune"));
    EXPECT_EQ(lines(1)[4]->text(), QStringLiteral("Select All"));
    EXPECT_EQ(lines(2)[0]->text(), QStringLiteral("Clear Cached Memory (Advanced)…"));
    EXPECT_EQ(lines(2)[3]->text(), QStringLiteral("Find What’s Using a Port…"));
    EXPECT_EQ(lines(3)[6]->text(), QStringLiteral("Check for Updates…"));
}

TEST_F(MainMenuBarTest, onlyTheRealQuitMayBeMovedByTheToolkit) {
    for (const QAction* const menu : m_menus.bar().actions()) {
        EXPECT_EQ(menu->menuRole(), QAction::NoRole) << menu->text().toStdString();
        for (const QAction* const line : menu->menu()->actions()) {
            const bool isQuit = line->text() == QStringLiteral("Quit Kestrune");
            EXPECT_EQ(line->menuRole(), isQuit ? QAction::QuitRole : QAction::NoRole) << line->text().toStdString();
        }
    }
}

TEST_F(MainMenuBarTest, everyKeyIsTheCommandKeyWithOneMore) {
    EXPECT_EQ(lines(0)[0]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    EXPECT_EQ(lines(1)[0]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Z));
    EXPECT_EQ(lines(3)[5]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    EXPECT_TRUE(lines(2)[4]->shortcut().isEmpty());
}

TEST_F(MainMenuBarTest, aCommandRunsOnceFromTheEventLoop) {
    lines(2)[1]->trigger();
    EXPECT_TRUE(m_performed.empty()) << "never while the menu is open";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_performed, std::vector{MenuAction::quickClean});
}

TEST_F(MainMenuBarTest, quittingAsksTheProgram) {
    lines(0)[0]->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_performed, std::vector{MenuAction::quit});
}

TEST_F(MainMenuBarTest, editingGoesToTheTextFieldWithTheFocus) {
    QLineEdit field;
    focus(field);
    field.insert(QStringLiteral("caches"));
    lineWithKey(Qt::Key_A)->trigger();
    EXPECT_EQ(field.selectedText(), QStringLiteral("caches"));
    lineWithKey(Qt::Key_C)->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("caches"));
    lineWithKey(Qt::Key_X)->trigger();
    EXPECT_TRUE(field.text().isEmpty());
    lineWithKey(Qt::Key_V)->trigger();
    EXPECT_EQ(field.text(), QStringLiteral("caches"));
    lineWithKey(Qt::Key_Z)->trigger();
    EXPECT_TRUE(field.text().isEmpty());
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_performed.empty());
}

TEST_F(MainMenuBarTest, aTextOfSeveralLinesIsEditedTheSameWay) {
    QPlainTextEdit field;
    focus(field);
    field.setPlainText(QStringLiteral("one\ntwo"));
    lineWithKey(Qt::Key_A)->trigger();
    lineWithKey(Qt::Key_X)->trigger();
    EXPECT_TRUE(field.toPlainText().isEmpty());
}

TEST_F(MainMenuBarTest, whatHasNothingToEditIsLeftAlone) {
    QApplication::clipboard()->setText(QStringLiteral("kept"));
    QLabel label(QStringLiteral("caches"));
    label.setFocusPolicy(Qt::StrongFocus);
    focus(label);
    lineWithKey(Qt::Key_C)->trigger();
    label.hide();
    QCoreApplication::processEvents();
    lineWithKey(Qt::Key_X)->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("kept"));
    EXPECT_TRUE(m_performed.empty());
}

}  // namespace
}  // namespace kestrune
