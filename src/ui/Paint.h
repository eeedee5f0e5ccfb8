#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

#include "ui/Metrics.h"
#include "ui/Theme.h"

class QPainter;

namespace kestrune::Paint {

/// Baseline of one line of text centred in a box.
[[nodiscard]] int baseline(FontRole role, int top, int height);

/// One line of text, centred vertically in box and elided where it ends, or in the middle when it is a path, when it
/// does not fit.
void text(QPainter& painter, const QRect& box, FontRole role, const QColor& colour, const QString& text,
          Qt::Alignment alignment = Qt::AlignLeft, Qt::TextElideMode elide = Qt::ElideRight);

/// text as wide as it is, from x on, its baseline at y; in the painter's pen.
void word(QPainter& painter, double x, double y, FontRole role, const QString& text);

/// The lines that text takes when it is broken at words to fit width; its own line breaks stay.
[[nodiscard]] QStringList wrapped(FontRole role, const QString& text, int width);

/// text on lines of the role's height, from the top of box down.
void paragraph(QPainter& painter, const QRect& box, FontRole role, const QColor& colour, const QString& text);

void rounded(QPainter& painter, const QRectF& box, double radius, const QColor& fill);

/// A card: its fill and its hairline edge.
void card(QPainter& painter, const QRect& box);

void hairline(QPainter& painter, int x, int y, int width);

/// The focus ring of what has no room around it.
void innerRing(QPainter& painter, const QRect& box, double radius);

/// colour with a share of black over it.
[[nodiscard]] QColor darkened(const QColor& colour, double share);

/// A bar of filled share (0 to 1), at least 2 pixels long when anything is filled.
void bar(QPainter& painter, const QRectF& box, double share, const QColor& fill, const QColor& track);

}  // namespace kestrune::Paint
