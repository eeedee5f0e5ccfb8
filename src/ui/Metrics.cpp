#include "ui/Metrics.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "ui/Mirror.h"

namespace kestrune::Metrics {

namespace {

struct Style {
    double size;
    double line;
    QFont::Weight weight;
    double tracking;
};

constexpr std::array<Style, 13> styles{{
    {34, 38, QFont::Normal, -1},      // figureLarge
    {28, 36, QFont::Normal, -0.6},    // figure
    {22, 28, QFont::DemiBold, -0.2},  // pageTitle
    {17, 24, QFont::DemiBold, 0},     // emptyTitle
    {15, 20, QFont::DemiBold, 0},     // heading
    {13, 18, QFont::Medium, 0},       // rowTitle
    {13, 18, QFont::Normal, 0},       // body
    {13, 18, QFont::DemiBold, 0},     // bodyStrong
    {12, 16, QFont::Normal, 0},       // detail
    {12, 16, QFont::DemiBold, 0},     // dayTitle
    {11, 14, QFont::Medium, 0},       // chip
    {15, 18, QFont::Normal, 0},       // unit
    {17, 20, QFont::Normal, 0},       // unitLarge
}};

constexpr double smallestText = 11;

struct Cell {
    QFont font;
    int line = 0;
    double digit = 0;   // width of the widest digit
    bool equal = true;  // the font's digits are equally wide already
};

struct State {
    double scale = 1;
    std::array<Cell, styles.size()> cells;
};

Cell cell(const Style& style, double scale) {
    Cell result;
    result.font = QApplication::font();
    result.font.setPixelSize(static_cast<int>(std::lround(std::max(smallestText, style.size * scale))));
    result.font.setWeight(style.weight);
    result.font.setLetterSpacing(QFont::AbsoluteSpacing, style.tracking * scale);
    const QFontMetricsF metrics(result.font);
    result.line =
        std::max(static_cast<int>(std::lround(style.line * scale)), static_cast<int>(std::ceil(metrics.height())));
    const double one = metrics.horizontalAdvance(QLatin1Char('0'));
    for (char digit = '0'; digit <= '9'; ++digit) {
        const double width = metrics.horizontalAdvance(QLatin1Char(digit));
        result.equal = result.equal && std::abs(width - one) < 0.01;
        result.digit = std::max(result.digit, width);
    }
    return result;
}

State measured() {
    State result;
    result.scale = std::clamp(QFontInfo(QApplication::font()).pixelSize() / 13.0, 0.9, 1.6);
    for (std::size_t index = 0; index < styles.size(); ++index) {
        result.cells[index] = cell(styles[index], result.scale);
    }
    return result;
}

State& state() {
    static State instance = measured();
    return instance;
}

const Cell& cellOf(FontRole role) {
    return state().cells[static_cast<std::size_t>(role)];
}

}  // namespace

double scale() {
    return state().scale;
}

int px(double length) {
    return static_cast<int>(std::lround(length * std::max(1.0, state().scale)));
}

const QFont& font(FontRole role) {
    return cellOf(role).font;
}

int lineHeight(FontRole role) {
    return cellOf(role).line;
}

int width(FontRole role, const QString& text) {
    return static_cast<int>(std::ceil(QFontMetricsF(font(role)).horizontalAdvance(text)));
}

int tabularWidth(FontRole role, const QString& text) {
    const Cell& style = cellOf(role);
    const QFontMetricsF metrics(style.font);
    if (style.equal) {
        return static_cast<int>(std::ceil(metrics.horizontalAdvance(text)));
    }
    double result = 0;
    for (const QChar character : text) {
        result += character.isDigit() ? style.digit : metrics.horizontalAdvance(character);
    }
    return static_cast<int>(std::ceil(result));
}

void drawTabular(QPainter& painter, double x, double y, FontRole role, const QString& text) {
    const Cell& style = cellOf(role);
    const QRectF box(x, y, tabularWidth(role, text), 0);
    const Mirror::Turn upright(painter, box, Mirror::isOn(painter));
    painter.setFont(style.font);
    // Letters that join, or run the other way, have to be drawn as a whole.
    if (style.equal || text.isRightToLeft()) {
        painter.setLayoutDirection(Qt::LayoutDirectionAuto);
        painter.drawText(QPointF(x, y), text);
        return;
    }
    const QFontMetricsF metrics(style.font);
    for (const QChar character : text) {
        const double own = metrics.horizontalAdvance(character);
        const double width = character.isDigit() ? style.digit : own;
        painter.drawText(QPointF(x + (width - own) / 2, y), QString(character));
        x += width;
    }
}

void reset() {
    state() = measured();
}

}  // namespace kestrune::Metrics
