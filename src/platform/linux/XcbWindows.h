#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/ApplicationSource.h"

namespace kestrune {

/// What a window says about the application it belongs to.
enum class XcbWindowKind {
    normal,     ///< makes its program an application
    secondary,  ///< a dialog or a palette of an application
    ornament,   ///< part of the desktop: a dock, the background, a menu, a splash, a notification
};

/// One window of the window manager's list.
struct XcbWindow {
    std::uint32_t id = 0;
    std::int32_t pid = 0;  ///< 0: not known, or a process of another machine
    std::string windowClass;
    std::string instance;
    XcbWindowKind kind = XcbWindowKind::normal;
    bool skipsTaskbar = false;

    /// Stands for its program among the desktop's applications.
    [[nodiscard]] bool isMain() const { return kind == XcbWindowKind::normal && !skipsTaskbar; }

    bool operator==(const XcbWindow&) const = default;
};

/// Who says which process a window belongs to.
struct XcbClientFacts {
    std::optional<std::int32_t> connectionPid;  ///< as the server sees the other end; never a process elsewhere
    std::optional<std::uint32_t> claimedPid;    ///< _NET_WM_PID: whatever the client wrote
    std::optional<std::string> machine;         ///< WM_CLIENT_MACHINE: whatever the client wrote
};

/// The process a window belongs to, 0 when it runs on another machine than localMachine or nobody knows. What the
/// server sees counts: in a sandbox a program does not know its own number. A window from elsewhere reaches the server
/// through a local process (of ssh) that is not the application.
[[nodiscard]] std::int32_t processOf(const XcbClientFacts& client, std::string_view localMachine);

/// The programs behind windows, in the order of their first window.
[[nodiscard]] std::vector<SourcedApplication> applicationsBehind(const std::vector<XcbWindow>& windows);

}  // namespace kestrune
