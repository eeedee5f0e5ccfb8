#pragma once

#include <QImage>

#include <array>

namespace kestrune {

/// Sizes in pixels that panels ask for.
inline constexpr std::array<int, 6> trayIconSizes{22, 24, 32, 44, 48, 64};

/// A square tray picture: the broom above, percent in bold digits below, and an arrow beside the broom while an
/// update waits. Digits are drawn as strokes, so that no font has to be loaded for them. Light ink with a dark rim
/// stands out from light and dark panels alike.
[[nodiscard]] QImage trayIcon(int size, int percent, bool updateAvailable);

}  // namespace kestrune
