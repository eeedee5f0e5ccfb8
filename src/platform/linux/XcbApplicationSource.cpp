#include "platform/linux/XcbApplicationSource.h"

#include <QObject>

#include <utility>

#include "platform/linux/LinuxAccount.h"
#include "platform/linux/XcbGuestServer.h"

namespace kestrune {

namespace {

constexpr std::chrono::seconds betweenAttempts{5};
constexpr std::chrono::seconds betweenLooks{30};

// X runs inside another display system, whose own programs it does not know.
bool isGuest() {
    return !LinuxAccount::variable("WAYLAND_DISPLAY").empty();
}

std::vector<xcb_window_t> mainWindowsOf(std::int32_t pid, const std::vector<XcbWindow>& windows) {
    std::vector<xcb_window_t> found;
    for (const XcbWindow& window : windows) {
        if (window.pid == pid && window.isMain()) {
            found.push_back(window.id);
        }
    }
    return found;
}

}  // namespace

XcbApplicationSource::XcbApplicationSource() {
    m_later.setSingleShot(true);
    QObject::connect(&m_later, &QTimer::timeout, &m_later, [this] {
        if (m_connection) {
            readEvents();
        } else {
            listen();
        }
    });
}

bool XcbApplicationSource::isAvailable() {
    return root().has_value();
}

bool XcbApplicationSource::isComplete() {
    return !isGuest() && (m_isManaged || isAvailable());
}

std::vector<SourcedApplication> XcbApplicationSource::applications() {
    const std::optional<XcbRoot> shown = root();
    return shown ? applicationsBehind(XcbDesktop(*m_connection).describe(shown->clients))
                 : std::vector<SourcedApplication>{};
}

std::optional<std::int32_t> XcbApplicationSource::frontmost() {
    const std::optional<XcbRoot> shown = root();
    return shown ? processInFront(*shown) : std::nullopt;
}

bool XcbApplicationSource::tellsFrontmost() {
    const std::optional<XcbRoot> shown = root();
    return shown && shown->tellsActive;
}

void XcbApplicationSource::observeActivation(ActivationHandler handler) {
    m_handler = std::move(handler);
    listen();
}

bool XcbApplicationSource::close(std::int32_t pid, const IsStillMeant& isStillMeant) {
    const std::optional<XcbRoot> shown = root();
    if (!shown) {
        return false;
    }
    XcbDesktop desktop(*m_connection);
    const std::vector<xcb_window_t> windows = desktop.closable(mainWindowsOf(pid, desktop.describe(shown->clients)));
    return !windows.empty() && !m_connection->isBroken() && isStillMeant() &&
           desktop.close(windows, shown->closesWindows);
}

std::optional<XcbRoot> XcbApplicationSource::root() {
    m_isManaged = false;
    if (!connect()) {
        return std::nullopt;
    }
    std::optional<XcbRoot> shown = XcbDesktop(*m_connection).root();
    m_isManaged = shown.has_value();
    if (m_connection->isBroken()) {
        disconnect();
        return std::nullopt;
    }
    if (m_notifier) {
        // Events that came along with the replies lie in memory, where nobody sees them arrive.
        m_later.start(0);
    }
    return shown;
}

bool XcbApplicationSource::connect() {
    if (m_connection && m_connection->isBroken()) {
        disconnect();
    }
    const auto now = std::chrono::steady_clock::now();
    if (m_connection || now < m_notBefore) {
        return m_connection != nullptr;
    }
    // Looking for the server among thousands of processes takes its time.
    const bool guest = isGuest();
    m_notBefore = now + (guest ? betweenLooks : betweenAttempts);
    if (!guest || guestServerRuns()) {
        m_connection = XcbConnection::open(!guest);
    }
    if (m_connection && m_handler) {
        listen();
    }
    return m_connection != nullptr;
}

void XcbApplicationSource::disconnect() {
    if (m_notifier) {
        // It may be the one that is calling.
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater();
    }
    m_connection.reset();
    m_notBefore = std::chrono::steady_clock::now() + betweenAttempts;
    if (m_handler) {
        m_later.start(betweenLooks);
    }
}

void XcbApplicationSource::listen() {
    if (m_notifier) {
        return;
    }
    if (!m_connection && !connect()) {
        m_later.start(betweenLooks);
        return;
    }
    if (m_notifier) {
        return;
    }
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->get(), m_connection->root(), XCB_CW_EVENT_MASK, &events);
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection->get()), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
    // Whoever is in front now came there before anybody listened.
    m_front = frontmost().value_or(m_front);
}

std::optional<std::int32_t> XcbApplicationSource::processInFront(const XcbRoot& root) {
    if (root.active == XCB_NONE) {
        return std::nullopt;
    }
    const std::vector<XcbWindow> front = XcbDesktop(*m_connection).describe({root.active});
    const bool isProgram = !front.empty() && front.front().kind != XcbWindowKind::ornament && front.front().pid > 0;
    return isProgram ? std::optional(front.front().pid) : std::nullopt;
}

void XcbApplicationSource::readEvents() {
    bool isFrontChanged = false;
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection->get())}) {
        constexpr unsigned sentByClient = 0x80;
        if ((event->response_type & ~sentByClient) == XCB_PROPERTY_NOTIFY) {
            const auto* const change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            isFrontChanged = isFrontChanged || change->atom == m_connection->atom(XcbAtom::activeWindow);
        }
    }
    if (m_connection->isBroken()) {
        disconnect();
    } else if (isFrontChanged) {
        tellFront();
    }
}

void XcbApplicationSource::tellFront() {
    // Window managers say "nothing" between two windows, and say each twice.
    const std::optional<std::int32_t> front = frontmost();
    if (front && *front != m_front) {
        m_front = *front;
        m_handler(*front);
    }
}

}  // namespace kestrune
