#include "app/StatusMenuModel.h"

#include <string_view>
#include <utility>

#include "base/Localized.h"

namespace kestrune {

namespace {

// Places of the items that refresh changes.
constexpr std::size_t resourceItem = 1;
constexpr std::size_t resultItem = 2;
constexpr std::size_t quickItem = 4;
constexpr std::size_t savedItem = 5;
constexpr std::size_t dailyItem = 15;
constexpr std::size_t updateItem = 18;

std::string tooltipOf(MenuAction action) {
    switch (action) {
        case MenuAction::cleanSaved:
            return localized("Review the folders you saved in Storage. Nothing is removed until you confirm.");
        case MenuAction::quickClean:
            return localized(
                "Review files your developer tools can build or download again, then choose what goes to Trash.");
        case MenuAction::openPorts:
            return localized("Find the app or server using a port, then confirm before stopping its process.");
        case MenuAction::protectCurrent:
            return localized("Keep the app you were using safe from Kestrune’s quit actions.");
        default:
            return {};
    }
}

MenuItem& add(std::vector<MenuItem>& menu, std::string title, MenuAction action, std::string keyEquivalent = {}) {
    MenuItem item;
    item.title = std::move(title);
    item.action = action;
    item.key = std::move(keyEquivalent);
    item.tooltip = tooltipOf(action);
    menu.push_back(std::move(item));
    return menu.back();
}

void addLine(std::vector<MenuItem>& menu, std::string title, bool hidden = false) {
    MenuItem item;
    item.title = std::move(title);
    item.enabled = false;
    item.hidden = hidden;
    menu.push_back(std::move(item));
}

void addSeparator(std::vector<MenuItem>& menu) {
    MenuItem item;
    item.separator = true;
    menu.push_back(std::move(item));
}

std::vector<MenuItem> advancedMenu() {
    std::vector<MenuItem> menu;
    add(menu, localized("Clear Cached Memory…"), MenuAction::clearMemory, "p").tooltip =
        localized("Optional memory reset. macOS normally manages memory; this may ask for an administrator password.");
    return menu;
}

std::vector<MenuItem> statusMenu() {
    std::vector<MenuItem> menu;
    addLine(menu, "Kestrune");
    addLine(menu, {});
    addLine(menu, {}, true);
    addSeparator(menu);
    add(menu, localized("🧹 Clean Build Caches…"), MenuAction::quickClean, "l");
    add(menu, localized("📋 Clean the Same Folders Again…"), MenuAction::cleanSaved, "s");
    add(menu, localized("🌐 Find What’s Using a Port…"), MenuAction::openPorts, "n");
    add(menu, localized("🔒 Keep My Current App Open"), MenuAction::protectCurrent);
    add(menu, localized("🚪 Quit Other Apps…"), MenuAction::quitOtherApps, "e");
    addSeparator(menu);
    add(menu, localized("✦ Open Kestrune"), MenuAction::openOverview, "o");
    add(menu, localized("💾 Find What’s Taking Space…"), MenuAction::openStorage, "d");
    add(menu, localized("🖥 Running Apps…"), MenuAction::openApps, "k");
    add(menu, localized("📂 Find Big Files…"), MenuAction::openExplorer, "b");
    add(menu, localized("🧠 AI Tools…"), MenuAction::openAI, "i");
    add(menu, localized("🔁 Daily Scan Reminders"), MenuAction::toggleDaily, "m").checked = false;
    add(menu, localized("🕘 Recent Actions…"), MenuAction::openActivity);
    addSeparator(menu);
    add(menu, localized("Check for Updates…"), MenuAction::checkUpdates, "u");
    add(menu, localized("⚙️ Settings & Help…"), MenuAction::openSettings, ",");
    add(menu, localized("Advanced"), MenuAction::none).submenu = advancedMenu();
    addSeparator(menu);
    add(menu, localized("Quit Kestrune"), MenuAction::quit, "q");
    return menu;
}

}  // namespace

StatusMenuModel::StatusMenuModel() {
    m_content.menu = statusMenu();
}

void StatusMenuModel::refresh(const StatusMenuState& state) {
    const std::string percent = localized("%1%", {std::to_string(state.memoryPercent)});
    m_content.memoryPercent = state.memoryPercent;
    m_content.updateAvailable = state.updateAvailable;
    m_content.title = (state.updateAvailable ? "🧹 ↑ " : "🧹 ") + percent;
    m_content.tooltip = state.updateAvailable ? localized("Kestrune · Memory usage %1 · Update available", {percent})
                                              : localized("Kestrune · Memory usage %1", {percent});

    std::vector<MenuItem>& items = m_content.menu;
    items[resourceItem].title =
        localized("Memory %1 · %2 GB disk available", {percent, std::to_string(state.freeDiskGB)});
    items[resultItem].hidden = !state.message.has_value();
    items[resultItem].title = state.message.value_or(std::string{});
    items[quickItem].title =
        state.isScanning ? localized("🧹 Scanning Caches…") : localized("🧹 Clean Build Caches…");
    items[dailyItem].checked = state.reminders;
    const bool idle = !state.isScanning && !state.isCleaning;
    items[quickItem].enabled = idle;
    items[savedItem].enabled = idle;
    items[updateItem].title =
        state.updateAvailable ? localized("Update Available — Install…") : localized("Check for Updates…");
}

std::string dumpMenu(const std::vector<MenuItem>& items) {
    std::string text;
    for (const MenuItem& item : items) {
        text += item.separator ? "---" : item.title;
        text += '\n';
    }
    return text;
}

std::vector<MenuItem> mainMenu() {
    std::vector<MenuItem> menu(4);
    add(menu[0].submenu, localized("Quit Kestrune"), MenuAction::quit, "q");

    menu[1].title = localized("Edit");
    add(menu[1].submenu, localized("Undo"), MenuAction::undo, "z");
    add(menu[1].submenu, localized("Cut"), MenuAction::cut, "x");
    add(menu[1].submenu, localized("Copy"), MenuAction::copy, "c");
    add(menu[1].submenu, localized("Paste"), MenuAction::paste, "v");
    add(menu[1].submenu, localized("Select All"), MenuAction::selectAll, "a");

    menu[2].title = localized("Actions");
    add(menu[2].submenu, localized("Clear Cached Memory (Advanced)…"), MenuAction::clearMemory, "p");
    add(menu[2].submenu, localized("Clean Build Caches…"), MenuAction::quickClean, "l");
    add(menu[2].submenu, localized("Clean the Same Folders Again…"), MenuAction::cleanSaved, "s");
    add(menu[2].submenu, localized("Find What’s Using a Port…"), MenuAction::openPorts, "n");
    add(menu[2].submenu, localized("Keep My Current App Open"), MenuAction::protectCurrent);
    add(menu[2].submenu, localized("Quit Other Apps…"), MenuAction::quitOtherApps, "e");

    menu[3].title = localized("View");
    add(menu[3].submenu, localized("Overview"), MenuAction::openOverview, "o");
    add(menu[3].submenu, localized("Storage"), MenuAction::openStorage, "d");
    add(menu[3].submenu, localized("Disk Explorer"), MenuAction::openExplorer, "b");
    add(menu[3].submenu, localized("AI Tools"), MenuAction::openAI, "i");
    add(menu[3].submenu, localized("Running Apps"), MenuAction::openApps, "k");
    add(menu[3].submenu, localized("Settings"), MenuAction::openSettings, ",");
    add(menu[3].submenu, localized("Check for Updates…"), MenuAction::checkUpdates, "u");
    return menu;
}

}  // namespace kestrune
