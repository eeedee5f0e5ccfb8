#include "platform/linux/XcbDesktop.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <string_view>
#include <utility>

#include "base/Text.h"

namespace kestrune {

namespace {

// Anybody may write any property: lists longer than these are cut.
constexpr std::uint32_t mostWindows = 1024;
constexpr std::uint32_t mostAtoms = 64;
constexpr std::uint32_t mostSupported = 1024;
constexpr std::uint32_t longestText = 256;  // in units of 4 bytes

constexpr std::array secondaryTypes{XcbAtom::typeDialog, XcbAtom::typeUtility};
constexpr std::array ornamentTypes{XcbAtom::typeDesktop,   XcbAtom::typeDock,    XcbAtom::typeToolbar,
                                   XcbAtom::typeMenu,      XcbAtom::typeSplash,  XcbAtom::typeDropdownMenu,
                                   XcbAtom::typePopupMenu, XcbAtom::typeTooltip, XcbAtom::typeNotification,
                                   XcbAtom::typeCombo,     XcbAtom::typeDrag};

template <typename Container, typename Value>
bool contains(const Container& values, const Value& value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

std::string localMachine() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : std::string{};
}

// Window classes are Latin-1; toolkits write UTF-8 all the same.
std::string readable(const std::string& text) {
    if (isValidUtf8(text)) {
        return text;
    }
    std::string converted;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            converted += c;
        } else {
            converted += static_cast<char>(0xC0U | (byte >> 6U));
            converted += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return converted;
}

// The processes that the server sees at the other ends, by the part of a window's number that tells its client.
std::map<std::uint32_t, std::int32_t> processesIn(const xcb_res_query_client_ids_reply_t& reply) {
    std::map<std::uint32_t, std::int32_t> processes;
    for (auto id = xcb_res_query_client_ids_ids_iterator(&reply); id.rem > 0; xcb_res_client_id_value_next(&id)) {
        const bool isPid = (id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
                           xcb_res_client_id_value_value_length(id.data) >= 1;
        const std::uint32_t pid = isPid ? *xcb_res_client_id_value_value(id.data) : 0;
        if (pid > 0 && std::in_range<std::int32_t>(pid)) {
            processes[id.data->spec.client] = static_cast<std::int32_t>(pid);
        }
    }
    return processes;
}

}  // namespace

std::optional<XcbRoot> XcbDesktop::root() {
    m_connection.beginBatch();
    const xcb_window_t rootWindow = m_connection.root();
    const xcb_atom_t checkAtom = m_connection.atom(XcbAtom::supportingWmCheck);
    const std::uint32_t check = m_connection.ask(rootWindow, checkAtom, 1);
    const std::uint32_t supported = m_connection.ask(rootWindow, m_connection.atom(XcbAtom::supported), mostSupported);
    const std::uint32_t clients = m_connection.ask(rootWindow, m_connection.atom(XcbAtom::clientList), mostWindows);
    const std::uint32_t active = m_connection.ask(rootWindow, m_connection.atom(XcbAtom::activeWindow), 1);

    const std::vector<std::uint32_t> manager = numbers(check, XCB_ATOM_WINDOW);
    if (manager.empty() || numbers(m_connection.ask(manager.front(), checkAtom, 1), XCB_ATOM_WINDOW) != manager) {
        return std::nullopt;
    }
    const std::vector<std::uint32_t> hints = numbers(supported, XCB_ATOM_ATOM);
    XcbRoot root;
    root.clients = numbers(clients, XCB_ATOM_WINDOW);
    const std::vector<std::uint32_t> front = numbers(active, XCB_ATOM_WINDOW);
    root.active = front.empty() ? XCB_NONE : front.front();
    root.tellsActive = contains(hints, m_connection.atom(XcbAtom::activeWindow));
    root.closesWindows = contains(hints, m_connection.atom(XcbAtom::closeWindow));
    return root;
}

std::vector<XcbWindow> XcbDesktop::describe(const std::vector<xcb_window_t>& windows) {
    m_connection.beginBatch();
    std::vector<Questions> questions;
    std::map<std::uint32_t, xcb_res_client_id_spec_t> clients;
    for (const xcb_window_t window : windows) {
        questions.push_back(askAbout(window));
        clients.insert({window & m_connection.clientMask(), {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID}});
    }
    std::map<std::uint32_t, std::int32_t> processes;
    if (m_connection.tellsProcesses() && !clients.empty()) {
        std::vector<xcb_res_client_id_spec_t> specs;
        std::transform(clients.begin(), clients.end(), std::back_inserter(specs),
                       [](const auto& client) { return client.second; });
        const auto request =
            xcb_res_query_client_ids(m_connection.get(), static_cast<std::uint32_t>(specs.size()), specs.data());
        const auto reply = m_connection.await<xcb_res_query_client_ids_reply_t>(request.sequence);
        processes = reply ? processesIn(*reply) : processes;
    }
    std::vector<XcbWindow> described;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto process = processes.find(windows[i] & m_connection.clientMask());
        const auto pid = process == processes.end() ? std::nullopt : std::optional(process->second);
        if (std::optional<XcbWindow> window = answerAbout(windows[i], questions[i], pid)) {
            described.push_back(std::move(*window));
        }
    }
    return m_connection.isBroken() ? std::vector<XcbWindow>{} : described;
}

std::vector<xcb_window_t> XcbDesktop::closable(const std::vector<xcb_window_t>& windows) {
    m_connection.beginBatch();
    std::vector<std::uint32_t> questions;
    std::transform(windows.begin(), windows.end(), std::back_inserter(questions), [this](xcb_window_t window) {
        return m_connection.ask(window, m_connection.atom(XcbAtom::wmProtocols), mostAtoms);
    });
    std::vector<xcb_window_t> closable;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (contains(numbers(questions[i], XCB_ATOM_ATOM), m_connection.atom(XcbAtom::wmDeleteWindow))) {
            closable.push_back(windows[i]);
        }
    }
    return closable;
}

