#include "app/MainMenuBar.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QMetaObject>
#include <QWidget>

#include "app/StatusMenuModel.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

/// The slot of text fields that carries an editing command out; nothing for the other commands.
const char* editingSlot(MenuAction action) {
    switch (action) {
        case MenuAction::undo:
            return "undo";
        case MenuAction::cut:
            return "cut";
        case MenuAction::copy:
            return "copy";
        case MenuAction::paste:
            return "paste";
        case MenuAction::selectAll:
            return "selectAll";
        default:
            return nullptr;
    }
}

void edit(const char* slot) {
    QWidget* const field = QApplication::focusWidget();
    if (field != nullptr && field->metaObject()->indexOfSlot(QByteArray(slot) + "()") >= 0) {
        QMetaObject::invokeMethod(field, slot, Qt::DirectConnection);
    }
}

void add(QMenu& menu, const MenuItem& item, const MenuHandler& perform) {
    QAction* const action = menu.addAction(withoutMnemonic(QString::fromStdString(item.title)));
    // Without a role of its own the toolkit would guess one from the words, and move "Quit Other Apps…" and "Settings"
    // into the application's menu.
    action->setMenuRole(item.action == MenuAction::quit ? QAction::QuitRole : QAction::NoRole);
    action->setAutoRepeat(false);
    action->setEnabled(item.enabled);
    if (!item.key.empty()) {
        // The toolkit's "Ctrl" is the Command key where there is one.
        action->setShortcut(QKeySequence(QLatin1String("Ctrl+") + QString::fromStdString(item.key).toUpper()));
    }
    if (const char* const slot = editingSlot(item.action)) {
        QObject::connect(action, &QAction::triggered, action, [slot] { edit(slot); });
    } else {
        QObject::connect(
            action, &QAction::triggered, action, [perform, command = item.action] { perform(command); },
            Qt::QueuedConnection);
    }
}

}  // namespace

MainMenuBar::MainMenuBar(const MenuHandler& perform) {
    for (const MenuItem& item : mainMenu()) {
        QMenu* const menu = m_bar.addMenu(withoutMnemonic(QString::fromStdString(item.title)));
        menu->menuAction()->setMenuRole(QAction::NoRole);
        for (const MenuItem& line : item.submenu) {
            add(*menu, line, perform);
        }
    }
}

}  // namespace kestrune
