#include "ui/CrumbButton.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "ui/FocusRing.h"
#include "ui/Metrics.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int sidePadding = 4;
constexpr int smallestWidth = 24;
constexpr int lineHeight = 28;
constexpr int radius = 7;

}  // namespace

CrumbButton::CrumbButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void CrumbButton::setLabel(const QString& label) {
    if (m_label != label) {
        m_label = label;
        update();
    }
}

int CrumbButton::widthOf(const QString& label) {
    return std::max(Metrics::px(smallestWidth), Metrics::width(FontRole::body, label) + 2 * Metrics::px(sidePadding));
}

QSize CrumbButton::sizeHint() const {
    return {widthOf(m_label), std::max(Metrics::px(lineHeight), Metrics::lineHeight(FontRole::body) + 8)};
}

void CrumbButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool touched = isEnabled() && (underMouse() || isDown());
    if (touched) {
        Paint::rounded(painter, rect(), radius, Theme::colour(isDown() ? Colour::controlHover : Colour::control));
    }
    const int padding = Metrics::px(sidePadding);
    Paint::text(painter, rect().adjusted(padding, 0, -padding, 0), FontRole::body,
                Theme::colour(touched ? Colour::text1 : Colour::text2), m_label, Qt::AlignHCenter);
}

void CrumbButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void CrumbButton::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    if (FocusRing::isDue(event->reason())) {
        FocusRing::follow(*this, rect(), radius);
    }
}

void CrumbButton::focusOutEvent(QFocusEvent* event) {
    QAbstractButton::focusOutEvent(event);
    FocusRing::leave(*this);
}

void CrumbButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void CrumbButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

}  // namespace kestrune
