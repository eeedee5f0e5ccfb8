#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

#include "ui/Motion.h"
#include "ui/Theme.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Also when the tests are only listed, which the build does without a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
    kestrune::Theme::start();
    kestrune::Motion::setReduced(true);
    return RUN_ALL_TESTS();
}
