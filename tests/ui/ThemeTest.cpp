#include "ui/Theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QPalette>
#include <algorithm>

namespace kestrune {

TEST(Theme, everyTextReadsOnEveryGround) {
    for (const bool dark : {false, true}) {
        Theme::setDark(dark);
        for (const Colour text : {Colour::text1, Colour::text2, Colour::text3, Colour::accentText}) {
            for (const Colour ground : {Colour::window, Colour::card, Colour::cardHover}) {
                EXPECT_GE(Theme::contrast(Theme::colour(text), Theme::colour(ground)), 4.5)
                    << "dark " << dark << " text " << static_cast<int>(text) << " on " << static_cast<int>(ground);
            }
        }
        EXPECT_GE(Theme::contrast(Theme::colour(Colour::border), Theme::colour(Colour::card)), 3.0);
    }
    Theme::setDark(false);
}

TEST(Theme, everyTileCanBeReadAndEveryBarCanBeSeen) {
    for (const bool dark : {false, true}) {
        Theme::setDark(dark);
        for (int rank = 0; rank <= 8; ++rank) {
            EXPECT_GE(Theme::contrast(Theme::rankInk(), Theme::rankFill(rank)), 4.5) << "dark " << dark << rank;
            EXPECT_GE(Theme::contrast(Theme::rankStrong(rank), Theme::colour(Colour::card)), 3.0)
                << "dark " << dark << rank;
        }
    }
    Theme::setDark(false);
}

TEST(Theme, ranksHaveColoursOfTheirOwnInLightAndDarkUpToTheNinth) {
    EXPECT_EQ(Theme::rankFill(0), QColor(0xB6, 0xD3, 0xEB));
    EXPECT_EQ(Theme::rankStrong(7), QColor(0xBA, 0x7D, 0x7D));
    for (int rank = 0; rank < 8; ++rank) {
        EXPECT_NE(Theme::rankFill(rank), Theme::rankFill(rank + 1));
        EXPECT_NE(Theme::rankStrong(rank), Theme::rankStrong(rank + 1));
    }
    for (const int rank : {9, 12, 200, -1}) {
        EXPECT_EQ(Theme::rankFill(rank), Theme::rankFill(8)) << rank;
        EXPECT_EQ(Theme::rankStrong(rank), Theme::rankStrong(8)) << rank;
    }
    Theme::setDark(true);
    EXPECT_EQ(Theme::rankFill(0), QColor(0x1E, 0x4F, 0x7C));
    EXPECT_EQ(Theme::rankStrong(8), QColor(0x7A, 0x7F, 0x8A));
    Theme::setDark(false);
}

TEST(Theme, aDisabledMenuLineIsQuieterThanTheOthersInTheDarkToo) {
    Theme::setDark(true);
    QMenu menu;
    menu.addAction(QStringLiteral("Kestrune"))->setEnabled(false);
    const QImage picture = menu.grab().toImage();
    int brightest = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            brightest = std::max(brightest, picture.pixelColor(x, y).lightness());
        }
    }
    EXPECT_LE(brightest, Theme::colour(Colour::text3).lightness());
    EXPECT_GT(brightest, Theme::colour(Colour::border).lightness());
    Theme::setDark(false);
}

TEST(Theme, changesThePaletteOfTheWholeApplicationLive) {
    Theme::setDark(true);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), Theme::colour(Colour::window));
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 128);
    Theme::setDark(false);
    EXPECT_GT(QApplication::palette().color(QPalette::Window).lightness(), 128);
}

TEST(Theme, anyHighlightBecomesAReadableAccent) {
    for (const QRgb highlight : {0xFFFFE000U, 0xFF00FF00U, 0xFF000080U, 0xFFED5B00U, 0xFFE6007EU}) {
        for (const bool dark : {false, true}) {
            const Theme::Accent accent = Theme::accentFrom(QColor::fromRgb(highlight), dark);
            const QColor card = dark ? QColor(0x25, 0x27, 0x2B) : QColor(Qt::white);
            EXPECT_GE(Theme::contrast(accent.fill, accent.onFill), 4.5) << std::hex << highlight;
            EXPECT_GE(Theme::contrast(accent.text, card), 4.5) << std::hex << highlight << dark;
        }
    }
}

TEST(Theme, blackOnWhiteContrastsAsFarAsItGoes) {
    EXPECT_NEAR(Theme::contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(Theme::contrast(Qt::white, Qt::white), 1, 0.01);
}

}  // namespace kestrune
