#include "platform/linux/XcbGreeting.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace kestrune::XcbGreeting {

namespace {

LinuxFileDescriptor connectedTo(const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= sizeof(address.sun_path)) {
        return {};
    }
    std::copy(name.begin(), name.end(), address.sun_path);
    std::size_t length = offsetof(sockaddr_un, sun_path) + name.size() + 1;
    if (name.starts_with('@')) {
        address.sun_path[0] = '\0';
        --length;
    }
    // Without waiting: a queue that is full is an answer, too.
    LinuxFileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const bool isConnected = socket && ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address),
                                                 static_cast<socklen_t>(length)) == 0;
    return isConnected ? std::move(socket) : LinuxFileDescriptor();
}

bool answers(int socket, std::chrono::milliseconds patience) {
    xcb_setup_request_t greeting{};
    greeting.byte_order = std::endian::native == std::endian::little ? 'l' : 'B';
    greeting.protocol_major_version = X_PROTOCOL;
    greeting.protocol_minor_version = X_PROTOCOL_REVISION;
    if (::send(socket, &greeting, sizeof(greeting), MSG_NOSIGNAL) != static_cast<ssize_t>(sizeof(greeting))) {
        return false;
    }
    pollfd waiting{socket, POLLIN, 0};
    while (::poll(&waiting, 1, static_cast<int>(patience.count())) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    // A refusal is an answer: nothing proves here that this program may connect.
    char first = 0;
    return ::recv(socket, &first, 1, MSG_DONTWAIT) == 1;
}

}  // namespace

std::vector<std::string> socketsOf(const std::string& display) {
    char* parsed = nullptr;
    int number = 0;
    if (xcb_parse_display(display.c_str(), &parsed, &number, nullptr) == 0) {
        return {};
    }
    const std::unique_ptr<char, decltype(&std::free)> kept(parsed, &std::free);
    const std::string host = parsed == nullptr ? std::string{} : parsed;
    if (!host.empty() && host != "unix") {
        return {};
    }
    const std::string path = "/tmp/.X11-unix/X" + std::to_string(number);
    return {"@" + path, path};
}

LinuxFileDescriptor answered(const std::vector<std::string>& sockets, std::chrono::milliseconds patience) {
    for (const std::string& name : sockets) {
        if (LinuxFileDescriptor socket = connectedTo(name)) {
            return answers(socket.get(), patience) ? std::move(socket) : LinuxFileDescriptor();
        }
    }
    return {};
}

}  // namespace kestrune::XcbGreeting
