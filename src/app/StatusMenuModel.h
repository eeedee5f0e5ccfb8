#pragma once

#include <cstdint>
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
    std::string key;  ///< key equivalent with Command (Control on Linux); empty for none
    std::string tooltip;
    bool enabled = true;
    bool hidden = false;
    std::optional<bool> checked;  ///< nothing: not a check item
    std::vector<MenuItem> submenu;

    bool operator==(const MenuItem&) const = default;
};

/// What the live parts of the status menu are made from.
struct StatusMenuState {
    int memoryPercent = 0;
    std::int64_t freeDiskGB = 0;
    std::optional<std::string> message = std::nullopt;
    bool isScanning = false;
    bool isCleaning = false;
    bool reminders = false;
    bool updateAvailable = false;

    bool operator==(const StatusMenuState&) const = default;
};

/// The status menu and the status item's title and tooltip, as they should be shown.
class StatusMenuModel final {
public:
    /// The menu as it is before the first refresh.
    StatusMenuModel();

    void refresh(const StatusMenuState& state);

    [[nodiscard]] const std::vector<MenuItem>& items() const { return m_items; }

    /// "🧹 63%", or "🧹 ↑ 63%" with an update waiting; empty before the first refresh.
    [[nodiscard]] const std::string& title() const { return m_title; }

    [[nodiscard]] const std::string& tooltip() const { return m_tooltip; }

    [[nodiscard]] const StatusMenuState& state() const { return m_state; }

    bool operator==(const StatusMenuModel&) const = default;

private:
    std::vector<MenuItem> m_items;
    std::string m_title;
    std::string m_tooltip;
    StatusMenuState m_state;
};

/// The titles of items, one a line, "---" for a separator.
[[nodiscard]] std::string dumpMenu(const std::vector<MenuItem>& items);

/// The application's main menu: four top-level items, each with its submenu.
[[nodiscard]] std::vector<MenuItem> mainMenu();

}  // namespace kestrune
