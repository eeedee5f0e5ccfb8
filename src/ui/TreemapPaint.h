#pragma once

#include <QPainter>

#include "ui/TreemapLayout.h"
#include "workspace/ExplorerTiles.h"

namespace kestrune::TreemapPaint {

/// Between two tiles, in device-independent pixels.
constexpr double gap = 2;

/// What a tile shows besides its item.
struct Marks {
    bool isOutlined = false;  ///< under the pointer, or where the keyboard is
    bool isSelected = false;
    bool isMirrored = false;  ///< texts and what is inside start at the right
};

/// Draws tile into cell, whose right and lower end is the gap to the next. Edges lie on device pixels.
void tile(QPainter& painter, const ExplorerTile& tile, const TreemapRectangle& cell, const Marks& marks);

/// cell with its sides exchanged in an area that is width wide and has a gap at its right.
[[nodiscard]] TreemapRectangle mirrored(const TreemapRectangle& cell, double width);

}  // namespace kestrune::TreemapPaint
