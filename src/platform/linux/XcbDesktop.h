#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/XcbConnection.h"
#include "platform/linux/XcbWindows.h"

namespace kestrune {

/// What a window manager that follows the Extended Window Manager Hints shows on the root window.
struct XcbRoot {
    std::vector<xcb_window_t> clients;  ///< in the order they appeared
    xcb_window_t active = XCB_NONE;
    bool tellsActive = false;    ///< the window manager keeps active up to date
    bool closesWindows = false;  ///< it understands _NET_CLOSE_WINDOW
};

/// Questions to the window manager and its clients over one connection. One thread.
class XcbDesktop final {
public:
    explicit XcbDesktop(XcbConnection& connection) : m_connection(connection) {}

    /// Nothing without a window manager that runs now: one that is gone leaves its list behind.
    [[nodiscard]] std::optional<XcbRoot> root();

    /// What is known about windows; those that are gone by now are left out.
    [[nodiscard]] std::vector<XcbWindow> describe(const std::vector<xcb_window_t>& windows);

    /// Those of windows that take part in closing politely. The window manager would kill the client of any other.
    [[nodiscard]] std::vector<xcb_window_t> closable(const std::vector<xcb_window_t>& windows);

    /// Asks windows to close as their close button does. True when the server took the requests.
    [[nodiscard]] bool close(const std::vector<xcb_window_t>& windows, bool throughWindowManager);

private:
    struct Questions {
        std::uint32_t type = 0;
        std::uint32_t state = 0;
        std::uint32_t windowClass = 0;
        std::uint32_t machine = 0;
        std::uint32_t pid = 0;
        std::uint32_t transientFor = 0;
    };

    [[nodiscard]] std::vector<std::uint32_t> numbers(std::uint32_t sequence, xcb_atom_t type);
    /// Nothing when the window is gone; empty when it has no such text.
    [[nodiscard]] std::optional<std::string> text(std::uint32_t sequence);
    [[nodiscard]] Questions askAbout(xcb_window_t window) const;
    [[nodiscard]] std::optional<XcbWindow> answerAbout(xcb_window_t window, const Questions& questions,
                                                       std::optional<std::int32_t> connectionPid);
    [[nodiscard]] XcbWindowKind kindOf(const std::vector<std::uint32_t>& types, bool isTransient) const;
    void send(xcb_window_t destination, xcb_window_t window, xcb_atom_t type, std::uint32_t first, std::uint32_t second,
              std::uint32_t eventMask) const;

    XcbConnection& m_connection;
};

}  // namespace kestrune
