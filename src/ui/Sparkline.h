#pragma once

#include <QPointF>
#include <QRectF>
#include <QVector>

class QPainter;

namespace kestrune {

/// The course of a figure over the last minutes: x from 0 (oldest) to 1 (now), y from 0 to 1.
struct Sparkline {
    QVector<QPointF> line;
    QVector<QPointF> second;  ///< another figure on the same scale; may be empty

    bool operator==(const Sparkline&) const = default;

    void draw(QPainter& painter, const QRectF& box) const;
};

}  // namespace kestrune
