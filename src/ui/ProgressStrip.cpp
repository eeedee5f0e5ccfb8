#include "ui/ProgressStrip.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "ui/Mirror.h"
#include "ui/Motion.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int barLength = 200;
constexpr int barThickness = 4;
constexpr int ringSize = 14;
constexpr int side = 12;
constexpr int turnTime = 1000;      // milliseconds for one turn of the ring
constexpr int fullTurn = 360 * 16;  // sixteenths of a degree
constexpr int ringArc = 270 * 16;

}  // namespace

ProgressStrip::ProgressStrip(QWidget* parent) : Moving(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
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
    return m_total > 0 ? translated("%1 of %2", {QString::number(m_done), QString::number(m_total)}) : QString();
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
    MirrorPainter painter(this);
    Paint::rounded(painter, rect(), 8, Theme::colour(Colour::tint));
    paintRing(painter);
    paintBar(painter);
    int right = barBox().left() - Metrics::px(side);
    if (m_counted && m_total > 0) {
        const QString count = accessibleValue();
        const int room = Metrics::tabularWidth(
            FontRole::detail, translated("%1 of %2", {QString::number(m_total), QString::number(m_total)}));
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
    painter.setPen(QPen(Theme::colour(Colour::accentText), 2, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(ring, -static_cast<int>(phase(turnTime) * fullTurn), ringArc);
}

void ProgressStrip::paintBar(QPainter& painter) const {
    const QRectF bar = barBox();
    const QColor ground = Theme::colour(Colour::card);
    if (m_total > 0) {
        Paint::bar(painter, bar, static_cast<double>(m_done) / m_total, Theme::colour(Colour::chartLine), ground);
    } else {
        paintPassing(painter, bar, ground);
    }
}

void ProgressStrip::nextFrame() {
    update(ringBox());
    if (m_total == 0) {
        update(barBox());
    }
}

}  // namespace kestrune
