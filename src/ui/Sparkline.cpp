#include "ui/Sparkline.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <cmath>

#include "ui/Theme.h"

namespace kestrune {

namespace {

constexpr double lineWidth = 1.5;
constexpr double secondWidth = 1.25;
constexpr double dot = 2.25;  // radius
constexpr int fewest = 2;

QPolygonF placed(const QVector<QPointF>& points, const QRectF& box) {
    // Room for the dot at the end and for the line's own breadth.
    const QRectF inner = box.adjusted(1, dot, -dot - 0.75, -1);
    QPolygonF result;
    for (const QPointF& point : points) {
        result.append({inner.left() + point.x() * inner.width(), inner.bottom() - point.y() * inner.height()});
    }
    return result;
}

}  // namespace

void Sparkline::draw(QPainter& painter, const QRectF& box) const {
    painter.setRenderHint(QPainter::Antialiasing);
    if (line.size() < fewest) {
        painter.fillRect(QRectF(box.left(), std::round(box.center().y()), box.width(), 2),
                         Theme::colour(Colour::track));
        return;
    }
    const QPolygonF first = placed(line, box);
    QPainterPath area;
    area.addPolygon(first);
    area.lineTo(first.last().x(), box.bottom());
    area.lineTo(first.first().x(), box.bottom());
    area.closeSubpath();
    painter.fillPath(area, Theme::colour(Colour::chartFill));
    painter.setBrush(Qt::NoBrush);
    if (second.size() >= fewest) {
        painter.setPen(QPen(Theme::colour(Colour::chartLine2), secondWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
        painter.drawPolyline(placed(second, box));
    }
    painter.setPen(QPen(Theme::colour(Colour::chartLine), lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.drawPolyline(first);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::colour(Colour::chartLine));
    painter.drawEllipse(first.last(), dot, dot);
}

}  // namespace kestrune
