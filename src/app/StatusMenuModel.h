#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/MenuItem.h"
#include "platform/StatusItem.h"

namespace kestrune {

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

    /// All of it, as a status item takes it. The title and the tooltip are empty before the first refresh.
    [[nodiscard]] const StatusItemContent& content() const { return m_content; }

    [[nodiscard]] const std::vector<MenuItem>& items() const { return m_content.menu; }

    [[nodiscard]] const std::string& title() const { return m_content.title; }

    [[nodiscard]] const std::string& tooltip() const { return m_content.tooltip; }

    bool operator==(const StatusMenuModel&) const = default;

private:
    StatusItemContent m_content;
};

/// The titles of items, one a line, "---" for a separator.
[[nodiscard]] std::string dumpMenu(const std::vector<MenuItem>& items);

/// The application's main menu: four top-level items, each with its submenu.
[[nodiscard]] std::vector<MenuItem> mainMenu();

}  // namespace kestrune
