#pragma once

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace kestrune {

/// Names the window manager and its clients speak with.
enum class XcbAtom : std::size_t {
    clientList,
    activeWindow,
    supported,
    supportingWmCheck,
    closeWindow,
    wmPid,
    wmState,
    stateSkipTaskbar,
    windowType,
    typeNormal,
    typeDialog,
    typeUtility,
    typeDesktop,
    typeDock,
    typeToolbar,
    typeMenu,
    typeSplash,
    typeDropdownMenu,
    typePopupMenu,
    typeTooltip,
    typeNotification,
    typeCombo,
    typeDrag,
    wmProtocols,
    wmDeleteWindow,
    count
};

/// Memory that xcb gave away.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Reply>
using XcbReply = std::unique_ptr<Reply, XcbFree>;

/// A connection to the X server that never waits long: requests are sent in batches, and replies are waited for until
/// the batch's time is up. A connection whose server went away or does not answer is broken for good; nothing is
/// thrown and the program goes on. One thread.
class XcbConnection final {
public:
    /// To the server DISPLAY names; null when there is none, or one on this machine that does not begin to answer
    /// within a quarter of a second. libxcb knows no limit: one on another machine is waited for until it greets, and
    /// left alone unless it is asked for.
    [[nodiscard]] static std::unique_ptr<XcbConnection> open(bool alsoElsewhere);

    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;
    ~XcbConnection();

    [[nodiscard]] xcb_connection_t* get() const { return m_connection; }

    [[nodiscard]] xcb_window_t root() const { return m_root; }

    [[nodiscard]] xcb_atom_t atom(XcbAtom name) const { return m_atoms.at(static_cast<std::size_t>(name)); }

    /// The bits of a window's number that tell its client.
    [[nodiscard]] std::uint32_t clientMask() const { return m_clientMask; }

    /// The server tells the processes of its clients.
    [[nodiscard]] bool tellsProcesses() const { return m_tellsProcesses; }

    [[nodiscard]] bool isBroken() const { return m_isBroken || xcb_connection_has_error(m_connection) != 0; }

    /// The replies to what is sent from now on are waited for together.
    void beginBatch();

    /// The reply to a request; null when it is an error, or the connection is broken.
    template <typename Reply>
    [[nodiscard]] XcbReply<Reply> await(std::uint32_t sequence) {
        return XcbReply<Reply>(static_cast<Reply*>(awaitAny(sequence)));
    }

    /// Asks for a property of any type, length 4-byte units at most.
    [[nodiscard]] std::uint32_t ask(xcb_window_t window, xcb_atom_t property, std::uint32_t length) const;

private:
    explicit XcbConnection(xcb_connection_t* connection, int screen);

    void* awaitAny(std::uint32_t sequence);
    void internAtoms();

    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_NONE;
    std::uint32_t m_clientMask = 0;
    std::array<xcb_atom_t, static_cast<std::size_t>(XcbAtom::count)> m_atoms{};
    std::chrono::steady_clock::time_point m_deadline;
    bool m_tellsProcesses = false;
    bool m_isBroken = false;
};

}  // namespace kestrune
