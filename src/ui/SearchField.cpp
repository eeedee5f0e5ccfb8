#include "ui/SearchField.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int fieldWidth = 240;
constexpr int smallestWidth = 160;
constexpr int side = 10;
constexpr int symbolSize = 16;
constexpr int markSize = 14;
constexpr double disabledOpacity = 0.45;

int textLeft() {
    return Metrics::px(side) + Metrics::px(symbolSize) + Metrics::px(6);
}

}  // namespace

SearchField::SearchField(const QString& prompt, QWidget* parent) : QLineEdit(parent), m_prompt(prompt) {
    setAccessibleName(prompt);
    setFrame(false);
    setFont(Metrics::font(FontRole::body));
    // QLineEdit itself keeps 2 pixels beside the text.
    setTextMargins(Mirror::margins(*this, textLeft() - 2, 0, Metrics::px(28), 0));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setMaximumWidth(Metrics::px(fieldWidth));
    setMouseTracking(true);
    // The ground is drawn here, under the text.
    QPalette clear = palette();
    clear.setColor(QPalette::Base, Qt::transparent);
    setPalette(clear);
    setAutoFillBackground(false);
}

QSize SearchField::sizeHint() const {
    return {Metrics::px(fieldWidth), std::max(Metrics::px(32), Metrics::lineHeight(FontRole::body) + 8)};
}

QSize SearchField::minimumSizeHint() const {
    return {Metrics::px(smallestWidth), sizeHint().height()};
}

QRect SearchField::clearMark() const {
    const int size = Metrics::px(28);
    return {width() - size - 2, (height() - size) / 2, size, size};
}

void SearchField::paintEvent(QPaintEvent* event) {
    {
        MirrorPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (!isEnabled()) {
            painter.setOpacity(disabledOpacity);
        }
        painter.setPen(QPen(Theme::colour(Colour::border), 1));
        painter.setBrush(Theme::colour(Colour::card));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 7.5, 7.5);
        const int size = Metrics::px(symbolSize);
        Icons::draw(painter, QPointF(Metrics::px(side), (height() - size) / 2.0), QStringLiteral("magnifyingglass"),
                    Theme::colour(Colour::text3), size);
        if (text().isEmpty()) {
            const QRect room(textLeft(), 0, width() - textLeft() - Metrics::px(side), height());
            Paint::text(painter, room, FontRole::body, Theme::colour(Colour::text3), m_prompt);
        } else {
            const int mark = Metrics::px(markSize);
            const QRect box = clearMark();
            Icons::draw(painter, QPointF(box.left() + (box.width() - mark) / 2.0, (height() - mark) / 2.0),
                        QStringLiteral("xmark"), Theme::colour(Colour::text2), mark);
        }
    }
    QLineEdit::paintEvent(event);
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void SearchField::mousePressEvent(QMouseEvent* event) {
    if (!text().isEmpty() && clearMark().contains(Mirror::laidOut(*this, event->position().toPoint()))) {
        clear();
        return;
    }
    QLineEdit::mousePressEvent(event);
}

void SearchField::mouseMoveEvent(QMouseEvent* event) {
    const bool overMark =
        !text().isEmpty() && clearMark().contains(Mirror::laidOut(*this, event->position().toPoint()));
    setCursor(overMark ? Qt::ArrowCursor : Qt::IBeamCursor);
    QLineEdit::mouseMoveEvent(event);
}

void SearchField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    FocusRing::follow(*this, rect(), 8);
}

void SearchField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    FocusRing::leave(*this);
}

}  // namespace kestrune
