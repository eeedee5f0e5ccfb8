#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/SwayMessages.h"

namespace kestrune {

/// A connection to the socket of sway-ipc(7), of which no call lasts longer than its time limit. One thread at a time.
class SwayConnection final {
public:
    using Milliseconds = std::chrono::milliseconds;

    /// Nothing when path is not absolute, nobody listens there at once, or whoever does is another user.
    [[nodiscard]] static std::optional<SwayConnection> open(const std::string& path);

    /// Sends one message and waits for its reply; events that come before it are passed over. Nothing when there is
    /// none within limit; the connection is of no further use then.
    [[nodiscard]] std::optional<std::string> ask(std::uint32_t type, std::string_view payload, Milliseconds limit);

    /// Takes in what has arrived, 256 KiB at most, without waiting. False when the other side is gone.
    [[nodiscard]] bool receive();

    /// The next message that has arrived.
    [[nodiscard]] std::optional<SwayMessage> take() { return m_messages.take(); }

    /// True once take() has met something that is no message.
    [[nodiscard]] bool isBroken() const { return m_messages.isBroken(); }

    /// To wait for more of them.
    [[nodiscard]] int descriptor() const { return m_socket.get(); }

private:
    explicit SwayConnection(LinuxFileDescriptor socket) : m_socket(std::move(socket)) {}

    [[nodiscard]] bool send(std::string_view bytes, std::chrono::steady_clock::time_point deadline);
    [[nodiscard]] bool waitFor(short events, std::chrono::steady_clock::time_point deadline) const;

    LinuxFileDescriptor m_socket;
    SwayMessages m_messages;
};

}  // namespace kestrune
