#include "ui/ListRow.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include "ui/Mirror.h"
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
        const QString text = toolTipAt(Mirror::laidOut(*this, help->pos()));
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

std::optional<Colour> ListRow::ground() const {
    return m_hovered ? std::optional(Colour::cardHover) : std::nullopt;
}

void ListRow::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (const std::optional<Colour> colour = ground()) {
        // The rounded corners of the card stay free.
        const double radius = Metrics::px(12) - 1;
        QPainterPath shape;
        shape.setFillRule(Qt::WindingFill);
        shape.addRoundedRect(QRectF(rect()), radius, radius);
        if (!m_first) {
            shape.addRect(QRectF(0, 0, width(), radius));
        }
        if (!m_last) {
            shape.addRect(QRectF(0, height() - radius, width(), radius));
        }
        painter.fillPath(shape.simplified(), Theme::colour(*colour));
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
