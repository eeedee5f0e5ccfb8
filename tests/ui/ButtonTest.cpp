#include "ui/Button.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "ui/FocusRing.h"

namespace kestrune {

TEST(Button, ampersandIsTextAndNotAMnemonic) {
    const Button button(Button::Kind::primary, QStringLiteral("Review & move to Trash"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Review & move to Trash"));
    EXPECT_TRUE(button.shortcut().isEmpty());
}

TEST(Button, returnAndSpacePressIt) {
    Button button(Button::Kind::secondary, QStringLiteral("Scan now"));
    const QSignalSpy clicked(&button, &Button::clicked);
    QTest::keyClick(&button, Qt::Key_Return);
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
}

TEST(Button, isLargeEnoughToHit) {
    for (const auto kind : {Button::Kind::primary, Button::Kind::secondary, Button::Kind::quiet, Button::Kind::row}) {
        const Button button(kind, QStringLiteral("x"));
        EXPECT_GE(button.sizeHint().width(), 28);
        EXPECT_GE(button.sizeHint().height(), 28);
    }
}

TEST(Button, ownAccessibleNameSurvivesANewLabel) {
    Button button(Button::Kind::row, QStringLiteral("Exclude"));
    button.setAccessibleName(QStringLiteral("Exclude: Gradle Caches"));
    button.setLabel(QStringLiteral("Include again"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Exclude: Gradle Caches"));
}

TEST(Button, ringShowsForTheKeyboardAndNotForTheMouse) {
    QWidget window;
    auto* first = new Button(Button::Kind::secondary, QStringLiteral("One"), &window);
    auto* second = new Button(Button::Kind::secondary, QStringLiteral("Two"), &window);
    first->move(20, 20);
    second->move(120, 20);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    second->setFocus(Qt::MouseFocusReason);
    first->setFocus(Qt::TabFocusReason);
    const auto* ring = window.findChild<FocusRing*>();
    ASSERT_NE(ring, nullptr);
    EXPECT_TRUE(ring->isVisible());
    EXPECT_EQ(ring->geometry(), first->geometry().adjusted(-4, -4, 4, 4));
    second->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(ring->isVisible());
}

}  // namespace kestrune
