#include "ui/Toggle.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "ui/FocusRing.h"
#include "ui/Mirror.h"
#include "ui/Motion.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int trackWidth = 36;
constexpr int trackHeight = 20;
constexpr int gap = 10;
constexpr int wideGap = 16;
constexpr int knobTime = 120;  // milliseconds
constexpr double edge = 1.5;
constexpr double disabledOpacity = 0.45;

}  // namespace

Toggle::Toggle(const QString& label, QWidget* parent) : QCheckBox(parent), m_label(label) {
    setAccessibleName(label);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_knob.setStartValue(0.0);
    m_knob.setEndValue(1.0);
    connect(&m_knob, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(this, &QCheckBox::toggled, this, [this](bool on) {
        moveKnob(on);
        if (!m_following) {
            Q_EMIT asked(on);
        }
    });
}

void Toggle::moveKnob(bool on) {
    // Only what the user switches moves. What is switched back at once turns round where it is.
    m_knob.setDirection(on ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
    m_knob.setDuration(Motion::duration(knobTime));
    if (!isVisible() || m_knob.duration() == 0) {
        m_knob.stop();
    } else if (!m_following && m_knob.state() != QAbstractAnimation::Running) {
        m_knob.start();
    }
    update();
}

void Toggle::setOn(bool on) {
    m_following = true;
    setChecked(on);
    m_following = false;
}

void Toggle::setStretched() {
    m_stretched = true;
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void Toggle::setSpaceBelow(int height) {
    if (m_spaceBelow != height) {
        m_spaceBelow = height;
        update();
    }
}

int Toggle::labelWidth(int width) const {
    return width - Metrics::px(trackWidth) - Metrics::px(m_stretched ? wideGap : gap);
}

int Toggle::labelHeight(int width) const {
    const auto lines = m_stretched ? Paint::wrapped(FontRole::body, m_label, labelWidth(width)).size() : 1;
    return static_cast<int>(lines) * Metrics::lineHeight(FontRole::body);
}

QSize Toggle::sizeHint() const {
    return {
        Metrics::width(FontRole::body, m_label) + Metrics::px(m_stretched ? wideGap : gap) + Metrics::px(trackWidth),
        std::max(Metrics::px(28), Metrics::lineHeight(FontRole::body))};
}

QSize Toggle::minimumSizeHint() const {
    return sizeHint();
}

bool Toggle::hitButton(const QPoint& place) const {
    return rect().contains(place);
}

QRect Toggle::track() const {
    const int height = Metrics::px(trackHeight);
    const int length = Metrics::px(trackWidth);
    return {width() - length, (this->height() - height) / 2, length, height};
}

void Toggle::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) {
        painter.setOpacity(disabledOpacity);
    }
    const QRect ground = track();
    const int high = labelHeight(width());
    const QRect label(0, (height() - high - m_spaceBelow) / 2, labelWidth(width()), high);
    if (m_stretched) {
        Paint::paragraph(painter, label, FontRole::body, Theme::colour(Colour::text1), m_label);
    } else {
        Paint::text(painter, label, FontRole::body, Theme::colour(Colour::text1), m_label);
    }
    const QRectF outline = QRectF(ground).adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2);
    painter.setPen(QPen(Theme::colour(isChecked() ? Colour::accent : Colour::border), edge));
    painter.setBrush(isChecked() ? QBrush(Theme::colour(Colour::accent)) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(outline, outline.height() / 2, outline.height() / 2);
    const bool moving = m_knob.state() == QAbstractAnimation::Running;
    const double at = moving ? m_knob.currentValue().toDouble() : (isChecked() ? 1.0 : 0.0);
    const double unit = ground.height() / 20.0;
    const double size = (12 + 2 * at) * unit;
    const double offCentre = ground.left() + 10.5 * unit;
    const double onCentre = ground.right() + 1 - 10.5 * unit;
    const double centre = offCentre + (onCentre - offCentre) * at;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::colour(isChecked() ? Colour::onAccent : Colour::border));
    painter.drawEllipse(QPointF(centre, ground.top() + ground.height() / 2.0), size / 2, size / 2);
}

void Toggle::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QCheckBox::keyPressEvent(event);
}

void Toggle::focusInEvent(QFocusEvent* event) {
    QCheckBox::focusInEvent(event);
    if (FocusRing::isDue(event->reason())) {
        FocusRing::follow(*this, Mirror::shown(*this, track()), track().height() / 2);
    }
}

void Toggle::focusOutEvent(QFocusEvent* event) {
    QCheckBox::focusOutEvent(event);
    FocusRing::leave(*this);
}

void Toggle::hideEvent(QHideEvent* event) {
    QCheckBox::hideEvent(event);
    m_knob.stop();
}

}  // namespace kestrune
