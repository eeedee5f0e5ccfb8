#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

class WorkspaceStore;

/// What a menu item does. none is a plain line, notBuilt a command that this version cannot carry out.
enum class MenuAction {
    none,
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
};

/// One line of the status menu, free of any toolkit.
struct MenuItem {
    bool separator = false;
    std::string title;
    MenuAction action = MenuAction::none;
    std::string key;  ///< key equivalent with Command (Control on Linux); empty for none
    std::string tooltip;
    bool enabled = true;
    bool hidden = false;
    std::optional<bool> checked;  ///< nothing: not a check item
    std::vector<MenuItem> submenu;

    bool operator==(const MenuItem&) const = default;
};

}  // namespace kestrune
