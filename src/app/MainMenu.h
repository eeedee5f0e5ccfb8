#pragma once

#include "app/StatusMenuModel.h"

class QWidget;

namespace kestrune::MainMenu {

/// Gives window the commands of the main menu with their key equivalents. This look has no menu bar; the
/// editing commands are left out because text fields answer their keys themselves. Main thread.
void install(QWidget& window, const MenuHandler& perform);

}  // namespace kestrune::MainMenu
