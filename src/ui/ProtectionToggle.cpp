#include "ui/ProtectionToggle.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int hitSize = 28;
constexpr int symbolSize = 18;
constexpr int radius = 7;
constexpr double disabledOpacity = 0.45;

}  // namespace

ProtectionToggle::ProtectionToggle(QWidget* parent) : QCheckBox(parent) {
    setToolTip(translated("Protect this app from quitting"));
    setAttribute(Qt::WA_Hover);
}

QSize ProtectionToggle::sizeHint() const {
    return {Metrics::px(hitSize), Metrics::px(hitSize)};
}

QSize ProtectionToggle::minimumSizeHint() const {
    return sizeHint();
}

bool ProtectionToggle::hitButton(const QPoint& place) const {
    return rect().contains(place);
}

void ProtectionToggle::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (!isEnabled()) {
        painter.setOpacity(disabledOpacity);
    } else if (isDown() || underMouse()) {
        Paint::rounded(painter, rect(), radius, Theme::colour(isDown() ? Colour::controlHover : Colour::control));
    }
    const int size = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF((width() - size) / 2.0, (height() - size) / 2.0),
                isChecked() ? QStringLiteral("lock.shield") : QStringLiteral("shield"),
                Theme::colour(isChecked() ? Colour::success : Colour::text3), size);
}

void ProtectionToggle::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QCheckBox::keyPressEvent(event);
}

void ProtectionToggle::focusInEvent(QFocusEvent* event) {
    QCheckBox::focusInEvent(event);
    if (FocusRing::isDue(event->reason())) {
        FocusRing::follow(*this, rect(), radius);
    }
}

void ProtectionToggle::focusOutEvent(QFocusEvent* event) {
    QCheckBox::focusOutEvent(event);
    FocusRing::leave(*this);
}

}  // namespace kestrune
