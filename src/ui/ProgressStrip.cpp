#include "ui/ProgressStrip.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>
#include <algorithm>

#include "ui/Motion.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int barLength = 200;
constexpr int barThickness = 4;
constexpr int ringSize = 14;
constexpr int side = 12;
constexpr int frameTime = 40;      // milliseconds
constexpr int turnTime = 1000;     // milliseconds for one turn of the ring
constexpr int passTime = 1600;     // milliseconds for one pass of the segment
constexpr double segment = 0.3;    // of the bar
constexpr int ringArc = 270 * 16;  // sixteenths of a degree

}  // namespace

ProgressStrip::ProgressStrip(QWidget* parent) : Painted(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_time.start();
}

void ProgressStrip::setProgress(const QString& sentence, int done, int total) {
    if (m_sentence == sentence && m_done == done && m_total == total) {
        return;
    }
    m_sentence = sentence;
    m_done = done;
    m_total = total;
    setSpoken(sentence);
    QAccessibleValueChangeEvent event(this, accessibleValue());
    QAccessible::updateAccessibility(&event);
    update();
}

void ProgressStrip::setCounted(bool counted) {
    m_counted = counted;
}

QString ProgressStrip::accessibleValue() const {
    return m_total > 0 ? QStringLiteral("%1 of %2").arg(m_done).arg(m_total) : QString();
}

QSize ProgressStrip::sizeHint() const {
    return {Metrics::px(barLength) * 2, std::max(Metrics::px(36), Metrics::lineHeight(FontRole::body) + 18)};
}

QRect ProgressStrip::barBox() const {
    const int length = std::min(Metrics::px(barLength), width() / 3);
    const int thickness = Metrics::px(barThickness);
    return {width() - Metrics::px(side) - length, (height() - thickness) / 2, length, thickness};
}

QRect ProgressStrip::ringBox() const {
    const int size = Metrics::px(ringSize);
    return {Metrics::px(side), (height() - size) / 2, size, size};
}

void ProgressStrip::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Paint::rounded(painter, rect(), 8, Theme::colour(Colour::tint));
    paintRing(painter);
    paintBar(painter);
    int right = barBox().left() - Metrics::px(side);
    if (m_counted && m_total > 0) {
        const QString count = accessibleValue();
        const int room = Metrics::tabularWidth(FontRole::detail, QStringLiteral("%1 of %1").arg(m_total));
        painter.setPen(Theme::colour(Colour::text2));
        Metrics::drawTabular(painter, right - Metrics::tabularWidth(FontRole::detail, count),
                             Paint::baseline(FontRole::detail, 0, height()), FontRole::detail, count);
        right -= room + Metrics::px(side);
    }
    const int left = ringBox().right() + 1 + Metrics::px(10);
    Paint::text(painter, QRect(left, 0, right - left, height()), FontRole::body, Theme::colour(Colour::text1),
                m_sentence);
}

void ProgressStrip::paintRing(QPainter& painter) const {
    const QRectF ring = QRectF(ringBox()).adjusted(1, 1, -1, -1);
    if (Motion::isReduced()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::colour(Colour::accentText));
        painter.drawEllipse(ring.center(), ring.width() / 4, ring.height() / 4);
        return;
    }
    const auto turned = static_cast<int>(m_time.elapsed() % turnTime);
    painter.setPen(QPen(Theme::colour(Colour::accentText), 2, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(ring, -turned * 360 * 16 / turnTime, ringArc);
}

void ProgressStrip::paintBar(QPainter& painter) const {
    const QRectF bar = barBox();
    const QColor line = Theme::colour(Colour::chartLine);
    const QColor ground = Theme::colour(Colour::card);
    if (m_total > 0) {
        Paint::bar(painter, bar, static_cast<double>(m_done) / m_total, line, ground);
        return;
    }
    Paint::rounded(painter, bar, bar.height() / 2, ground);
    if (Motion::isReduced()) {
        painter.setOpacity(0.4);
        Paint::rounded(painter, bar, bar.height() / 2, line);
        painter.setOpacity(1);
        return;
    }
    const double passed = static_cast<double>(m_time.elapsed() % passTime) / passTime;
    const double length = bar.width() * segment;
    const double left = bar.left() - length + (bar.width() + length) * passed;
    const QRectF visible = QRectF(left, bar.top(), length, bar.height()).intersected(bar);
    Paint::rounded(painter, visible, bar.height() / 2, line);
}

void ProgressStrip::showEvent(QShowEvent* event) {
    Painted::showEvent(event);
    if (!Motion::isReduced()) {
        m_frames.start(frameTime, this);
    }
}

void ProgressStrip::hideEvent(QHideEvent* event) {
    Painted::hideEvent(event);
    m_frames.stop();
}

void ProgressStrip::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_frames.timerId()) {
        Painted::timerEvent(event);
        return;
    }
    if (Motion::isReduced()) {
        m_frames.stop();
        update();
        return;
    }
    update(ringBox());
    if (m_total == 0) {
        update(barBox());
    }
}

}  // namespace kestrune
