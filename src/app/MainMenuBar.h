#pragma once

#include <QMenuBar>

#include "platform/MenuItem.h"

namespace kestrune {

/// The main menu on a desktop with one menu bar for the program in front. It belongs to no window and is there while
/// none is open. The editing commands go to the text field with the focus; the others to perform, from the event loop:
/// a command may open a dialog, and the menu should be gone by then. Main thread.
class MainMenuBar final {
public:
    explicit MainMenuBar(const MenuHandler& perform);

    [[nodiscard]] QMenuBar& bar() { return m_bar; }

private:
    QMenuBar m_bar;
};

}  // namespace kestrune
