#pragma once

#include <QColor>

namespace kestrune {

/// The roles every colour on screen comes from.
enum class Colour {
    window,
    sidebar,
    sideHover,
    sideSelected,
    card,
    cardHover,
    control,
    controlHover,
    text1,
    text2,
    text3,
    separator,
    border,
    accent,
    accentHover,
    accentText,
    onAccent,
    tint,
    success,
    successTint,
    warning,
    warningTint,
    danger,
    dangerTint,
    track,
    chartLine,
    chartFill,
    chartLine2,
};

/// The light and the dark set of colours, with the desktop's highlight as accent where it has one of its own. Changing
/// the set repaints every widget through the application's palette. Main thread.
namespace Theme {

/// Takes light or dark and the accent from the application's palette; only the first call does anything.
void start();

/// The desktop's choice once it is known, and whenever it changes.
void setDark(bool dark);
[[nodiscard]] bool isDark();

[[nodiscard]] QColor colour(Colour role);

/// Colours of an item by its place among its siblings, 0 being the largest: what fills its tile, and the stronger one
/// of the tile's edge and the item's bar. From place 8 on they are quiet and the same, as for a negative place: none.
[[nodiscard]] QColor rankFill(int rank);
[[nodiscard]] QColor rankStrong(int rank);

/// Text on any rankFill().
[[nodiscard]] QColor rankInk();

/// Contrast of two opaque colours by WCAG 2: 1 to 21.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

/// The colours that follow from an accent.
struct Accent {
    QColor fill;
    QColor hover;
    QColor text;
    QColor onFill;
    QColor tint;
};

/// An accent made from the desktop's highlight, moved in lightness until its pairs reach 4.5:1.
[[nodiscard]] Accent accentFrom(const QColor& highlight, bool dark);

}  // namespace Theme

}  // namespace kestrune
