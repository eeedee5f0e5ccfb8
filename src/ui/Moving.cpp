#include "ui/Moving.h"

#include <QPainter>
#include <QTimerEvent>

#include "ui/Motion.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int frameTime = 40;    // milliseconds
constexpr int passTime = 1600;   // milliseconds for one pass of the segment
constexpr double segment = 0.3;  // of the bar
constexpr double stillOpacity = 0.4;

}  // namespace

Moving::Moving(QWidget* parent) : Painted(parent) {
    m_time.start();
    m_motionChanged = Motion::changed().connect([this] { follow(); });
}

void Moving::follow() {
    if (Motion::isReduced()) {
        m_frames.stop();
    } else if (isVisible()) {
        m_frames.start(frameTime, this);
    }
    nextFrame();
}

double Moving::phase(int milliseconds) const {
    return static_cast<double>(m_time.elapsed() % milliseconds) / milliseconds;
}

void Moving::paintPassing(QPainter& painter, const QRectF& bar, const QColor& ground) const {
    const double radius = bar.height() / 2;
    const QColor line = Theme::colour(Colour::chartLine);
    Paint::rounded(painter, bar, radius, ground);
    if (Motion::isReduced()) {
        painter.setOpacity(stillOpacity);
        Paint::rounded(painter, bar, radius, line);
        painter.setOpacity(1);
        return;
    }
    const double length = bar.width() * segment;
    const double left = bar.left() - length + (bar.width() + length) * phase(passTime);
    Paint::rounded(painter, QRectF(left, bar.top(), length, bar.height()).intersected(bar), radius, line);
}

void Moving::showEvent(QShowEvent* event) {
    Painted::showEvent(event);
    follow();
}

void Moving::hideEvent(QHideEvent* event) {
    Painted::hideEvent(event);
    m_frames.stop();
}

void Moving::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_frames.timerId()) {
        Painted::timerEvent(event);
        return;
    }
    nextFrame();
}

}  // namespace kestrune
