#include "ui/DisclosureButton.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int chevronSize = 14;
constexpr int titleGap = 6;
constexpr int lineHeight = 28;
constexpr int radius = 7;

class AccessibleDisclosure final : public QAccessibleWidget {
public:
    explicit AccessibleDisclosure(DisclosureButton* button) : QAccessibleWidget(button, QAccessible::Button) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = button().isOpen();
        state.collapsed = !button().isOpen();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        if (name == pressAction()) {
            button().toggle();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    [[nodiscard]] DisclosureButton& button() const { return *static_cast<DisclosureButton*>(widget()); }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("kestrune::DisclosureButton")) {
        return new AccessibleDisclosure(static_cast<DisclosureButton*>(object));
    }
    return nullptr;
}

}  // namespace

DisclosureButton::DisclosureButton(QString title, QWidget* parent) : QWidget(parent), m_title(std::move(title)) {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
    setAccessibleName(m_title);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void DisclosureButton::setOpen(bool open) {
    if (m_open == open) {
        return;
    }
    m_open = open;
    update();
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void DisclosureButton::toggle() {
    setOpen(!m_open);
    Q_EMIT toggled(m_open);
}

int DisclosureButton::titleLeft() {
    return Metrics::px(chevronSize) + Metrics::px(titleGap);
}

QSize DisclosureButton::sizeHint() const {
    return {titleLeft() + Metrics::width(FontRole::rowTitle, m_title) + Metrics::px(titleGap),
            std::max(Metrics::px(lineHeight), Metrics::lineHeight(FontRole::rowTitle) + 8)};
}

void DisclosureButton::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    const int chevron = Metrics::px(chevronSize);
    Icons::draw(painter, QPointF(0, (height() - chevron) / 2.0),
                m_open ? QStringLiteral("chevron.down") : QStringLiteral("chevron.right"),
                Theme::colour(underMouse() ? Colour::text1 : Colour::text2), chevron);
    Paint::text(painter, rect().adjusted(titleLeft(), 0, 0, 0), FontRole::rowTitle, Theme::colour(Colour::text1),
                m_title);
}

void DisclosureButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            toggle();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

void DisclosureButton::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->button() == Qt::LeftButton;
}

void DisclosureButton::mouseReleaseEvent(QMouseEvent* event) {
    const bool wanted = m_pressed && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    m_pressed = false;
    if (wanted) {
        toggle();
    }
}

void DisclosureButton::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (FocusRing::isDue(event->reason())) {
        FocusRing::follow(*this, rect(), radius);
    }
}

void DisclosureButton::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    FocusRing::leave(*this);
}

void DisclosureButton::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    update();
}

void DisclosureButton::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    update();
}

}  // namespace kestrune
