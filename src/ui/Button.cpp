#include "ui/Button.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr double disabledOpacity = 0.45;
constexpr double pressedShare = 0.08;
constexpr int trailingSize = 14;

}  // namespace

Button::Button(Kind kind, const QString& label, QWidget* parent)
    : QAbstractButton(parent), m_kind(kind), m_label(label) {
    setAccessibleName(label);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Button::setLabel(const QString& label) {
    if (m_label == label) {
        return;
    }
    if (accessibleName() == m_label) {
        setAccessibleName(label);
    }
    m_label = label;
    updateGeometry();
    update();
}

void Button::setKind(Kind kind) {
    m_kind = kind;
    updateGeometry();
    update();
}

void Button::setSymbol(const QString& symbol) {
    m_symbol = symbol;
    updateGeometry();
    update();
}

void Button::setTrailingSymbol(const QString& symbol) {
    m_trailing = symbol;
    updateGeometry();
    update();
}

void Button::setSmallestWidth(int width) {
    m_smallestWidth = width;
    updateGeometry();
}

void Button::setRowHovered(bool hovered) {
    if (m_rowHovered != hovered) {
        m_rowHovered = hovered;
        update();
    }
}

FontRole Button::fontRole() const {
    switch (m_kind) {
        case Kind::row:
            return FontRole::detail;
        case Kind::link:
            return FontRole::body;
        default:
            return FontRole::rowTitle;
    }
}

int Button::sidePadding() const {
    switch (m_kind) {
        case Kind::row:
            return Metrics::px(8);
        case Kind::small:
            return Metrics::px(12);
        case Kind::quiet:
            return Metrics::px(10);
        case Kind::link:
            return 0;
        default:
            return Metrics::px(14);
    }
}

int Button::radius() const {
    return m_kind == Kind::row || m_kind == Kind::small ? 7 : 8;
}

int Button::trailingGap() const {
    return m_kind == Kind::link ? Metrics::px(4) : Metrics::px(12);
}

int Button::trailingSide() const {
    return m_kind == Kind::link ? 0 : Metrics::px(9);
}

QSize Button::sizeHint() const {
    if (m_label.isEmpty()) {
        return {Metrics::px(28), Metrics::px(28)};
    }
    int width = Metrics::width(fontRole(), m_label) + 2 * sidePadding();
    if (!m_symbol.isEmpty()) {
        width += Metrics::px(16) + Metrics::px(6) - 3;
    }
    if (!m_trailing.isEmpty()) {
        width += trailingGap() + Metrics::px(trailingSize) + trailingSide() - sidePadding();
    }
    const bool low = m_kind == Kind::small || m_kind == Kind::row || m_kind == Kind::link;
    const int height = low ? Metrics::px(28) : Metrics::px(32);
    return {std::max({width, m_smallestWidth, Metrics::px(28)}), std::max(height, Metrics::lineHeight(fontRole()) + 8)};
}

QSize Button::minimumSizeHint() const {
    return sizeHint();
}

QColor Button::fill() const {
    const bool hovered = isEnabled() && underMouse();
    const bool pressed = isEnabled() && (isDown() || isOpen());
    switch (m_kind) {
        case Kind::primary: {
            if (!isEnabled()) {
                return Theme::colour(Colour::control);
            }
            const QColor rest = Theme::colour(hovered || pressed ? Colour::accentHover : Colour::accent);
            return pressed ? Paint::darkened(rest, pressedShare) : rest;
        }
        case Kind::secondary:
        case Kind::small: {
            const QColor rest = Theme::colour(hovered || pressed ? Colour::controlHover : Colour::control);
            return pressed ? Paint::darkened(rest, pressedShare) : rest;
        }
        case Kind::quiet:
        case Kind::row:
            if (pressed) {
                return Theme::colour(Colour::controlHover);
            }
            return hovered ? Theme::colour(Colour::control) : QColor(Qt::transparent);
        case Kind::link:
        case Kind::success:
            break;
    }
    return Qt::transparent;
}

QColor Button::ink() const {
    const bool touched = isEnabled() && (underMouse() || isDown());
    switch (m_kind) {
        case Kind::primary:
            return Theme::colour(isEnabled() ? Colour::onAccent : Colour::text1);
        case Kind::secondary:
        case Kind::small:
            return Theme::colour(Colour::text1);
        case Kind::quiet:
            return Theme::colour(touched ? Colour::text1 : Colour::text2);
        case Kind::row:
            return Theme::colour(m_rowHovered && isEnabled() ? Colour::accentText : Colour::text2);
        case Kind::success:
            return Theme::colour(Colour::success);
        case Kind::link:
            break;
    }
    return Theme::colour(Colour::accentText);
}

void Button::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    if (!isEnabled() && m_kind != Kind::success) {
        painter.setOpacity(disabledOpacity);
    }
    const QColor ground = fill();
    if (ground.alpha() > 0) {
        Paint::rounded(painter, rect(), radius(), ground);
    }
    const int symbol = m_symbol.isEmpty() ? 0 : Metrics::px(16);
    const int gap = symbol == 0 || m_label.isEmpty() ? 0 : Metrics::px(6);
    const int label = Metrics::width(fontRole(), m_label);
    const int trailing = m_trailing.isEmpty() ? 0 : Metrics::px(trailingSize);
    const int overhang = gap > 0 ? 3 : 0;
    int x = trailing > 0 ? sidePadding() : (width() - symbol - gap - label - overhang) / 2;
    if (symbol > 0) {
        const bool plain = m_kind == Kind::secondary || m_kind == Kind::small;
        Icons::draw(painter, QPointF(x, (height() - symbol) / 2.0), m_symbol,
                    plain ? Theme::colour(Colour::text2) : ink(), symbol);
        x += symbol + gap;
    }
    Paint::text(painter, QRect(x, 0, label, height()), fontRole(), ink(), m_label);
    if (trailing > 0) {
        Icons::draw(painter, QPointF(width() - trailingSide() - trailing, (height() - trailing) / 2.0), m_trailing,
                    m_kind == Kind::link ? ink() : Theme::colour(Colour::text2), trailing);
    }
}

void Button::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // A key that is still held down was meant for what stood here before.
        if (!event->isAutoRepeat()) {
            click();
        }
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void Button::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    if (FocusRing::isDue(event->reason())) {
        FocusRing::follow(*this, rect(), radius());
    }
}

void Button::focusOutEvent(QFocusEvent* event) {
    QAbstractButton::focusOutEvent(event);
    FocusRing::leave(*this);
}

void Button::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void Button::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

}  // namespace kestrune
