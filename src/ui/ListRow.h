#pragma once

#include <QList>
#include <optional>

#include "ui/Painted.h"
#include "ui/Theme.h"

namespace kestrune {

/// One row of a list. It is drawn by hand and reads as one sentence; its own buttons are real widgets.
class ListRow : public Painted {
    Q_OBJECT

public:
    explicit ListRow(QWidget* parent = nullptr);

    [[nodiscard]] virtual int heightFor(int width) const = 0;

    /// What takes the keyboard focus in this row, in reading order.
    [[nodiscard]] virtual QList<QWidget*> focusStops() const { return {}; }

    void setPlace(bool first, bool last);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ListItem; }

protected:
    /// Draws the row over its ground.
    virtual void paintRow(QPainter& painter) = 0;

    /// What the row lies on, over its card; nothing for the card itself.
    [[nodiscard]] virtual std::optional<Colour> ground() const;

    /// The pointer came over the row or its buttons, or left.
    virtual void hoverChanged(bool /*hovered*/) {}

    /// A click on the row beside its buttons.
    virtual void clicked() {}

    /// The full text of what is cut at place.
    [[nodiscard]] virtual QString toolTipAt(const QPoint& /*place*/) const { return {}; }

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

    [[nodiscard]] bool isHovered() const { return m_hovered; }

    /// From the row's edge to its content; the card's hairline lies outside of the row.
    static constexpr int sidePadding = 15;

private:
    void setHovered(bool hovered);

    bool m_first = true;
    bool m_last = true;
    bool m_hovered = false;
    bool m_pressed = false;
};

}  // namespace kestrune
