#include "app/MainMenu.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

namespace kestrune::MainMenu {

namespace {

bool isEditing(MenuAction action) {
    switch (action) {
        case MenuAction::undo:
        case MenuAction::cut:
        case MenuAction::copy:
        case MenuAction::paste:
        case MenuAction::selectAll:
            return true;
        default:
            return false;
    }
}

}  // namespace

void install(QWidget& window, const MenuHandler& perform) {
    for (const MenuItem& menu : mainMenu()) {
        for (const MenuItem& item : menu.submenu) {
            if (item.key.empty() || isEditing(item.action)) {
                continue;
            }
            auto* action = new QAction(QString::fromStdString(item.title), &window);
            action->setShortcut(QKeySequence(QLatin1String("Ctrl+") + QString::fromStdString(item.key).toUpper()));
            action->setShortcutContext(Qt::WindowShortcut);
            action->setAutoRepeat(false);
            action->setEnabled(item.enabled);
            // Queued: a command may open a dialog, and the key event should be over by then.
            QObject::connect(
                action, &QAction::triggered, &window, [perform, command = item.action] { perform(command); },
                Qt::QueuedConnection);
            window.addAction(action);
        }
    }
}

}  // namespace kestrune::MainMenu
