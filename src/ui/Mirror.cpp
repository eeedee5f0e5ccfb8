#include "ui/Mirror.h"

#include <QMenu>
#include <QStyle>
#include <QWidget>

namespace kestrune {

namespace Mirror {

namespace {

constexpr int menuGap = 4;

void turn(QPainter& painter, const QRectF& box) {
    painter.translate(box.left() + box.right(), 0);
    painter.scale(-1, 1);
}

}  // namespace

QRect shown(const QWidget& widget, const QRect& box) {
    return QStyle::visualRect(widget.layoutDirection(), widget.rect(), box);
}

QPoint laidOut(const QWidget& widget, const QPoint& place) {
    return QStyle::visualPos(widget.layoutDirection(), widget.rect(), place);
}

QMargins margins(const QWidget& widget, int before, int top, int after, int bottom) {
    return widget.isRightToLeft() ? QMargins(after, top, before, bottom) : QMargins(before, top, after, bottom);
}

void popUpBelow(QMenu& menu, const QWidget& anchor, Edge edge) {
    const bool atRight = (edge == Edge::end) != anchor.isRightToLeft();
    const int left = atRight ? anchor.width() - menu.sizeHint().width() : 0;
    menu.popup(anchor.mapToGlobal(QPoint(left, anchor.height() + menuGap)));
}

bool isOn(const QPainter& painter) {
    return painter.worldTransform().m11() < 0;
}

Turn::Turn(QPainter& painter, const QRectF& box, bool wanted) : m_painter(painter), m_wanted(wanted) {
    if (m_wanted) {
        m_painter.save();
        turn(m_painter, box);
    }
}

Turn::~Turn() {
    if (m_wanted) {
        m_painter.restore();
    }
}

}  // namespace Mirror

MirrorPainter::MirrorPainter(QWidget* widget) : QPainter(widget) {
    if (widget->isRightToLeft()) {
        translate(widget->width(), 0);
        scale(-1, 1);
    }
}

}  // namespace kestrune
