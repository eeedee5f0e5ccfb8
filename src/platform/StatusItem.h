#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/MenuItem.h"

namespace kestrune {

/// What the status item shows.
struct StatusItemContent {
    std::string title;  ///< "🧹 63%", or "🧹 ↑ 63%" with an update waiting
    std::string tooltip;
    int memoryPercent = 0;  ///< the two figures behind the title, for a tray that draws a picture of it
    bool updateAvailable = false;
    std::vector<MenuItem> menu;

    bool operator==(const StatusItemContent&) const = default;
};

/// The program's place in the desktop's status area. Main thread.
class StatusItem {
public:
    struct Handlers {
        MenuHandler perform;                 ///< a line of the menu was chosen
        std::function<void()> menuWillOpen;  ///< the menu is about to open: update() may follow before this returns
        std::function<void()> toggleMenu;    ///< where the desktop hands clicks to the program: open the menu under the
                                             ///< pointer, or close it
        std::function<void()> unavailable;   ///< there is no status area
    };

    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// Prepares the item, which appears with the first update. Calls handlers from the event loop for as long as it
    /// lives. Once.
    virtual void start(Handlers handlers) = 0;

    /// Shows content from now on, in an open menu too. Costs nothing where nothing changed. After start.
    virtual void update(const StatusItemContent& content) = 0;

    /// Whether the user can see and use the item now.
    [[nodiscard]] virtual bool isShown() const = 0;
};

}  // namespace kestrune
