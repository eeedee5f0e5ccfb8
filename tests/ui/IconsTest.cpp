#include "ui/Icons.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>

#include "ui/UiText.h"
#include "workspace/WorkspacePage.h"

namespace kestrune {

namespace {

int inked(const QImage& image, const QColor& colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            count += pixel.alpha() > 200 && pixel.rgb() == colour.rgb() ? 1 : 0;
        }
    }
    return count;
}

}  // namespace

TEST(Icons, everyPageHasItsSymbolInTheProgram) {
    for (const WorkspacePage page : allWorkspacePages) {
        EXPECT_TRUE(QFile::exists(QStringLiteral(":/icons/%1.svg").arg(shown(symbol(page))))) << symbol(page);
    }
}

TEST(Icons, symbolIsDrawnInTheColourAskedFor) {
    const QImage red = Icons::pixmap(QStringLiteral("trash"), Qt::red, 48, 1).toImage();
    EXPECT_GT(inked(red, Qt::red), 20);
    EXPECT_EQ(inked(red, Qt::blue), 0);
}

TEST(Icons, symbolHasAPixelForEveryPixelOfAFineScreen) {
    const QPixmap fine = Icons::pixmap(QStringLiteral("trash"), Qt::red, 18, 2);
    EXPECT_EQ(fine.width(), 36);
    EXPECT_EQ(fine.deviceIndependentSize().toSize(), QSize(18, 18));
}

TEST(Icons, unknownSymbolIsEmptyInsteadOfBroken) {
    EXPECT_EQ(inked(Icons::pixmap(QStringLiteral("no.such.symbol"), Qt::red, 18, 1).toImage(), Qt::red), 0);
}

}  // namespace kestrune
