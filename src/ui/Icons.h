#pragma once

#include <QColor>
#include <QPixmap>
#include <QPointF>
#include <QString>

class QPainter;
class QRect;

namespace kestrune::Icons {

/// The symbol called name in one colour, size device-independent pixels wide and high, sharp at ratio device pixels to
/// each of them. A symbol from 40 pixels on is drawn with a thinner line. Main thread.
[[nodiscard]] QPixmap pixmap(const QString& name, const QColor& colour, int size, double ratio);

/// Draws the symbol with its top left corner at place, on whole device pixels.
void draw(QPainter& painter, QPointF place, const QString& name, const QColor& colour, int size);

}  // namespace kestrune::Icons
