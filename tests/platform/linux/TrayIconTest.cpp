#include "platform/linux/TrayIcon.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <set>

namespace kestrune {

namespace {

/// The rows of the picture's lower half that hold opaque light ink.
int inkedPixels(const QImage& image, const QRect& area) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            count += colour.alpha() > 200 && colour.lightness() > 200 ? 1 : 0;
        }
    }
    return count;
}

}  // namespace

TEST(TrayIcon, hasTheSizeAskedFor) {
    for (const int size : trayIconSizes) {
        EXPECT_EQ(trayIcon(size, 63, false).size(), QSize(size, size));
    }
}

TEST(TrayIcon, differsForEveryPercentage) {
    std::set<QByteArray> pictures;
    for (int percent = 0; percent <= 100; ++percent) {
        const QImage image = trayIcon(22, percent, false);
        pictures.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
    }
    EXPECT_EQ(pictures.size(), 101U);
}

TEST(TrayIcon, holdsBroomAndDigitsInLightInkAtTheSmallestSize) {
    const QImage image = trayIcon(22, 63, false);
    EXPECT_GT(inkedPixels(image, {0, 0, 22, 11}), 15);
    EXPECT_GT(inkedPixels(image, {0, 12, 22, 10}), 40);
}

TEST(TrayIcon, threeDigitsStayInside) {
    const QImage image = trayIcon(22, 100, false);
    EXPECT_EQ(inkedPixels(image, {0, 0, 1, 22}), 0);
    EXPECT_EQ(inkedPixels(image, {21, 0, 1, 22}), 0);
}

TEST(TrayIcon, anUpdateAddsInkBesideTheBroom) {
    const QRect beside(17, 0, 5, 11);
    EXPECT_EQ(inkedPixels(trayIcon(22, 63, false), beside), 0);
    EXPECT_GT(inkedPixels(trayIcon(22, 63, true), beside), 3);
}

TEST(TrayIcon, figuresOutOfRangeAreDrawnAsTheNearestOne) {
    EXPECT_EQ(trayIcon(22, 130, false), trayIcon(22, 100, false));
    EXPECT_EQ(trayIcon(22, -1, false), trayIcon(22, 0, false));
}

}  // namespace kestrune
