#include "ui/CheckBox.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/FocusRing.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int boxSize = 16;
constexpr int hitSize = 28;
constexpr double edge = 1.5;
constexpr double disabledOpacity = 0.4;

}  // namespace

CheckBox::CheckBox(const QString& spokenName, QWidget* parent) : QCheckBox(parent) {
    setAccessibleName(spokenName);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
}

QSize CheckBox::sizeHint() const {
    return {Metrics::px(hitSize), Metrics::px(hitSize)};
}

QSize CheckBox::minimumSizeHint() const {
    return sizeHint();
}

QRect CheckBox::box() const {
    const int size = Metrics::px(boxSize);
    return {(width() - size) / 2, (height() - size) / 2, size, size};
}

bool CheckBox::hitButton(const QPoint& place) const {
    return rect().contains(place);
}

void CheckBox::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) {
        painter.setOpacity(disabledOpacity);
    }
    if (isChecked()) {
        Paint::rounded(painter, box(), 4, Theme::colour(Colour::accent));
    } else {
        painter.setPen(QPen(Theme::colour(Colour::border), edge));
        painter.setBrush(Theme::colour(Colour::card));
        const QRectF square = QRectF(box()).adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2);
        painter.drawRoundedRect(square, 4 - edge / 2, 4 - edge / 2);
    }
    if (isChecked()) {
        painter.translate(box().topLeft());
        painter.scale(box().width() / 16.0, box().height() / 16.0);
        painter.setPen(QPen(Theme::colour(Colour::onAccent), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF{{4.3, 8.3}, {6.9, 10.9}, {11.8, 5.3}});
    }
}

void CheckBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QCheckBox::keyPressEvent(event);
}

void CheckBox::focusInEvent(QFocusEvent* event) {
    QCheckBox::focusInEvent(event);
    if (FocusRing::isDue(event->reason())) {
        FocusRing::follow(*this, box(), 4);
    }
}

void CheckBox::focusOutEvent(QFocusEvent* event) {
    QCheckBox::focusOutEvent(event);
    FocusRing::leave(*this);
}

}  // namespace kestrune
