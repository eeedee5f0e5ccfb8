#pragma once

#include <QAccessible>
#include <QWidget>
#include <vector>

namespace kestrune {

/// A piece of a window as a screen reader meets it.
struct Seen {
    QWidget* widget;
    QString name;
    QAccessible::Role role;
    bool focusable;
};

inline void collectSeen(QAccessibleInterface* piece, std::vector<Seen>& result) {
    if (piece == nullptr) {
        return;
    }
    auto* widget = qobject_cast<QWidget*>(piece->object());
    if (widget != nullptr && !widget->isVisible()) {
        return;
    }
    if (widget != nullptr) {
        result.push_back({widget, piece->text(QAccessible::Name), piece->role(),
                          widget->focusPolicy() != Qt::NoFocus && !widget->isWindow()});
    }
    for (int index = 0; index < piece->childCount(); ++index) {
        collectSeen(piece->child(index), result);
    }
}

/// Every visible piece of window, in reading order.
[[nodiscard]] inline std::vector<Seen> seenIn(QWidget& window) {
    std::vector<Seen> result;
    collectSeen(QAccessible::queryAccessibleInterface(&window), result);
    return result;
}

/// The visible piece of window with this accessible name, or null.
[[nodiscard]] inline QWidget* namedIn(QWidget& window, const QString& name) {
    for (const Seen& piece : seenIn(window)) {
        if (piece.name == name) {
            return piece.widget;
        }
    }
    return nullptr;
}

}  // namespace kestrune
