#include "ui/Toggle.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "ui/Motion.h"
#include "ui/Theme.h"

namespace kestrune {

namespace {

class ToggleTest : public testing::Test {
protected:
    ToggleTest() {
        Motion::setReduced(false);
        toggle.show();
    }

    ~ToggleTest() override { Motion::setReduced(true); }

    /// Whether the knob's colour shows at the end of the switch where "on" is.
    [[nodiscard]] bool showsKnobAtTheEnd() {
        const QImage picture = toggle.grab().toImage();
        return picture.pixelColor(picture.width() - 10, picture.height() / 2) == Theme::colour(Colour::onAccent);
    }

    Toggle toggle{QStringLiteral("Reduce animations")};
};

}  // namespace

TEST_F(ToggleTest, whatTheStoreSaysShowsAtOnceAndAsksNobody) {
    const QSignalSpy asked(&toggle, &Toggle::asked);
    toggle.setOn(true);
    EXPECT_TRUE(toggle.isChecked());
    EXPECT_TRUE(showsKnobAtTheEnd());
    EXPECT_EQ(asked.count(), 0);
}

TEST_F(ToggleTest, switchingAsksAndMovesTheKnob) {
    const QSignalSpy asked(&toggle, &Toggle::asked);
    QTest::keyClick(&toggle, Qt::Key_Space);
    ASSERT_EQ(asked.count(), 1);
    EXPECT_TRUE(asked.at(0).at(0).toBool());
    EXPECT_FALSE(showsKnobAtTheEnd()) << "it is only about to move there";
    EXPECT_TRUE(QTest::qWaitFor([this] { return showsKnobAtTheEnd(); }));
}

TEST_F(ToggleTest, longLabelOfAStretchedSwitchTakesMoreLines) {
    toggle.setStretched();
    const int wide = toggle.labelHeight(600);
    EXPECT_GT(toggle.labelHeight(120), wide);
}

}  // namespace kestrune
