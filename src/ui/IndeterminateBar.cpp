#include "ui/IndeterminateBar.h"

#include <QPainter>
#include <QTimerEvent>

#include "ui/Motion.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int length = 200;
constexpr int thickness = 4;
constexpr int frameTime = 40;   // milliseconds
constexpr int passTime = 1600;  // milliseconds for one pass of the segment
constexpr double segment = 0.3;
constexpr double stillOpacity = 0.4;

}  // namespace

IndeterminateBar::IndeterminateBar(QWidget* parent) : Painted(parent) {
    setFixedSize(Metrics::px(length), Metrics::px(thickness));
    m_time.start();
}

void IndeterminateBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF whole = rect();
    const double radius = whole.height() / 2;
    Paint::rounded(painter, whole, radius, Theme::colour(Colour::track));
    QRectF line = whole;
    if (Motion::isReduced()) {
        painter.setOpacity(stillOpacity);
    } else {
        const double passed = static_cast<double>(m_time.elapsed() % passTime) / passTime;
        line.setWidth(whole.width() * segment);
        line.moveLeft((whole.width() + line.width()) * passed - line.width());
    }
    Paint::rounded(painter, line.intersected(whole), radius, Theme::colour(Colour::chartLine));
}

void IndeterminateBar::showEvent(QShowEvent* event) {
    Painted::showEvent(event);
    if (!Motion::isReduced()) {
        m_frames.start(frameTime, this);
    }
}

void IndeterminateBar::hideEvent(QHideEvent* event) {
    Painted::hideEvent(event);
    m_frames.stop();
}

void IndeterminateBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_frames.timerId()) {
        Painted::timerEvent(event);
        return;
    }
    if (Motion::isReduced()) {
        m_frames.stop();
    }
    update();
}

}  // namespace kestrune
