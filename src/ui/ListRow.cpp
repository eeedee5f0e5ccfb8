#include "ui/ListRow.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

ListRow::ListRow(QWidget* parent) : Painted(parent) {
}

void ListRow::setPlace(bool first, bool last) {
    if (m_first != first || m_last != last) {
        m_first = first;
        m_last = last;
        update();
    }
}

bool ListRow::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString text = toolTipAt(help->pos());
        if (!text.isEmpty()) {
            QToolTip::showText(help->globalPos(), asToolTip(text), this);
            return true;
        }
        QToolTip::hideText();
        event->ignore();
        return true;
    }
    return Painted::event(event);
}

void ListRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_hovered) {
        // The rounded corners of the card stay free.
        const double radius = Metrics::px(12) - 1;
        QPainterPath ground;
        ground.setFillRule(Qt::WindingFill);
        ground.addRoundedRect(QRectF(rect()), radius, radius);
        if (!m_first) {
            ground.addRect(QRectF(0, 0, width(), radius));
        }
        if (!m_last) {
            ground.addRect(QRectF(0, height() - radius, width(), radius));
        }
        painter.fillPath(ground.simplified(), Theme::colour(Colour::cardHover));
    }
    if (!m_first) {
        Paint::hairline(painter, sidePadding, 0, width() - 2 * sidePadding);
    }
    paintRow(painter);
}

void ListRow::setHovered(bool hovered) {
    if (m_hovered != hovered) {
        m_hovered = hovered;
        hoverChanged(hovered);
        update();
    }
}

void ListRow::enterEvent(QEnterEvent* event) {
    Painted::enterEvent(event);
    setHovered(true);
}

void ListRow::leaveEvent(QEvent* event) {
    Painted::leaveEvent(event);
    setHovered(false);
}

void ListRow::hideEvent(QHideEvent* event) {
    Painted::hideEvent(event);
    setHovered(false);
}

void ListRow::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->button() == Qt::LeftButton;
}

void ListRow::mouseReleaseEvent(QMouseEvent* event) {
    const bool chosen = m_pressed && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    m_pressed = false;
    if (chosen) {
        clicked();
    }
}

}  // namespace kestrune
