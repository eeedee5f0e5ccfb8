#pragma once

#include <QScrollBar>
#include <QWidget>

namespace kestrune {

/// The part of a scroll bar that shows where the content is, and drags it.
class ScrollThumb final : public QWidget {
    Q_OBJECT

public:
    ScrollThumb(QScrollBar* bar, QWidget* parent);

    [[nodiscard]] bool isNeeded() const { return m_bar->maximum() > m_bar->minimum(); }

    [[nodiscard]] bool isDragged() const { return m_dragged; }

    /// Width of the strip at the right that belongs to the thumb.
    [[nodiscard]] static int breadth();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] QRectF thumb() const;

    QScrollBar* m_bar;
    bool m_dragged = false;
    double m_grip = 0;  // from the thumb's top to where it was taken
};

}  // namespace kestrune
