#pragma once

#include <optional>

#include "ui/ListRow.h"
#include "workspace/ExplorerListing.h"

namespace kestrune {

class Button;

/// One row of an ExplorerList: symbol, name (over the place of a largest file), bar, share, size and buttons. It shows
/// one item at a time, and another one when the order changes.
class ExplorerRowView final : public ListRow {
    Q_OBJECT

public:
    explicit ExplorerRowView(QWidget* parent = nullptr);

    void setRow(const ExplorerRow& row);

    [[nodiscard]] const ExplorerRow& row() const { return m_row; }

    /// Whether folders can be explored now.
    void setCanExplore(bool can);

    void setSelected(bool selected);

    /// Looks as if the pointer were on it.
    void setHighlighted(bool highlighted);

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;

    [[nodiscard]] bool isUnderPointer() const { return isHovered(); }

    /// The keyboard, not the pointer, brought the focus to the row.
    [[nodiscard]] bool isRinged() const { return m_ringed; }

    [[nodiscard]] bool isActivatable() const override { return m_row.isDirectory && m_canExplore; }

    void activate() override;

Q_SIGNALS:
    /// The pointer came to the row, or left it.
    void hoverMoved();
    void selected();
    void explored();
    void revealed();
    void menuWanted(const QPoint& global);

protected:
    void paintRow(QPainter& painter) override;
    [[nodiscard]] std::optional<Colour> ground() const override;
    void hoverChanged(bool hovered) override;
    void clicked() override;
    [[nodiscard]] QString toolTipAt(const QPoint& at) const override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Columns;

    [[nodiscard]] Columns columns(int width) const;
    void paintWords(QPainter& painter, const Columns& place) const;
    void paintFigures(QPainter& painter, const Columns& place) const;
    void arrangeControls();
    void inkButtons();
    void speak();

    ExplorerRow m_row;
    QString m_name;
    QString m_detail;
    QString m_size;
    Button* m_explore;
    Button* m_reveal;
    bool m_canExplore = true;
    bool m_selected = false;
    bool m_highlighted = false;
    bool m_ringed = false;
};

}  // namespace kestrune
