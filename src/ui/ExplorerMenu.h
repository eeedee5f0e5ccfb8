#pragma once

#include <QPoint>
#include <string>

class QWidget;

namespace kestrune {

class WorkspaceStore;

/// What can be done with an item of the disk explorer.
struct ExplorerMenuItem {
    std::string path;
    bool isDirectory = false;
};

/// Opens the menu of item at place, in global coordinates. It is parent's, and gone once it is closed.
void openExplorerMenu(WorkspaceStore& store, const ExplorerMenuItem& item, const QPoint& place, QWidget& parent);

}  // namespace kestrune
