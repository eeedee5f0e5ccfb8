#include "platform/linux/SwayConnection.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kestrune {

namespace {

using SteadyClock = std::chrono::steady_clock;

bool isOwnUserBehind(int socket) {
    ucred peer{};
    socklen_t length = sizeof peer;
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 && peer.uid == ::geteuid();
}

bool isForLater() {
    return errno == EAGAIN || errno == EINTR;
}

}  // namespace

std::optional<SwayConnection> SwayConnection::open(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.front() != '/' || path.size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    LinuxFileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // A socket address is passed as the general form of itself.
    const auto* const general = reinterpret_cast<const sockaddr*>(&address);
    if (!socket || ::connect(socket.get(), general, sizeof address) != 0 || !isOwnUserBehind(socket.get())) {
        return std::nullopt;
    }
    return SwayConnection(std::move(socket));
}

std::optional<std::string> SwayConnection::ask(std::uint32_t type, std::string_view payload, Milliseconds limit) {
    const SteadyClock::time_point deadline = SteadyClock::now() + limit;
    if (!send(swayFrame(type, payload), deadline)) {
        return std::nullopt;
    }
    while (waitFor(POLLIN, deadline)) {
        const bool isOpen = receive();
        while (std::optional<SwayMessage> message = take()) {
            if (message->type == type) {
                return std::move(message->payload);
            }
        }
        if (!isOpen || isBroken()) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

bool SwayConnection::receive() {
    // Whoever sends more at once is heard again.
    constexpr int mostReads = 8;
    char buffer[32'768];
    for (int reads = 0; reads < mostReads; ++reads) {
        const ssize_t count = ::recv(m_socket.get(), buffer, sizeof buffer, 0);
        if (count < 0) {
            return isForLater();
        }
        if (count == 0) {
            return false;
        }
        m_messages.add({buffer, static_cast<std::size_t>(count)});
    }
    return true;
}

bool SwayConnection::send(std::string_view bytes, SteadyClock::time_point deadline) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(m_socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (!isForLater() || !waitFor(POLLOUT, deadline)) {
            return false;
        }
    }
    return true;
}

bool SwayConnection::waitFor(short events, SteadyClock::time_point deadline) const {
    pollfd waiting{m_socket.get(), events, 0};
    int count = -1;
    do {
        const auto left = std::chrono::ceil<Milliseconds>(deadline - SteadyClock::now()).count();
        count = left > 0 ? ::poll(&waiting, 1, static_cast<int>(left)) : 0;
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

}  // namespace kestrune
