#pragma once

#include <QRect>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "ui/TreemapLayout.h"
#include "workspace/ExplorerTiles.h"

namespace kestrune {

/// The picture of a folder: a tile for each of its largest items, as large as its share. One stop of the keyboard;
/// arrow keys, Home and End walk the tiles by rank, Return explores. Hidden while it has no tiles.
class TreemapView final : public QWidget {
    Q_OBJECT

public:
    explicit TreemapView(QWidget* parent);

    /// Tiles are told apart by their paths: what the pointer, the keyboard or the selection is at stays with its item.
    void setTiles(std::vector<ExplorerTile> tiles);

    [[nodiscard]] const std::vector<ExplorerTile>& tiles() const { return m_tiles; }

    /// The tiles belong to another folder than before: keys act on the item with this path, on the largest without one.
    void startAt(const std::string& path);

    /// Whether folders can be explored now.
    void setCanExplore(bool can) { m_canExplore = can; }

    /// The chosen item, and the one whose row is under the pointer; empty for none.
    void setSelected(const std::string& path);
    void setHighlighted(const std::string& path);

    /// What the tile at index is called, and what it measures: "38.4 GB, 31%".
    [[nodiscard]] QString nameOf(std::size_t index) const;
    [[nodiscard]] QString figuresOf(std::size_t index) const;

    /// Where the tile at index lies, gaps left out.
    [[nodiscard]] QRect tileRect(std::size_t index) const;

    /// The tile at place or, between tiles, the one that the gap belongs to.
    [[nodiscard]] std::optional<std::size_t> indexAt(const QPoint& place) const;
    [[nodiscard]] std::optional<std::size_t> indexOf(const std::string& path) const;

    /// The tile that keys act on, and the selected one.
    [[nodiscard]] std::optional<std::size_t> currentIndex() const;
    [[nodiscard]] std::optional<std::size_t> selectedIndex() const;

    /// Makes the tile at index the one that keys act on; screen readers follow.
    void setCurrent(std::size_t index);

    [[nodiscard]] bool isExplorable(std::size_t index) const;
    void explore(std::size_t index);

Q_SIGNALS:
    /// The item that the pointer came over or the keyboard went to; empty: none.
    void hovered(const std::string& path);
    void selected(const std::string& path);
    void explored(const std::string& path);
    void menuWanted(const std::string& path, const QPoint& globalPosition);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    using Identity = std::optional<std::string>;  ///< a tile's path

    void layOut();
    void point(const Identity& path);
    void choose(std::size_t index);
    void moveCurrent(std::size_t index);
    void keepCurrent(std::size_t before);
    void showFocus();
    void tellPointed();
    void showToolTip(std::size_t index, const QPoint& globalPlace);
    void updateTile(const Identity& path);
    [[nodiscard]] std::optional<std::size_t> find(const Identity& path) const;
    [[nodiscard]] Identity identityOf(std::optional<std::size_t> index) const;
    [[nodiscard]] bool isOutlined(const std::string& path) const;

    [[nodiscard]] bool showsFocus() const { return m_keyboard && hasFocus(); }

    std::vector<ExplorerTile> m_tiles;
    std::vector<TreemapRectangle> m_cells;  ///< of m_tiles, each with the gap at its right and below
    Identity m_hovered;
    Identity m_current;
    Identity m_pressed;  ///< what the last press fell on
    std::string m_selected;
    std::string m_highlighted;
    std::string m_told;  ///< what hovered() said last
    bool m_canExplore = true;
    bool m_keyboard = false;  ///< the focus came by a key, or keys moved it
};

}  // namespace kestrune