bool XcbDesktop::close(const std::vector<xcb_window_t>& windows, bool throughWindowManager) {
    constexpr std::uint32_t fromPager = 2;
    for (const xcb_window_t window : windows) {
        if (throughWindowManager) {
            send(m_connection.root(), window, m_connection.atom(XcbAtom::closeWindow), XCB_CURRENT_TIME, fromPager,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
        } else {
            send(window, window, m_connection.atom(XcbAtom::wmProtocols), m_connection.atom(XcbAtom::wmDeleteWindow),
                 XCB_CURRENT_TIME, XCB_EVENT_MASK_NO_EVENT);
        }
    }
    // The server answers in order: with this reply it has passed the requests on.
    m_connection.beginBatch();
    const auto answer =
        m_connection.await<xcb_get_input_focus_reply_t>(xcb_get_input_focus(m_connection.get()).sequence);
    return answer != nullptr;
}

std::vector<std::uint32_t> XcbDesktop::numbers(std::uint32_t sequence, xcb_atom_t type) {
    const auto reply = m_connection.await<xcb_get_property_reply_t>(sequence);
    if (!reply || reply->format != 32 || reply->type != type) {
        return {};
    }
    std::vector<std::uint32_t> values(static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) /
                                      sizeof(std::uint32_t));
    if (!values.empty()) {
        std::memcpy(values.data(), xcb_get_property_value(reply.get()), values.size() * sizeof(std::uint32_t));
    }
    return values;
}

std::optional<std::string> XcbDesktop::text(std::uint32_t sequence) {
    const auto reply = m_connection.await<xcb_get_property_reply_t>(sequence);
    if (!reply) {
        return std::nullopt;
    }
    if (reply->format != 8) {
        return std::string{};
    }
    return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

XcbDesktop::Questions XcbDesktop::askAbout(xcb_window_t window) const {
    return {m_connection.ask(window, m_connection.atom(XcbAtom::windowType), mostAtoms),
            m_connection.ask(window, m_connection.atom(XcbAtom::wmState), mostAtoms),
            m_connection.ask(window, XCB_ATOM_WM_CLASS, longestText),
            m_connection.ask(window, XCB_ATOM_WM_CLIENT_MACHINE, longestText),
            m_connection.ask(window, m_connection.atom(XcbAtom::wmPid), 1),
            m_connection.ask(window, XCB_ATOM_WM_TRANSIENT_FOR, 1)};
}

std::optional<XcbWindow> XcbDesktop::answerAbout(xcb_window_t window, const Questions& questions,
                                                 std::optional<std::int32_t> connectionPid) {
    const std::optional<std::string> classText = text(questions.windowClass);
    if (!classText) {
        return std::nullopt;
    }
    XcbWindow described;
    described.id = window;
    described.skipsTaskbar =
        contains(numbers(questions.state, XCB_ATOM_ATOM), m_connection.atom(XcbAtom::stateSkipTaskbar));
    described.kind =
        kindOf(numbers(questions.type, XCB_ATOM_ATOM), !numbers(questions.transientFor, XCB_ATOM_WINDOW).empty());
    // "instance\0class\0"
    const std::vector<std::string> names = split(*classText, '\0');
    described.instance = readable(names[0]);
    described.windowClass = names.size() > 1 ? readable(names[1]) : std::string{};
    XcbClientFacts client;
    client.connectionPid = connectionPid;
    if (const std::string machine = text(questions.machine).value_or(std::string{}); !machine.empty()) {
        client.machine = machine.substr(0, machine.find('\0'));
    }
    if (const std::vector<std::uint32_t> pid = numbers(questions.pid, XCB_ATOM_CARDINAL); !pid.empty()) {
        client.claimedPid = pid.front();
    }
    static const std::string thisMachine = localMachine();
    described.pid = processOf(client, thisMachine);
    return described;
}

XcbWindowKind XcbDesktop::kindOf(const std::vector<std::uint32_t>& types, bool isTransient) const {
    // The first type that is known counts.
    const auto isOne = [this](const auto& names, xcb_atom_t type) {
        return std::any_of(names.begin(), names.end(), [&](XcbAtom name) { return m_connection.atom(name) == type; });
    };
    for (const xcb_atom_t type : types) {
        if (type == m_connection.atom(XcbAtom::typeNormal)) {
            return XcbWindowKind::normal;
        }
        if (isOne(secondaryTypes, type)) {
            return XcbWindowKind::secondary;
        }
        if (isOne(ornamentTypes, type)) {
            return XcbWindowKind::ornament;
        }
    }
    return isTransient ? XcbWindowKind::secondary : XcbWindowKind::normal;
}

void XcbDesktop::send(xcb_window_t destination, xcb_window_t window, xcb_atom_t type, std::uint32_t first,
                      std::uint32_t second, std::uint32_t eventMask) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    event.data.data32[0] = first;
    event.data.data32[1] = second;
    std::array<char, sizeof(event)> bytes{};
    std::memcpy(bytes.data(), &event, sizeof(event));
    xcb_send_event(m_connection.get(), 0, destination, eventMask, bytes.data());
}

}  // namespace kestrune
