#include "ui/FocusRing.h"

#include <QEvent>
#include <QPainter>
#include <QScrollArea>

#include "ui/Theme.h"

namespace kestrune {

namespace {

constexpr int reach = 4;  // a gap of 2 and a line of 2

// What scrolls together with control, else its window.
QWidget* groundOf(QWidget& control) {
    for (QWidget* ancestor = control.parentWidget(); ancestor != nullptr; ancestor = ancestor->parentWidget()) {
        const QWidget* viewport = ancestor->parentWidget();
        const auto* area = viewport == nullptr ? nullptr : qobject_cast<QScrollArea*>(viewport->parentWidget());
        if ((area != nullptr && area->widget() == ancestor) || ancestor->isWindow()) {
            return ancestor;
        }
    }
    return nullptr;
}

}  // namespace

FocusRing::FocusRing(QWidget* ground) : QWidget(ground) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

bool FocusRing::isDue(Qt::FocusReason reason) {
    static bool byKeyboard = false;
    // A window that comes back, or a menu that closes, gives the focus back as it was.
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
        byKeyboard = reason != Qt::MouseFocusReason;
    }
    return byKeyboard;
}

void FocusRing::follow(QWidget& control, const QRect& box, int radius) {
    QWidget* ground = groundOf(control);
    if (ground == nullptr) {
        return;
    }
    auto* ring = ground->findChild<FocusRing*>(QString(), Qt::FindDirectChildrenOnly);
    if (ring == nullptr) {
        ring = new FocusRing(ground);
    }
    ring->watchAncestors(false);
    ring->m_control = &control;
    ring->m_box = box;
    ring->m_radius = radius;
    ring->watchAncestors(true);
    ring->place();
}

void FocusRing::leave(const QWidget& control) {
    const auto rings = control.window()->findChildren<FocusRing*>();
    for (FocusRing* ring : rings) {
        if (ring->m_control == &control) {
            ring->watchAncestors(false);
            ring->m_control = nullptr;
            ring->hide();
        }
    }
}

void FocusRing::watchAncestors(bool on) {
    for (QWidget* widget = m_control; widget != nullptr && widget != parentWidget(); widget = widget->parentWidget()) {
        if (on) {
            widget->installEventFilter(this);
        } else {
            widget->removeEventFilter(this);
        }
    }
}

void FocusRing::place() {
    if (m_control == nullptr || !m_control->isVisibleTo(parentWidget()) || !m_control->hasFocus()) {
        hide();
        return;
    }
    const QRect box(m_control->mapTo(parentWidget(), m_box.topLeft()), m_box.size());
    setGeometry(box.adjusted(-reach, -reach, reach, reach));
    raise();
    show();
    update();
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Resize:
            if (watched == m_control.data()) {
                m_box = m_control->rect();
            }
            place();
            break;
        case QEvent::Move:
        case QEvent::Show:
        case QEvent::Hide:
            place();
            break;
        default:
            break;
    }
    return false;
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::colour(Colour::accentText), 2));
    const double radius = m_radius + 3;
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
}

}  // namespace kestrune
