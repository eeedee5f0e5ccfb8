#include "ui/IconPicture.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

namespace kestrune {

namespace {

QByteArray svg(const QByteArray& content, const QByteArray& before = {}) {
    return before +
           "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"0 0 10 "
           "10\">" +
           content + "</svg>";
}

QByteArray png(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

QColor middleOf(const QPixmap& picture) {
    return picture.toImage().pixelColor(14, 14);
}

const QByteArray redSquare = R"(<rect width="10" height="10" fill="red"/>)";

}  // namespace

TEST(IconPicture, shapesOfADrawingAreDrawn) {
    const QPixmap picture = IconPicture::made(svg(redSquare), 28);
    EXPECT_EQ(picture.size(), QSize(28, 28));
    EXPECT_EQ(middleOf(picture), QColor(Qt::red));
}

TEST(IconPicture, whatDrawingProgramsWriteIsHarmless) {
    const QByteArray doctype =
        "<?xml version=\"1.0\"?><!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" "
        "\"http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd\">";
    const QByteArray plain = R"(<path style="fill:#fff;stroke-dasharray: none;opacity:1" d="M0 0L9 9z"/>)";
    EXPECT_TRUE(IconPicture::isHarmless(svg(plain.repeated(200), doctype)));
    EXPECT_TRUE(
        IconPicture::isHarmless(svg(R"(<path stroke-dasharray="none" d="M0 0L9 9z"/>)" + redSquare.repeated(99))));
    EXPECT_TRUE(IconPicture::isHarmless(svg(R"(<path stroke-dasharray="1,2" d="M0 0L9 9z"/>)")));
    EXPECT_TRUE(IconPicture::isHarmless(svg(R"(<defs><g id="a"><path d="M0 0L9 9z"/></g><linearGradient id="b"/>)"
                                            R"(<linearGradient id="c" xlink:href="#b"/></defs>)"
                                            R"(<use xlink:href="#a"/><g id="d"><use href="#a"/></g>)")));
}

TEST(IconPicture, aDrawingThatLeadsToAnotherFileIsRefused) {
    for (const char* content :
         {R"(<image xlink:href="/tmp/pipe" width="10" height="10"/>)", R"(<image href="data:image/png;base64,AAAA"/>)",
          R"(<use xlink:href="other.svg#a"/>)", R"(<g><a xlink:href="file:///tmp/pipe"/></g>)"}) {
        EXPECT_FALSE(IconPicture::isHarmless(svg(content))) << content;
        EXPECT_TRUE(IconPicture::made(svg(content), 28).isNull()) << content;
    }
}

TEST(IconPicture, aDrawingThatGrowsWhenItIsReadIsRefused) {
    EXPECT_FALSE(IconPicture::isHarmless(svg("<g>&a;</g>", R"(<!DOCTYPE svg [<!ENTITY a "aaaa">]>)")));
    EXPECT_FALSE(IconPicture::isHarmless(svg("<text>W</text>")));
    EXPECT_FALSE(IconPicture::isHarmless(
        svg(R"(<g id="a"><path d="M0 0"/></g><g id="b"><use xlink:href="#a"/></g><use xlink:href="#b"/>)")));
    EXPECT_FALSE(IconPicture::isHarmless(svg(R"(<g id="a"><use xlink:href="#a"/></g>)")));
    EXPECT_FALSE(IconPicture::isHarmless(
        svg(R"(<g id="a">)" + redSquare.repeated(200) + "</g>" + QByteArray(R"(<use href="#a"/>)").repeated(100))));
}

TEST(IconPicture, aDrawingOfMoreThanAnIconNeedsIsRefused) {
    EXPECT_FALSE(IconPicture::isHarmless(svg(QByteArray("<g/>").repeated(5'000))));
    EXPECT_FALSE(IconPicture::isHarmless(svg(QByteArray("<g>").repeated(64) + QByteArray("</g>").repeated(64))));
    EXPECT_FALSE(IconPicture::isHarmless(svg(redSquare + QByteArray(1 << 18, ' '))));
    for (const char* dashed : {R"(<g stroke-dasharray=".01"/>)", R"(<g style="a:b; stroke-dasharray : .01"/>)",
                               R"(<g style="stroke-dasharray:none;stroke-dasharray:1"/>)",
                               R"(<style>circle { stroke-dasharray: .01 }</style>)"}) {
        EXPECT_FALSE(IconPicture::isHarmless(svg(dashed + redSquare.repeated(63)))) << dashed;
    }
}

TEST(IconPicture, whatIsNoDrawingIsRefused) {
    for (const QByteArray& file : {QByteArray(), QByteArray("not a picture"), QByteArray("GIF89a\xff\xff\xff\xff"),
                                   QByteArray("\x1f\x8b\x08"), svg(redSquare).chopped(3)}) {
        EXPECT_TRUE(IconPicture::made(file, 28).isNull()) << file.constData();
    }
}

TEST(IconPicture, aPhotoIsScaledToFit) {
    const QPixmap picture = IconPicture::made(png(1024, 512), 28);
    EXPECT_EQ(picture.size(), QSize(28, 14));
    EXPECT_EQ(picture.toImage().pixelColor(14, 7), QColor(Qt::red));
}

TEST(IconPicture, aPhotoOfMorePixelsOrBytesThanAnIconHasIsRefused) {
    EXPECT_TRUE(IconPicture::made(png(1025, 1), 28).isNull());
    EXPECT_TRUE(IconPicture::made(png(1, 1025), 28).isNull());
    EXPECT_TRUE(IconPicture::made(png(8, 8).left(20), 28).isNull());
    EXPECT_TRUE(IconPicture::made(png(8, 8) + QByteArray(1 << 20, '\0'), 28).isNull());
    EXPECT_FALSE(IconPicture::made(png(8, 8), 28).isNull());
}

}  // namespace kestrune
