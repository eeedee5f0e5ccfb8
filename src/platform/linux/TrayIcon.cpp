#include "platform/linux/TrayIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <QTransform>

#include <algorithm>
#include <array>
#include <locale>
#include <sstream>
#include <string>

namespace kestrune {

namespace {

// The picture is laid out on a grid of 22 units, the size at which it must stay legible.
constexpr double grid = 22;
constexpr double broomWidth = 12;
constexpr double broomScale = 0.82;
constexpr double broomTop = 0.6;
constexpr double digitsTop = 11.2;
constexpr double digitStroke = 2.1;
constexpr double digitGap = 1.4;
constexpr double arrowStroke = 1.6;
constexpr double rimWidth = 1.5;

const QColor ink{0xFA, 0xFA, 0xFB};
const QColor rim{0x17, 0x18, 0x1A, 0xB4};

double digitWidth(char digit) {
    return digit == '1' ? 4.2 : 6.0;
}

// Paths: "M x y" goes to a point, "L x y" draws a line to one, "C x1 y1 x2 y2 x y" a curve, "E x y w h" an ellipse.

// The centre lines of the digits in a box 10 units high.
constexpr std::array<const char*, 10> digitLines{
    "M 1 3 C 1 0.3 5 0.3 5 3 L 5 7 C 5 9.7 1 9.7 1 7 L 1 3",
    "M 1 2.6 L 3 1 L 3 9",
    "M 1 3 C 1 0.3 5 0.3 5 3.2 C 5 5.2 1 7 1 9 L 5 9",
    "M 1 1 L 5 1 L 2.9 4.3 C 5.9 4.3 5.7 9 2.8 9 C 1.9 9 1.2 8.6 1 7.8",
    "M 4 9 L 4 1 L 1 6.6 L 5.3 6.6",
    "M 4.8 1 L 1.4 1 L 1.1 4.6 C 3 3.2 5 4.4 5 6.4 C 5 9.4 1.6 9.8 1 7.8",
    "M 4.2 1 C 2.2 2 1 4.2 1 6.6 E 1 4.5 4 4.5",
    "M 1 1 L 5 1 L 2.6 9",
    "E 1.2 1 3.6 3.6 E 1 4.6 4 4.4",
    "E 1 1 4 4.5 M 5 3.4 C 5 5.8 3.8 8 1.8 9",
};

// The outline of icons/tray-broom.svg on its own grid of 12 by 11 units.
constexpr const char* broomOutline =
    "M 5 1 C 5 0.448 5.448 0 6 0 C 6.552 0 7 0.448 7 1 L 7 4 L 8 4 C 8.552 4 9 4.448 9 5 L 9 6 L 3 6 L 3 5 "
    "C 3 4.448 3.448 4 4 4 L 5 4 L 5 1 "
    "M 3 7 L 9 7 C 9.3 8.5 9.9 9.8 11 11 L 8 11 L 8 9 L 7 9 L 7 11 L 5 11 L 5 9 L 4 9 L 4 11 L 1 11 "
    "C 2.1 9.8 2.7 8.5 3 7";

constexpr const char* arrowLines = "M 18.4 9 L 18.4 2 M 15.8 4.6 L 18.4 2 L 21 4.6";

QPainterPath pathFrom(const char* description) {
    std::istringstream stream(description);
    stream.imbue(std::locale::classic());
    QPainterPath path;
    char command = 0;
    std::array<double, 6> n{};
    while (stream >> command >> n[0] >> n[1]) {
        if (command == 'M') {
            path.moveTo(n[0], n[1]);
        } else if (command == 'L') {
            path.lineTo(n[0], n[1]);
        } else if (command == 'E') {
            stream >> n[2] >> n[3];
            path.addEllipse(n[0], n[1], n[2], n[3]);
        } else {
            stream >> n[2] >> n[3] >> n[4] >> n[5];
            path.cubicTo(n[0], n[1], n[2], n[3], n[4], n[5]);
        }
    }
    return path;
}

QPainterPath stroked(const QPainterPath& lines, double width) {
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(lines);
}

QPainterPath digits(int percent) {
    const std::string text = std::to_string(std::clamp(percent, 0, 100));
    double width = -digitGap;
    for (const char digit : text) {
        width += digitWidth(digit) + digitGap;
    }
    QPainterPath path;
    double x = (grid - width) / 2;
    for (const char digit : text) {
        path.addPath(
            stroked(pathFrom(digitLines[static_cast<std::size_t>(digit - '0')]), digitStroke).translated(x, digitsTop));
        x += digitWidth(digit) + digitGap;
    }
    return path;
}

}  // namespace

QImage trayIcon(int size, int percent, bool updateAvailable) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / grid, size / grid);
    QPainterPath shape = QTransform::fromScale(broomScale, broomScale).map(pathFrom(broomOutline));
    shape.translate((grid - broomWidth * broomScale) / 2, broomTop);
    shape.addPath(digits(percent));
    if (updateAvailable) {
        shape.addPath(stroked(pathFrom(arrowLines), arrowStroke));
    }
    shape.setFillRule(Qt::WindingFill);
    painter.strokePath(shape, QPen(rim, rimWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(shape, ink);
    return image;
}

}  // namespace kestrune
