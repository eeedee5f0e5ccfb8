#include "ui/TileGrid.h"

#include <algorithm>

#include "ui/Metrics.h"
#include "ui/Mirror.h"

namespace kestrune {

namespace {

constexpr int gap = 16;
constexpr int across = 3;
constexpr int acrossNarrow = 2;
constexpr int smallestTile = 188;  // 160 of content between its paddings
constexpr double largeText = 1.4;

}  // namespace

TileGrid::TileGrid(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TileGrid::setTiles(const QList<TileContent>& contents) {
    while (m_tiles.size() < contents.size()) {
        m_tiles.append(new MetricTile(this));
        m_tiles.last()->show();
        arrange();
    }
    for (qsizetype index = 0; index < contents.size(); ++index) {
        m_tiles.at(index)->setContent(contents.at(index));
    }
}

void TileGrid::setNarrow(bool narrow) {
    m_narrow = narrow;
    arrange();
}

void TileGrid::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void TileGrid::arrange() {
    const bool fits = (width() - (across - 1) * gap) / across >= smallestTile && Metrics::scale() < largeText;
    const int columns = fits ? across : acrossNarrow;
    const int height = MetricTile::fixedHeight();
    for (qsizetype index = 0; index < m_tiles.size(); ++index) {
        const auto column = static_cast<int>(index) % columns;
        const auto row = static_cast<int>(index) / columns;
        // Every edge on a whole pixel, what is left over shared out.
        const int left = (width() + gap) * column / columns;
        const int right = (width() + gap) * (column + 1) / columns - gap;
        const QRect box(left, row * (height + gap), right - left, height);
        m_tiles.at(index)->setGeometry(Mirror::shown(*this, box));
        m_tiles.at(index)->setNarrow(m_narrow);
    }
    const int rows = (static_cast<int>(m_tiles.size()) + columns - 1) / columns;
    setFixedHeight(std::max(1, rows * (height + gap) - gap));
}

}  // namespace kestrune
