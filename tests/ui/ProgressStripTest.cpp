#include "ui/ProgressStrip.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QTest>

#include "ui/Motion.h"

namespace kestrune {

namespace {

/// Counts how often a widget is asked to draw or to take a step of its movement.
class StepCounter final : public QObject {
public:
    int steps = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        steps += event->type() == QEvent::Timer || event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

}  // namespace

TEST(ProgressStrip, tellsHowFarItIs) {
    ProgressStrip strip;
    strip.setProgress(QStringLiteral("Scanning supported locations…"), 3, 20);
    EXPECT_EQ(strip.accessibleName(), QStringLiteral("Scanning supported locations…"));
    EXPECT_EQ(strip.accessibleValue(), QStringLiteral("3 of 20"));
    EXPECT_EQ(strip.accessibleRole(), QAccessible::ProgressBar);
    strip.setProgress(QStringLiteral("Scanning supported locations…"), 0, 0);
    EXPECT_TRUE(strip.accessibleValue().isEmpty());
}

TEST(ProgressStrip, movesOnlyWhileItIsOnScreen) {
    Motion::setReduced(false);
    ProgressStrip strip;
    StepCounter counter;
    strip.installEventFilter(&counter);
    strip.show();
    EXPECT_TRUE(QTest::qWaitFor([&counter] { return counter.steps > 2; }));
    strip.hide();
    QApplication::processEvents();
    const int before = counter.steps;
    EXPECT_FALSE(QTest::qWaitFor([&] { return counter.steps > before; }, 150));
    Motion::setReduced(true);
}

}  // namespace kestrune
