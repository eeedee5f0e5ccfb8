#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

#include "ui/Motion.h"
#include "ui/Theme.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication app(argc, argv);
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
    kestrune::Theme::start();
    kestrune::Motion::setReduced(true);
    return RUN_ALL_TESTS();
}
