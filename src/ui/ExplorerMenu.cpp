#include "ui/ExplorerMenu.h"

#include <QMenu>

#include "ui/UiText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

void openExplorerMenu(WorkspaceStore& store, const ExplorerMenuItem& item, const QPoint& place, QWidget& parent) {
    auto* menu = new QMenu(&parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (item.isDirectory) {
        QAction* explore = menu->addAction(translated("Explore"));
        explore->setEnabled(!store.isExploring.get());
        QObject::connect(explore, &QAction::triggered, menu, [&store, path = item.path] { store.explore(path); });
    }
    const QAction* reveal = menu->addAction(translated("Show in Finder"));
    QObject::connect(reveal, &QAction::triggered, menu, [&store, path = item.path] { store.reveal(path); });
    menu->popup(place);
}

}  // namespace kestrune
