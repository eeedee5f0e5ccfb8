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

}  // namespace

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
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { hear(); });
}

void SwaySource::stopListening() {
    m_notifier->setEnabled(false);
    // It is what calls us right now.
    m_notifier.release()->deleteLater();
    m_events.reset();
}

void SwaySource::hear() {
    const bool isOpen = m_events->receive();
    while (const std::optional<SwayMessage> message = m_events->take()) {
        const std::optional<std::int32_t> pid =
            message->type == windowEvent ? SwayTree::focusedProcess(message->payload) : std::nullopt;
        if (pid && pid != m_told) {
            m_told = pid;
            m_handler(*pid);
        }
    }
    if (!isOpen || m_events->isBroken()) {
        stopListening();
    }
}

}  // namespace kestrune
