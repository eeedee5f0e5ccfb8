#pragma once

#include <string>

namespace kestrune {

/// The program's place among the windows of the desktop. Nothing here blocks or fails. Main thread.
class DockTile {
public:
    enum class ActivationPolicy {
        accessory,  ///< in the tray only
        regular,    ///< with an entry in the dock or task bar
    };

    DockTile() = default;
    DockTile(const DockTile&) = delete;
    DockTile& operator=(const DockTile&) = delete;
    virtual ~DockTile() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// Marks the entry with a short text; empty takes the mark away.
    virtual void setBadgeLabel(const std::string& label) = 0;

    /// Brings the program in front of the others, be none of its windows open. Nothing where that is the windows' own
    /// affair.
    virtual void activate() = 0;
};

}  // namespace kestrune
