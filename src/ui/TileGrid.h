#pragma once

#include <QList>
#include <QWidget>

#include "ui/MetricTile.h"

namespace kestrune {

/// The Overview's tiles: three across, two where they would get too narrow.
class TileGrid final : public QWidget {
    Q_OBJECT

public:
    explicit TileGrid(QWidget* parent = nullptr);

    void setTiles(const QList<TileContent>& contents);
    void setNarrow(bool narrow);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    QList<MetricTile*> m_tiles;
    bool m_narrow = false;
};

}  // namespace kestrune
