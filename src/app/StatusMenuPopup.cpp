#include "app/StatusMenuPopup.h"

#include <QAction>
#include <QCoreApplication>
#include <QCursor>
#include <QKeySequence>

#include <utility>

#include "ui/UiText.h"

namespace kestrune {

namespace {

// Wider lines (only the last message can be that long) end in "…" and keep the whole text as their tooltip.
constexpr int maxLineWidth = 480;

/// title as an action shows it: "&" would mark an access key and a tabulator start the shortcut column.
QString actionText(const QMenu& menu, const std::string& title) {
    QString text = QString::fromStdString(title).simplified();
    text = menu.fontMetrics().elidedText(text, Qt::ElideRight, maxLineWidth);
    return withoutMnemonic(text);
}

void apply(const QMenu& menu, const MenuItem& item, QAction& action) {
    const QString title = QString::fromStdString(item.title);
    const QString text = actionText(menu, item.title);
    action.setText(text);
    // Without one of its own an action's tooltip is its text; a message may hold foreign names.
    action.setToolTip(item.tooltip.empty() && item.action == MenuAction::none ? asToolTip(title)
                                                                              : QString::fromStdString(item.tooltip));
    action.setEnabled(item.enabled);
    action.setCheckable(item.checked.has_value());
    action.setChecked(item.checked.value_or(false));
}

void fill(QMenu& menu, const std::vector<MenuItem>& items, const MenuHandler& perform) {
    menu.setToolTipsVisible(true);
    for (const MenuItem& item : items) {
        if (item.separator) {
            menu.addSeparator();
            continue;
        }
        QAction* action = menu.addAction(QString());
        apply(menu, item, *action);
        action->setVisible(!item.hidden);
        if (!item.key.empty()) {
            action->setShortcut(QKeySequence(QLatin1String("Ctrl+") + QString::fromStdString(item.key).toUpper()));
            action->setShortcutVisibleInContextMenu(true);
        }
        if (!item.submenu.empty()) {
            auto* submenu = new QMenu(&menu);
            fill(*submenu, item.submenu, perform);
            action->setMenu(submenu);
        } else if (item.action != MenuAction::none) {
            // Queued, so that the menu is closed and gone before a command opens a dialog; and to the program, because
            // the action goes with the menu.
            QObject::connect(
                action, &QAction::triggered, QCoreApplication::instance(),
                [perform, command = item.action] { perform(command); }, Qt::QueuedConnection);
        }
    }
}

}  // namespace

StatusMenuPopup::StatusMenuPopup(MenuHandler perform) : m_perform(std::move(perform)) {
}

StatusMenuPopup::~StatusMenuPopup() {
    delete m_menu;
}

void StatusMenuPopup::toggle(const std::vector<MenuItem>& items) {
    if (m_menu) {
        m_menu->close();
        return;
    }
    m_menu = new QMenu;
    fill(*m_menu, items, m_perform);
    QObject::connect(m_menu, &QMenu::aboutToHide, m_menu, &QObject::deleteLater);
    m_menu->popup(QCursor::pos());
}

void StatusMenuPopup::update(const std::vector<MenuItem>& items) {
    if (!m_menu) {
        return;
    }
    const QList<QAction*> actions = m_menu->actions();
    for (qsizetype place = 0; place < actions.size(); ++place) {
        const MenuItem& item = items[static_cast<std::size_t>(place)];
        if (!item.separator) {
            apply(*m_menu, item, *actions[place]);
        }
    }
}

}  // namespace kestrune
