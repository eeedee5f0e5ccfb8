#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// What a menu item does.
enum class MenuAction {
    none,  ///< a plain line
    openOverview,
    openStorage,
    openExplorer,
    openAI,
    openApps,
    openAutomation,
    openActivity,
    openSettings,
    openPorts,
    quickClean,
    cleanSaved,
    protectCurrent,
    quitOtherApps,
    toggleDaily,
    clearMemory,
    checkUpdates,
    quit,
    undo,  ///< this and the next four go to the focused text field
    cut,
    copy,
    paste,
    selectAll,
};

/// Carries out a menu command. Main thread.
using MenuHandler = std::function<void(MenuAction)>;

/// One line of a menu, free of any toolkit.
struct MenuItem {
    bool separator = false;
    std::string title;
    MenuAction action = MenuAction::none;
    std::string key;  ///< key equivalent with Command, or Control where there is no such key; empty for none
    std::string tooltip;
    bool enabled = true;
    bool hidden = false;
    std::optional<bool> checked;  ///< nothing: not a check item
    std::vector<MenuItem> submenu;

    bool operator==(const MenuItem&) const = default;
};

}  // namespace kestrune
