#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/MenuItem.h"

namespace kestrune {

/// One line of a menu as it has to look from now on.
struct MenuLineChange {
    std::vector<std::size_t>
        place;  ///< its place in the menu; for a line of a submenu that submenu's place comes first
    MenuItem line;

    bool operator==(const MenuLineChange&) const = default;
};

/// What brings a menu of the system's from what it shows to what it should show.
struct MenuSteps {
    std::optional<std::vector<MenuItem>> rebuilt;  ///< all of it anew; there are no changes then
    std::vector<MenuLineChange> changes;

    bool operator==(const MenuSteps&) const = default;
};

/// Merges new content into a menu that may be open. In an open menu every line stays where it is: what would add, take
/// away, show or hide one waits until the menu has closed. Answers only what differs. Main thread.
class MenuMerge final {
public:
    /// The menu should look like this.
    [[nodiscard]] MenuSteps show(std::vector<MenuItem> menu);

    void opened() { m_isOpen = true; }

    /// What has waited.
    [[nodiscard]] MenuSteps closed();

private:
    [[nodiscard]] MenuSteps steps();

    std::vector<MenuItem> m_wanted;
    std::vector<MenuItem> m_shown;
    bool m_isOpen = false;
};

/// The line of a menu as the system's menu shows it: one line, cut where it is so long that it would make the menu as
/// wide as the screen. What was cut is told by its tooltip. Pure.
[[nodiscard]] MenuItem fitted(MenuItem line);

}  // namespace kestrune
