#include "platform/linux/SwaySource.h"

#include <QObject>

#include <chrono>
#include <utility>

namespace kestrune {

namespace {

// sway-ipc(7)
constexpr std::uint32_t runCommand = 0;
constexpr std::uint32_t subscribe = 2;
constexpr std::uint32_t getTree = 4;
constexpr std::uint32_t windowEvent = 0x8000'0003;

// sway answers within a millisecond unless the whole desktop hangs; to close an application takes two questions.
constexpr std::chrono::milliseconds longestWait{120};

// What came together within that time is one change to whoever looks at the screen.
constexpr std::chrono::milliseconds pause{200};

}  // namespace

SwaySource::SwaySource(std::string socketPath) : m_path(std::move(socketPath)) {
    m_pause.setSingleShot(true);
    m_pause.setInterval(pause);
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this] {
        if (m_notifier) {
            m_notifier->setEnabled(true);
        }
    });
}

SwaySource::~SwaySource() = default;

bool SwaySource::isAvailable() {
    return windows().has_value();
}

bool SwaySource::isComplete() {
    return m_isAnswering;
}

std::vector<SourcedApplication> SwaySource::applications() {
    std::vector<SourcedApplication> applications;
    for (const SwayTree::Window& window : windows().value_or(std::vector<SwayTree::Window>{})) {
        addHints(window.names, applicationOf(window.pid, applications).hints);
    }
    return applications;
}

std::optional<std::int32_t> SwaySource::frontmost() {
    for (const SwayTree::Window& window : windows().value_or(std::vector<SwayTree::Window>{})) {
        if (window.isFocused) {
            return window.pid;
        }
    }
    return std::nullopt;
}

bool SwaySource::tellsFrontmost() {
    return isAvailable();
}

void SwaySource::observeActivation(ActivationHandler handler) {
    m_handler = std::move(handler);
    listen();
}

bool SwaySource::close(std::int32_t pid, const IsStillMeant& isStillMeant) {
    std::string commands;
    for (const SwayTree::Window& window : windows().value_or(std::vector<SwayTree::Window>{})) {
        if (window.pid == pid && window.isNative) {
            commands += "[con_id=" + std::to_string(window.container) + "] kill;";
        }
    }
    if (commands.empty() || !isStillMeant()) {
        return false;
    }
    // What sway calls "kill" is xdg_toplevel's close event: the program may ask about unsaved work, or stay.
    const std::optional<std::string> reply = ask(runCommand, commands);
    return reply && SwayTree::isSuccess(*reply);
}

std::optional<std::string> SwaySource::ask(std::uint32_t type, std::string_view payload) const {
    std::optional<SwayConnection> connection = SwayConnection::open(m_path);
    return connection ? connection->ask(type, payload, longestWait) : std::nullopt;
}

std::optional<std::vector<SwayTree::Window>> SwaySource::windows() {
    const std::optional<std::string> reply = ask(getTree, {});
    m_isAnswering = reply.has_value();
    if (!reply) {
        return std::nullopt;
    }
    if (m_handler && !m_events) {
        listen();
    }
    return SwayTree::windows(*reply);
}

void SwaySource::listen() {
    m_events = SwayConnection::open(m_path);
    if (!m_events) {
        return;
    }
    const std::optional<std::string> reply = m_events->ask(subscribe, R"(["window"])", longestWait);
    if (!reply || !SwayTree::isSuccess(*reply)) {
        m_events.reset();
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_events->descriptor(), QSocketNotifier::Read);
    m_notifier->setEnabled(!m_pause.isActive());
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { hear(); });
}

void SwaySource::stopListening() {
    // It is what calls us right now.
    m_notifier.release()->deleteLater();
    m_events.reset();
}

void SwaySource::hear() {
    const bool isOpen = m_events->receive();
    const std::optional<std::int32_t> pid = lastFocused();
    m_pause.start();
    m_notifier->setEnabled(false);
    if (!isOpen || m_events->isBroken()) {
        stopListening();
    }
    if (pid && pid != m_told) {
        m_told = pid;
        m_handler(*pid);
    }
}

std::optional<std::int32_t> SwaySource::lastFocused() {
    std::vector<std::string> events;
    while (std::optional<SwayMessage> message = m_events->take()) {
        if (message->type == windowEvent) {
            events.push_back(std::move(message->payload));
        }
    }
    for (auto event = events.rbegin(); event != events.rend(); ++event) {
        if (const std::optional<std::int32_t> pid = SwayTree::focusedProcess(*event)) {
            return pid;
        }
    }
    return std::nullopt;
}

}  // namespace kestrune
