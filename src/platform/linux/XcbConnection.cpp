#include "platform/linux/XcbConnection.h"

#include <poll.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/XcbGreeting.h"

namespace kestrune {

namespace {

constexpr std::chrono::milliseconds patience{250};

constexpr std::array<std::string_view, static_cast<std::size_t>(XcbAtom::count)> atomNames{
    "_NET_CLIENT_LIST",
    "_NET_ACTIVE_WINDOW",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_CLOSE_WINDOW",
    "_NET_WM_PID",
    "_NET_WM_STATE",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DND",
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
};

}  // namespace

std::unique_ptr<XcbConnection> XcbConnection::open(bool alsoElsewhere) {
    const char* const display = std::getenv("DISPLAY");
    if (display == nullptr || *display == '\0') {
        return nullptr;
    }
    const std::vector<std::string> sockets = XcbGreeting::socketsOf(display);
    const LinuxFileDescriptor answered = XcbGreeting::answered(sockets, patience);
    if (!answered && !(sockets.empty() && alsoElsewhere)) {
        return nullptr;
    }
    int screen = 0;
    // Never null; a connection that failed says so and has to be taken down all the same.
    std::unique_ptr<XcbConnection> connection(new XcbConnection(xcb_connect(nullptr, &screen), screen));
    return connection->isBroken() ? nullptr : std::move(connection);
}

XcbConnection::XcbConnection(xcb_connection_t* connection, int screen) : m_connection(connection) {
    if (isBroken()) {
        return;
    }
    const xcb_setup_t* const setup = xcb_get_setup(m_connection);
    m_clientMask = ~setup->resource_id_mask;
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
    for (; screen > 0 && screens.rem > 1; --screen) {
        xcb_screen_next(&screens);
    }
    m_isBroken = screens.rem == 0;
    if (m_isBroken) {
        return;
    }
    m_root = screens.data->root;
    xcb_prefetch_extension_data(m_connection, &xcb_res_id);
    internAtoms();
    const xcb_query_extension_reply_t* const resources = xcb_get_extension_data(m_connection, &xcb_res_id);
    if (resources == nullptr || resources->present == 0) {
        return;
    }
    // Servers tell processes from version 1.2 on.
    const auto version = await<xcb_res_query_version_reply_t>(xcb_res_query_version(m_connection, 1, 2).sequence);
    m_tellsProcesses =
        version && (version->server_major > 1 || (version->server_major == 1 && version->server_minor >= 2));
}

XcbConnection::~XcbConnection() {
    xcb_disconnect(m_connection);
}

void XcbConnection::beginBatch() {
    m_deadline = std::chrono::steady_clock::now() + patience;
}

void XcbConnection::internAtoms() {
    beginBatch();
    std::array<std::uint32_t, atomNames.size()> sequences{};
    std::transform(atomNames.begin(), atomNames.end(), sequences.begin(), [this](std::string_view name) {
        return xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()).sequence;
    });
    std::transform(sequences.begin(), sequences.end(), m_atoms.begin(), [this](std::uint32_t sequence) {
        const auto reply = await<xcb_intern_atom_reply_t>(sequence);
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    });
}

std::uint32_t XcbConnection::ask(xcb_window_t window, xcb_atom_t property, std::uint32_t length) const {
    return xcb_get_property(m_connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, length).sequence;
}

void* XcbConnection::awaitAny(std::uint32_t sequence) {
    if (isBroken()) {
        return nullptr;
    }
    xcb_flush(m_connection);
    while (!isBroken()) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(m_connection, sequence, &reply, &error) != 0) {
            std::free(error);
            return reply;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - std::chrono::steady_clock::now());
        pollfd waiting{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        m_isBroken = left.count() <= 0 || ::poll(&waiting, 1, static_cast<int>(left.count())) == 0;
    }
    return nullptr;
}

}  // namespace kestrune
