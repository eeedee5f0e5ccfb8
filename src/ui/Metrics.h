#pragma once

#include <QFont>
#include <QString>

class QPainter;

namespace kestrune {

enum class FontRole {
    figureLarge,
    figure,
    pageTitle,
    emptyTitle,
    heading,
    rowTitle,
    body,
    bodyStrong,
    detail,
    dayTitle,
    chip,
    unit,
    unitLarge
};

/// Sizes in device-independent pixels, from the platform's body font. Main thread.
namespace Metrics {

/// Body pixels ÷ 13, between 0.9 and 1.6.
[[nodiscard]] double scale();

/// A length of the design at this text size. Lengths grow with large text; they do not shrink with small text, so
/// that the grid and the hit areas stay.
[[nodiscard]] int px(double length);

[[nodiscard]] const QFont& font(FontRole role);

/// Distance from one line's top to the next; never less than the font needs.
[[nodiscard]] int lineHeight(FontRole role);

/// Width of text in whole pixels.
[[nodiscard]] int width(FontRole role, const QString& text);

/// Width of text with every digit as wide as the widest.
[[nodiscard]] int tabularWidth(FontRole role, const QString& text);

/// Draws text with every digit as wide as the widest, its baseline at y.
void drawTabular(QPainter& painter, double x, double y, FontRole role, const QString& text);

/// Reads the platform's font again.
void reset();

}  // namespace Metrics

}  // namespace kestrune
