#pragma once

#include <QList>

#include "ui/MetricTile.h"

namespace kestrune {

class WorkspaceStore;

/// What the Overview's six tiles show of the store's figures, in their order on the page.
[[nodiscard]] QList<TileContent> telemetryTiles(const WorkspaceStore& store);

}  // namespace kestrune
