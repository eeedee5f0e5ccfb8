#include "ui/QtAlertPresenter.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <functional>

#include "ui/AlertDialog.h"
#include "ui/Button.h"
#include "ui/ScrollArea.h"

namespace kestrune {

namespace {

Alert question(int items) {
    Alert alert;
    alert.style = AlertStyle::warning;
    alert.symbol = "trash";
    alert.messageText = "Move the items to Trash?";
    for (int index = 0; index < items; ++index) {
        alert.items.push_back(
            {"Gradle & Caches <b>" + std::to_string(index) + "</b>", "6.31 GB", "Downloaded packages"});
    }
    alert.text = "Close the tools using these files first.";
    alert.buttons = {"Move to Trash", "Something else", "Cancel"};
    return alert;
}

std::size_t answerTo(const Alert& alert, const std::function<void(AlertDialog&)>& act) {
    QTimer::singleShot(0, [&act] {
        auto* dialog = qobject_cast<AlertDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        QApplication::processEvents();
        act(*dialog);
    });
    QtAlertPresenter presenter([] { return nullptr; });
    return presenter.present(alert);
}

}  // namespace

TEST(QtAlertPresenter, escapeAnswersTheLastButton) {
    EXPECT_EQ(answerTo(question(1), [](AlertDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }), 2U);
}

TEST(QtAlertPresenter, closingAnswersTheLastButton) {
    EXPECT_EQ(answerTo(question(1), [](AlertDialog& dialog) { dialog.close(); }), 2U);
}

TEST(QtAlertPresenter, returnPressesTheDefaultButton) {
    EXPECT_EQ(answerTo(question(1),
                       [](AlertDialog& dialog) {
                           QTest::keyClick(
                               QApplication::focusWidget() == nullptr ? &dialog : QApplication::focusWidget(),
                               Qt::Key_Return);
                       }),
              0U);
}

TEST(QtAlertPresenter, everyButtonAnswersItsPlace) {
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(answerTo(question(1), [index](AlertDialog& dialog) { dialog.buttons().at(index)->click(); }), index);
    }
}

TEST(QtAlertPresenter, alertWhoseWindowGoesAwayAnswersTheLastButton) {
    auto* window = new QWidget;
    window->show();
    QTimer::singleShot(0, [window] { delete window; });
    QtAlertPresenter presenter([window] { return window; });
    EXPECT_EQ(presenter.present(question(1)), 2U);
}

TEST(AlertDialog, saysWhatItIsAndAllOfItsText) {
    const AlertDialog dialog(question(2));
    QAccessibleInterface* piece = QAccessible::queryAccessibleInterface(const_cast<AlertDialog*>(&dialog));
    EXPECT_EQ(piece->role(), QAccessible::AlertMessage);
    EXPECT_EQ(piece->text(QAccessible::Name), QStringLiteral("Move the items to Trash?"));
    EXPECT_TRUE(piece->text(QAccessible::Description).contains(QStringLiteral("• Gradle & Caches <b>1</b> — 6.31 GB")));
    EXPECT_EQ(dialog.buttons().front()->label(), QStringLiteral("Move to Trash"));
}

TEST(AlertDialog, foreignTextStaysPlain) {
    AlertDialog dialog(question(1));
    const auto labels = dialog.findChildren<QLabel*>();
    ASSERT_GE(labels.size(), 4);
    for (const QLabel* label : labels) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
    }
}

TEST(AlertDialog, manyItemsScrollAndTheButtonsStayInView) {
    AlertDialog few(question(8));
    EXPECT_EQ(few.findChild<ScrollArea*>(), nullptr);
    AlertDialog many(question(20));
    many.show();
    QApplication::processEvents();
    ASSERT_NE(many.findChild<ScrollArea*>(), nullptr);
    EXPECT_LT(many.height(), 640);
    for (const Button* button : many.buttons()) {
        EXPECT_TRUE(many.rect().contains(button->geometry()));
    }
}

TEST(AlertDialog, whatIsHigherThanTheScreenScrollsBetweenTitleAndButtons) {
    Alert lengthy;
    lengthy.messageText = "Quit node?";
    lengthy.text = "Save your work first.\n\nListening on: ";
    for (int port = 10'000; port < 20'000; ++port) {
        lengthy.text += "127.0.0.1:" + std::to_string(port) + ", ";
    }
    lengthy.text += "\n\nPID 5521";
    lengthy.buttons = {"Quit", "Cancel"};
    Alert both = question(20);
    both.text = lengthy.text;
    for (const Alert& alert : {lengthy, both}) {
        AlertDialog dialog(alert);
        dialog.show();
        QApplication::processEvents();
        const QSize room = dialog.screen()->availableSize();
        EXPECT_LE(dialog.frameGeometry().height(), room.height());
        EXPECT_LE(dialog.frameGeometry().width(), room.width());
        for (const Button* button : dialog.buttons()) {
            EXPECT_TRUE(dialog.rect().contains(button->geometry()));
        }
        const auto areas = dialog.findChildren<ScrollArea*>();
        ASSERT_EQ(areas.size(), 1);
        EXPECT_GT(areas.front()->height(), dialog.height() / 2);
        EXPECT_GT(areas.front()->verticalScrollBar()->maximum(), room.height());
        EXPECT_LT(areas.front()->geometry().bottom(), dialog.buttons().front()->geometry().top());
        QTest::keyClick(&dialog, Qt::Key_PageDown);
        EXPECT_GT(areas.front()->verticalScrollBar()->value(), 0);
    }
}

TEST(AlertDialog, whatScrollsIsNeverLaidOutForAnotherWidth) {
    Alert lengthy = question(20);
    AlertDialog list(lengthy);
    for (int word = 0; word < 2000; ++word) {
        lengthy.text += "127.0.0.1:3000, ";
    }
    AlertDialog both(lengthy);
    for (AlertDialog* dialog : {&list, &both}) {
        dialog->show();
        QApplication::processEvents();
        const auto* area = dialog->findChild<ScrollArea*>();
        ASSERT_NE(area, nullptr);
        EXPECT_EQ(area->widget()->minimumWidth(), area->viewport()->width());
        EXPECT_EQ(area->widget()->width(), area->viewport()->width());
    }
}

TEST(AlertDialog, longTextMakesItHigherInsteadOfBeingCut) {
    Alert alert = question(1);
    AlertDialog brief(alert);
    brief.show();
    for (int repeat = 0; repeat < 10; ++repeat) {
        alert.text += " Close the tools using these files first, and then come back to this question.";
    }
    AlertDialog lengthy(alert);
    lengthy.show();
    QApplication::processEvents();
    EXPECT_GT(lengthy.height(), brief.height() + 100);
    EXPECT_EQ(lengthy.width(), brief.width());
}

}  // namespace kestrune
