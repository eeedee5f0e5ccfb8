#pragma once

#include <QPoint>
#include <QString>

class QPainter;

namespace kestrune {

/// A small label beside a name.
struct Chip {
    enum class Kind { warning, success, muted };

    Kind kind = Kind::muted;
    QString text;

    [[nodiscard]] int width() const;
    [[nodiscard]] static int height();

    /// Draws the chip with its left edge at x, centred between top and top + lineHeight.
    void draw(QPainter& painter, int x, int top, int lineHeight) const;
};

}  // namespace kestrune
