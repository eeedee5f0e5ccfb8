#include "app/TrayIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>

#include <algorithm>
#include <string>

namespace kestrune {

namespace {

// The picture is laid out on a grid of 22 units, the size at which it must stay legible.
constexpr double grid = 22;
constexpr double digitsTop = 11.2;
constexpr double digitStroke = 2.1;
constexpr double digitGap = 1.4;
constexpr double rimWidth = 1.5;

const QColor ink{0xFA, 0xFA, 0xFB};
const QColor rim{0x17, 0x18, 0x1A, 0xB4};

double digitWidth(char digit) {
    return digit == '1' ? 4.2 : 6.0;
}

/// The centre lines of digit in a box 10 units high.
QPainterPath digitLines(char digit) {
    QPainterPath path;
    switch (digit) {
        case '0':
            path.addRoundedRect(1, 1, 4, 8, 2, 2);
            break;
        case '1':
            path.moveTo(1, 2.6);
            path.lineTo(3, 1);
            path.lineTo(3, 9);
            break;
        case '2':
            path.moveTo(1, 3);
            path.cubicTo(1, 0.3, 5, 0.3, 5, 3.2);
            path.cubicTo(5, 5.2, 1, 7, 1, 9);
            path.lineTo(5, 9);
            break;
        case '3':
            path.moveTo(1, 1);
            path.lineTo(5, 1);
            path.lineTo(2.9, 4.3);
            path.cubicTo(5.9, 4.3, 5.7, 9, 2.8, 9);
            path.cubicTo(1.9, 9, 1.2, 8.6, 1, 7.8);
            break;
        case '4':
            path.moveTo(4, 9);
            path.lineTo(4, 1);
            path.lineTo(1, 6.6);
            path.lineTo(5.3, 6.6);
            break;
        case '5':
            path.moveTo(4.8, 1);
            path.lineTo(1.4, 1);
            path.lineTo(1.1, 4.6);
            path.cubicTo(3, 3.2, 5, 4.4, 5, 6.4);
            path.cubicTo(5, 9.4, 1.6, 9.8, 1, 7.8);
            break;
        case '6':
            path.moveTo(4.2, 1);
            path.cubicTo(2.2, 2, 1, 4.2, 1, 6.6);
            path.addEllipse(1, 4.5, 4, 4.5);
            break;
        case '7':
            path.moveTo(1, 1);
            path.lineTo(5, 1);
            path.lineTo(2.6, 9);
            break;
        case '8':
            path.addEllipse(1.2, 1, 3.6, 3.6);
            path.addEllipse(1, 4.6, 4, 4.4);
            break;
        default:
            path.addEllipse(1, 1, 4, 4.5);
            path.moveTo(5, 3.4);
            path.cubicTo(5, 5.8, 3.8, 8, 1.8, 9);
            break;
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
        path.addPath(stroked(digitLines(digit), digitStroke).translated(x, digitsTop));
        x += digitWidth(digit) + digitGap;
    }
    return path;
}

/// The outline of icons/tray-broom.svg on its own grid of 12 by 11 units.
QPainterPath broom() {
    QPainterPath path;
    path.moveTo(5, 1);
    path.cubicTo(5, 0.448, 5.448, 0, 6, 0);
    path.cubicTo(6.552, 0, 7, 0.448, 7, 1);
    path.lineTo(7, 4);
    path.lineTo(8, 4);
    path.cubicTo(8.552, 4, 9, 4.448, 9, 5);
    path.lineTo(9, 6);
    path.lineTo(3, 6);
    path.lineTo(3, 5);
    path.cubicTo(3, 4.448, 3.448, 4, 4, 4);
    path.lineTo(5, 4);
    path.closeSubpath();
    path.moveTo(3, 7);
    path.lineTo(9, 7);
    path.cubicTo(9.3, 8.5, 9.9, 9.8, 11, 11);
    for (const QPointF point : {QPointF{8, 11}, {8, 9}, {7, 9}, {7, 11}, {5, 11}, {5, 9}, {4, 9}, {4, 11}, {1, 11}}) {
        path.lineTo(point);
    }
    path.cubicTo(2.1, 9.8, 2.7, 8.5, 3, 7);
    path.closeSubpath();
    return path;
}

QPainterPath arrow() {
    QPainterPath lines;
    lines.moveTo(18.4, 9);
    lines.lineTo(18.4, 2);
    lines.moveTo(15.8, 4.6);
    lines.lineTo(18.4, 2);
    lines.lineTo(21, 4.6);
    return stroked(lines, 1.6);
}

}  // namespace

QImage trayIcon(int size, int percent, bool updateAvailable) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / grid, size / grid);
    QPainterPath shape = broom().translated(5, 0);
    shape.addPath(digits(percent));
    if (updateAvailable) {
        shape.addPath(arrow());
    }
    shape.setFillRule(Qt::WindingFill);
    painter.strokePath(shape, QPen(rim, rimWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(shape, ink);
    return image;
}

}  // namespace kestrune
