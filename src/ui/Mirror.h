#pragma once

#include <QMargins>
#include <QPainter>
#include <QPoint>
#include <QRect>

class QMenu;
class QWidget;

namespace kestrune {

/// Writing from right to left. What is drawn or arranged by hand is laid out as for writing from left to right; here
/// the whole of it is turned round, and what is read (texts, symbols, pictures) is turned back where it stands. Main
/// thread.
namespace Mirror {

/// box of widget where it is on the screen.
[[nodiscard]] QRect shown(const QWidget& widget, const QRect& box);

/// A place on the screen, in widget, as the layout knows it.
[[nodiscard]] QPoint laidOut(const QWidget& widget, const QPoint& place);

/// The margins of a layout of widget, which Qt leaves where they are.
[[nodiscard]] QMargins margins(const QWidget& widget, int before, int top, int after, int bottom);

/// Opens menu below anchor, at the edge where lines begin or where they end.
enum class Edge { start, end };
void popUpBelow(QMenu& menu, const QWidget& anchor, Edge edge = Edge::start);

/// True while painter draws the other way round.
[[nodiscard]] bool isOn(const QPainter& painter);

/// Turns what is drawn inside of box round, until the end of the block.
class Turn final {
public:
    Turn(QPainter& painter, const QRectF& box, bool wanted = true);
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn();

private:
    QPainter& m_painter;
    bool m_wanted;
};

}  // namespace Mirror

/// Paints a widget as it was laid out, turned round where that is how people read.
class MirrorPainter final : public QPainter {
public:
    explicit MirrorPainter(QWidget* widget);
};

}  // namespace kestrune
