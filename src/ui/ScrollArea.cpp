#include "ui/ScrollArea.h"

#include <QScrollBar>

#include "ui/Mirror.h"
#include "ui/ScrollThumb.h"

namespace kestrune {

namespace {

constexpr int thumbStays = 1200;  // milliseconds

}  // namespace

ScrollArea::ScrollArea(QWidget* parent) : QScrollArea(parent), m_thumb(new ScrollThumb(verticalScrollBar(), this)) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    m_fade.setSingleShot(true);
    m_fade.setInterval(thumbStays);
    connect(&m_fade, &QTimer::timeout, this, &ScrollArea::hideThumb);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        showThumb();
        m_thumb->update();
    });
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
        m_thumb->setVisible(m_thumb->isVisible() && m_thumb->isNeeded());
        m_thumb->update();
    });
}

void ScrollArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    const QRect atEnd(width() - ScrollThumb::breadth(), 0, ScrollThumb::breadth(), height());
    m_thumb->setGeometry(Mirror::shown(*this, atEnd));
}

void ScrollArea::enterEvent(QEnterEvent* event) {
    QScrollArea::enterEvent(event);
    showThumb();
}

void ScrollArea::leaveEvent(QEvent* event) {
    QScrollArea::leaveEvent(event);
    m_fade.start();
}

void ScrollArea::hideEvent(QHideEvent* event) {
    QScrollArea::hideEvent(event);
    m_fade.stop();
    m_thumb->hide();
}

void ScrollArea::showThumb() {
    if (isVisible() && m_thumb->isNeeded()) {
        m_thumb->show();
        m_thumb->raise();
        m_fade.start();
    }
}

void ScrollArea::hideThumb() {
    if (m_thumb->isDragged() || underMouse()) {
        return;
    }
    m_thumb->hide();
}

}  // namespace kestrune
