#include "ui/ScrollThumb.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr double smallestThumb = 32;
constexpr int thickness = 8;
constexpr int inset = 2;

}  // namespace

ScrollThumb::ScrollThumb(QScrollBar* bar, QWidget* parent) : QWidget(parent), m_bar(bar) {
    setFocusPolicy(Qt::NoFocus);
    hide();
}

int ScrollThumb::breadth() {
    return thickness + 2 * inset;
}

QRectF ScrollThumb::thumb() const {
    const double track = height() - 2 * inset;
    const double all = m_bar->maximum() - m_bar->minimum() + m_bar->pageStep();
    const double length = std::min(track, std::max(smallestThumb, track * m_bar->pageStep() / all));
    const int range = std::max(1, m_bar->maximum() - m_bar->minimum());
    const double top = inset + (track - length) * (m_bar->value() - m_bar->minimum()) / range;
    return {static_cast<double>(inset), top, static_cast<double>(thickness), length};
}

void ScrollThumb::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setOpacity(0.6);
    Paint::rounded(painter, thumb(), thickness / 2.0, Theme::colour(Colour::text3));
}

void ScrollThumb::mousePressEvent(QMouseEvent* event) {
    const QRectF now = thumb();
    const double y = event->position().y();
    m_grip = y >= now.top() && y <= now.bottom() ? y - now.top() : now.height() / 2;
    m_dragged = true;
    mouseMoveEvent(event);
}

void ScrollThumb::mouseMoveEvent(QMouseEvent* event) {
    const double room = height() - 2 * inset - thumb().height();
    if (m_dragged && room > 0) {
        const double share = std::clamp((event->position().y() - m_grip - inset) / room, 0.0, 1.0);
        m_bar->setValue(m_bar->minimum() +
                        static_cast<int>(std::lround(share * (m_bar->maximum() - m_bar->minimum()))));
    }
}

void ScrollThumb::mouseReleaseEvent(QMouseEvent* /*event*/) {
    m_dragged = false;
}

}  // namespace kestrune
