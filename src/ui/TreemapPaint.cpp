#include "ui/TreemapPaint.h"

#include <QTransform>
#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune::TreemapPaint {

namespace {

constexpr double radius = 4;
constexpr double edge = 1;
constexpr double outline = 2;
constexpr double selectionLine = 1;

constexpr int besideLabel = 9;
constexpr int aboveLabel = 7;
constexpr int besideFigure = 7;
constexpr int aboveFigure = 3;
constexpr int labelWidth = 74;
constexpr int labelHeight = 22;
constexpr int figureWidth = 54;
constexpr int figureHeight = 26;

// Tiles smaller than these show nothing of what is inside of them.
constexpr int insideFromWidth = 120;
constexpr int insideFromHeight = 104;
constexpr int aroundInside = 6;
constexpr double smallestInside = 4;
constexpr float insideFill = 0.18F;
constexpr float insideEdge = 0.55F;

struct Layer {
    QColor colour;
    double thickness;
};

// Lengths and places that fall on whole device pixels, also where a pixel of the design is one and a half of them.
class DeviceGrid final {
public:
    explicit DeviceGrid(const QPainter& painter) : m_transform(painter.deviceTransform()) {}

    [[nodiscard]] double length(double length) const {
        return std::max(1.0, std::round(length * m_transform.m11())) / m_transform.m11();
    }

    [[nodiscard]] double x(double x) const {
        return (std::round(x * m_transform.m11() + m_transform.dx()) - m_transform.dx()) / m_transform.m11();
    }

    [[nodiscard]] double y(double y) const {
        return (std::round(y * m_transform.m22() + m_transform.dy()) - m_transform.dy()) / m_transform.m22();
    }

    // cell without its gap. What is smaller than the gap is a pixel, and does not leave the picture.
    [[nodiscard]] QRectF box(const TreemapRectangle& cell) const {
        const double pixel = 1 / m_transform.m11();
        const double right = x(cell.x + cell.width) - length(gap);
        const double bottom = y(cell.y + cell.height) - length(gap);
        const double left = std::max(x(0), std::min(x(cell.x), right - pixel));
        const double top = std::max(y(0), std::min(y(cell.y), bottom - pixel));
        return {QPointF(left, top), QPointF(std::max(right, left + pixel), std::max(bottom, top + pixel))};
    }

private:
    QTransform m_transform;
};

// Rings one inside of the other, the outermost first, and what they hold.
void plate(QPainter& painter, QRectF box, std::initializer_list<Layer> rings, const QColor& fill) {
    double round = radius;
    const auto corner = [&] { return std::clamp(round, 0.0, std::min(box.width(), box.height()) / 2); };
    for (const Layer& ring : rings) {
        Paint::rounded(painter, box, corner(), ring.colour);
        box.adjust(ring.thickness, ring.thickness, -ring.thickness, -ring.thickness);
        round -= ring.thickness;
        if (box.width() <= 0 || box.height() <= 0) {
            return;
        }
    }
    Paint::rounded(painter, box, corner(), fill);
}

// The texts of a tile, as many as fit; answers where they end.
int label(QPainter& painter, const QRect& box, const ExplorerTile& tile, bool isMirrored) {
    const QColor ink = Theme::rankInk();
    const Qt::Alignment side = isMirrored ? Qt::AlignRight : Qt::AlignLeft;
    const QString size = shown(tile.size);
    const auto fits = [&](const QRect& line, FontRole role) { return Metrics::width(role, size) <= line.width(); };
    const int line = Metrics::lineHeight(FontRole::detail);
    if (box.width() >= Metrics::px(labelWidth) && box.height() >= std::max(Metrics::px(labelHeight), line)) {
        const int above = std::min(Metrics::px(aboveLabel), (box.height() - line) / 2);
        QRect text(box.left() + Metrics::px(besideLabel), box.top() + above, box.width() - 2 * Metrics::px(besideLabel),
                   line);
        Paint::text(painter, text, FontRole::dayTitle, ink, shown(tile.name), side);
        if (box.height() > Metrics::px(aboveLabel) + 2 * line && fits(text, FontRole::detail)) {
            text.translate(0, line);
            Paint::text(painter, text, FontRole::detail, ink, size, side);
        }
        return text.bottom() + 1;
    }
    if (box.width() >= Metrics::px(figureWidth) && box.height() >= Metrics::px(figureHeight)) {
        const int beside = Metrics::px(besideFigure);
        const QRect text(box.left() + beside, box.top() + Metrics::px(aboveFigure), box.width() - 2 * beside,
                         Metrics::lineHeight(FontRole::chip));
        if (fits(text, FontRole::chip)) {
            Paint::text(painter, text, FontRole::chip, ink, size, side);
        }
    }
    return box.bottom() + 1;
}

QColor withAlpha(QColor colour, float alpha) {
    colour.setAlphaF(alpha);
    return colour;
}

void inside(QPainter& painter, const DeviceGrid& grid, const QRectF& area, const ExplorerTile& tile, bool isMirrored) {
    std::vector<double> weights;
    weights.reserve(tile.inside.size());
    for (const ExplorerTile& one : tile.inside) {
        weights.push_back(static_cast<double>(one.bytes));
    }
    const QColor strong = Theme::rankStrong(tile.rank);
    const double width = area.width() + gap;
    const auto cells = squarified(weights, {0, 0, width, area.height() + gap});
    for (const TreemapRectangle& cell : cells) {
        TreemapRectangle placed = isMirrored ? mirrored(cell, width) : cell;
        placed.x += area.left();
        placed.y += area.top();
        const QRectF box = grid.box(placed);
        if (box.width() >= smallestInside && box.height() >= smallestInside) {
            plate(painter, box, {{withAlpha(strong, insideEdge), grid.length(edge)}}, Theme::rankFill(tile.rank));
            Paint::rounded(painter, box, radius, withAlpha(strong, insideFill));
        }
    }
}

}  // namespace

TreemapRectangle mirrored(const TreemapRectangle& cell, double width) {
    // The gap stays at the right of the cell.
    return {width - cell.x - cell.width, cell.y, cell.width, cell.height};
}

void tile(QPainter& painter, const ExplorerTile& tile, const TreemapRectangle& cell, const Marks& marks) {
    const DeviceGrid grid(painter);
    const QRectF box = grid.box(cell);
    const QColor fill = Theme::rankFill(tile.rank);
    const Layer line{Theme::colour(Colour::text1), grid.length(outline)};
    if (marks.isSelected) {
        plate(painter, box, {line, {Theme::colour(Colour::window), grid.length(selectionLine)}}, fill);
    } else if (marks.isOutlined) {
        plate(painter, box, {line}, fill);
    } else {
        plate(painter, box, {{Theme::rankStrong(tile.rank), grid.length(edge)}}, fill);
    }
    const int top = label(painter, box.toAlignedRect(), tile, marks.isMirrored);
    if (!tile.inside.empty() && box.width() >= Metrics::px(insideFromWidth) &&
        box.height() >= Metrics::px(insideFromHeight)) {
        const double around = Metrics::px(aroundInside);
        QRectF area = box.adjusted(around, 0, -around, -around);
        area.setTop(top + around);
        inside(painter, grid, area, tile, marks.isMirrored);
    }
}

}  // namespace kestrune::TreemapPaint
