#include "app/StatusMenuModel.h"

#include <string_view>
#include <utility>

namespace kestrune {

namespace {

// Places of the items that refresh changes.
constexpr std::size_t resourceItem = 1;
constexpr std::size_t resultItem = 2;
constexpr std::size_t quickItem = 4;
constexpr std::size_t savedItem = 5;
constexpr std::size_t dailyItem = 15;
constexpr std::size_t updateItem = 18;

std::string_view tooltipOf(MenuAction action) {
    switch (action) {
        case MenuAction::cleanSaved:
            return "Review the folders you saved in Storage. Nothing is removed until you confirm.";
        case MenuAction::quickClean:
            return "Review files your developer tools can build or download again, then choose what goes to Trash.";
        case MenuAction::openPorts:
            return "Find the app or server using a port, then confirm before stopping its process.";
        case MenuAction::protectCurrent:
            return "Keep the app you were using safe from Kestrune’s quit actions.";
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
    item.enabled = isAvailable(action);
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
    add(menu, "Clear Cached Memory…", MenuAction::clearMemory, "p").tooltip =
        "Optional memory reset. macOS normally manages memory; this may ask for an administrator password.";
    return menu;
}

std::vector<MenuItem> statusMenu() {
    std::vector<MenuItem> menu;
    addLine(menu, "Kestrune");
    addLine(menu, {});
    addLine(menu, {}, true);
    addSeparator(menu);
    add(menu, "🧹 Clean Build Caches…", MenuAction::quickClean, "l");
    add(menu, "📋 Clean the Same Folders Again…", MenuAction::cleanSaved, "s");
    add(menu, "🌐 Find What’s Using a Port…", MenuAction::openPorts, "n");
    add(menu, "🔒 Keep My Current App Open", MenuAction::protectCurrent);
    add(menu, "🚪 Quit Other Apps…", MenuAction::quitOtherApps, "e");
    addSeparator(menu);
    add(menu, "✦ Open Kestrune", MenuAction::openOverview, "o");
    add(menu, "💾 Find What’s Taking Space…", MenuAction::openStorage, "d");
    add(menu, "🖥 Running Apps…", MenuAction::openApps, "k");
    add(menu, "📂 Find Big Files…", MenuAction::openExplorer, "b");
    add(menu, "🧠 AI Tools…", MenuAction::openAI, "i");
    add(menu, "🔁 Daily Scan Reminders", MenuAction::toggleDaily, "m").checked = false;
    add(menu, "🕘 Recent Actions…", MenuAction::openActivity);
    addSeparator(menu);
    add(menu, "Check for Updates…", MenuAction::checkUpdates, "u");
    add(menu, "⚙️ Settings & Help…", MenuAction::openSettings, ",");
    add(menu, "Advanced", MenuAction::none).submenu = advancedMenu();
    addSeparator(menu);
    add(menu, "Quit Kestrune", MenuAction::quit, "q");
    return menu;
}

}  // namespace

bool isAvailable(MenuAction action) {
    return action != MenuAction::checkUpdates;
}

StatusMenuModel::StatusMenuModel() : m_items(statusMenu()) {
}

void StatusMenuModel::refresh(const StatusMenuState& state) {
    const std::string percent = std::to_string(state.memoryPercent) + "%";
    m_state = state;
    m_title = (state.updateAvailable ? "🧹 ↑ " : "🧹 ") + percent;
    m_tooltip = "Kestrune · Memory usage " + percent + (state.updateAvailable ? " · Update available" : "");

    m_items[resourceItem].title = "Memory " + percent + " · " + std::to_string(state.freeDiskGB) + " GB disk available";
    m_items[resultItem].hidden = !state.message.has_value();
    m_items[resultItem].title = state.message.value_or(std::string{});
    m_items[quickItem].title = state.isScanning ? "🧹 Scanning Caches…" : "🧹 Clean Build Caches…";
    m_items[dailyItem].checked = state.reminders;
    const bool idle = !state.isScanning && !state.isCleaning;
    m_items[quickItem].enabled = idle;
    m_items[savedItem].enabled = idle;
    m_items[updateItem].title = state.updateAvailable ? "Update Available — Install…" : "Check for Updates…";
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
    add(menu[0].submenu, "Quit Kestrune", MenuAction::quit, "q");

    menu[1].title = "Edit";
    add(menu[1].submenu, "Undo", MenuAction::undo, "z");
    add(menu[1].submenu, "Cut", MenuAction::cut, "x");
    add(menu[1].submenu, "Copy", MenuAction::copy, "c");
    add(menu[1].submenu, "Paste", MenuAction::paste, "v");
    add(menu[1].submenu, "Select All", MenuAction::selectAll, "a");

    menu[2].title = "Actions";
    add(menu[2].submenu, "Clear Cached Memory (Advanced)…", MenuAction::clearMemory, "p");
    add(menu[2].submenu, "Clean Build Caches…", MenuAction::quickClean, "l");
    add(menu[2].submenu, "Clean the Same Folders Again…", MenuAction::cleanSaved, "s");
    add(menu[2].submenu, "Find What’s Using a Port…", MenuAction::openPorts, "n");
    add(menu[2].submenu, "Keep My Current App Open", MenuAction::protectCurrent);
    add(menu[2].submenu, "Quit Other Apps…", MenuAction::quitOtherApps, "e");

    menu[3].title = "View";
    add(menu[3].submenu, "Overview", MenuAction::openOverview, "o");
    add(menu[3].submenu, "Storage", MenuAction::openStorage, "d");
    add(menu[3].submenu, "Disk Explorer", MenuAction::openExplorer, "b");
    add(menu[3].submenu, "AI Tools", MenuAction::openAI, "i");
    add(menu[3].submenu, "Running Apps", MenuAction::openApps, "k");
    add(menu[3].submenu, "Settings", MenuAction::openSettings, ",");
    add(menu[3].submenu, "Check for Updates…", MenuAction::checkUpdates, "u");
    return menu;
}

}  // namespace kestrune
