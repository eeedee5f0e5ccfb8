#include "ui/MetricTile.h"

#include <QPainter>
#include <algorithm>

#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int tileHeight = 120;
constexpr int padding = 16;
constexpr int narrowPadding = 14;
constexpr int symbolSize = 16;
constexpr int unitGap = 4;
constexpr int drawingWidth = 96;
constexpr int narrowDrawing = 56;
constexpr int smallestDrawing = 40;
constexpr int lineHeightOfChart = 32;
constexpr int barThickness = 6;
constexpr int steps = 3;

void paintLevel(QPainter& painter, const QRectF& box, int lit) {
    constexpr double gap = 4;
    const double width = (box.width() - gap * (steps - 1)) / steps;
    const Colour colour = lit >= steps ? Colour::danger : lit == 2 ? Colour::warning : Colour::success;
    for (int step = 0; step < steps; ++step) {
        const QRectF one(box.left() + step * (width + gap), box.top(), width, box.height());
        Paint::rounded(painter, one, box.height() / 2, Theme::colour(step < lit ? colour : Colour::track));
    }
}

}  // namespace

MetricTile::MetricTile(QWidget* parent) : Painted(parent) {
}

int MetricTile::fixedHeight() {
    const int lines = 2 * Metrics::lineHeight(FontRole::detail) + Metrics::lineHeight(FontRole::figure);
    return std::max(Metrics::px(tileHeight), lines + 2 * padding + 18);
}

QString MetricTile::accessibleValue() const {
    const bool sticks = m_content.unit.isEmpty() || m_content.unit == QLatin1String("%");
    return m_content.value + (sticks ? QString() : QStringLiteral(" ")) + m_content.unit;
}

void MetricTile::setContent(const TileContent& content) {
    if (m_content == content) {
        return;
    }
    m_content = content;
    setSpoken(QStringLiteral("%1, %2, %3").arg(content.title, accessibleValue(), content.detail));
    update();
}

void MetricTile::setNarrow(bool narrow) {
    if (m_narrow != narrow) {
        m_narrow = narrow;
        update();
    }
}

void MetricTile::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    Paint::card(painter, rect());
    const int side = m_narrow ? narrowPadding : padding;
    const QRect inner = rect().adjusted(side, padding, -side, -14);
    const int titleLine = Metrics::lineHeight(FontRole::detail);
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(inner.left(), inner.top() + (titleLine - symbol) / 2.0), m_content.symbol,
                Theme::colour(Colour::text2), symbol);
    const int titleLeft = inner.left() + symbol + 8;
    Paint::text(painter, QRect(titleLeft, inner.top(), inner.right() - titleLeft, titleLine), FontRole::detail,
                Theme::colour(Colour::text2), m_content.title);
    const QRect figure(inner.left(), inner.top() + titleLine + 10, inner.width(),
                       Metrics::lineHeight(FontRole::figure));
    paintValue(painter, figure);
    paintDrawing(painter, figure, valueWidth());
    const QRect detail(inner.left(), inner.bottom() + 1 - titleLine, inner.width(), titleLine);
    Paint::text(painter, detail, FontRole::detail, Theme::colour(Colour::text3), m_content.detail);
}

int MetricTile::valueWidth() const {
    if (!m_content.isKnown) {
        return Metrics::width(FontRole::heading, m_content.value);
    }
    const int unit = m_content.unit.isEmpty() ? 0 : unitGap + Metrics::width(FontRole::unit, m_content.unit);
    return Metrics::tabularWidth(FontRole::figure, m_content.value) + unit;
}

void MetricTile::paintValue(QPainter& painter, const QRect& line) const {
    if (!m_content.isKnown) {
        Paint::text(painter, line, FontRole::heading, Theme::colour(Colour::text2), m_content.value);
        return;
    }
    const int base = Paint::baseline(FontRole::figure, line.top(), line.height());
    painter.setPen(Theme::colour(Colour::text1));
    Metrics::drawTabular(painter, line.left(), base, FontRole::figure, m_content.value);
    if (!m_content.unit.isEmpty()) {
        const int left = line.left() + Metrics::tabularWidth(FontRole::figure, m_content.value) + unitGap;
        painter.setPen(Theme::colour(Colour::text2));
        Paint::word(painter, left, base, FontRole::unit, m_content.unit);
    }
}

void MetricTile::paintDrawing(QPainter& painter, const QRect& line, int valueWidth) const {
    const int room = line.width() - valueWidth - 8;
    const int width = std::min(Metrics::px(m_narrow ? narrowDrawing : drawingWidth), room);
    if (!m_content.isKnown || width < smallestDrawing) {
        return;
    }
    const auto box = [&](int height) {
        return QRectF(QRect(line.right() + 1 - width, line.top() + (line.height() - height) / 2, width, height));
    };
    if (const auto* chart = std::get_if<Sparkline>(&m_content.drawing)) {
        chart->draw(painter, box(Metrics::px(lineHeightOfChart)));
    } else if (const auto* bar = std::get_if<TileBar>(&m_content.drawing)) {
        Paint::bar(painter, box(Metrics::px(barThickness)), bar->share, Theme::colour(Colour::chartLine),
                   Theme::colour(Colour::track));
    } else if (const auto* level = std::get_if<TileLevel>(&m_content.drawing)) {
        paintLevel(painter, box(Metrics::px(barThickness)), level->steps);
    }
}

}  // namespace kestrune
