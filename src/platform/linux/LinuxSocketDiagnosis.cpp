#include "platform/linux/LinuxSocketDiagnosis.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune::LinuxSocketDiagnosis {

namespace {

// The kernel fills at most this much at once.
constexpr std::size_t bufferBytes = 32'768;

struct Request {
    nlmsghdr header;
    inet_diag_req_v2 question;
};

bool ask(int descriptor, bool isVersion6) {
    Request request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.question.sdiag_family = isVersion6 ? AF_INET6 : AF_INET;
    request.question.sdiag_protocol = IPPROTO_TCP;
    request.question.idiag_states = 1U << static_cast<unsigned>(TCP_LISTEN);
    return ::send(descriptor, &request, sizeof request, 0) == static_cast<ssize_t>(sizeof request);
}

LinuxListeningSocket socketOf(const inet_diag_msg& message) {
    LinuxListeningSocket socket;
    socket.inode = message.idiag_inode;
    socket.isVersion6 = message.idiag_family == AF_INET6;
    std::memcpy(socket.address.data(), message.id.idiag_src, socket.isVersion6 ? sizeof message.id.idiag_src : 4);
    socket.port = ntohs(message.id.idiag_sport);
    return socket;
}

}  // namespace

Progress parse(std::string_view piece, std::vector<LinuxListeningSocket>& sockets) {
    while (piece.size() >= sizeof(nlmsghdr)) {
        nlmsghdr header{};
        std::memcpy(&header, piece.data(), sizeof header);
        if (header.nlmsg_len < sizeof header || header.nlmsg_len > piece.size()) {
            return Progress::failed;
        }
        if (header.nlmsg_type == NLMSG_DONE) {
            return Progress::done;
        }
        inet_diag_msg message{};
        if (header.nlmsg_type != SOCK_DIAG_BY_FAMILY || header.nlmsg_len < NLMSG_HDRLEN + sizeof message) {
            return Progress::failed;
        }
        std::memcpy(&message, piece.data() + NLMSG_HDRLEN, sizeof message);
        const LinuxListeningSocket socket = socketOf(message);
        if (message.idiag_state == TCP_LISTEN && socket.inode != 0) {
            sockets.push_back(socket);
        }
        piece.remove_prefix(std::min<std::size_t>(NLMSG_ALIGN(header.nlmsg_len), piece.size()));
    }
    return Progress::more;
}

std::optional<std::vector<LinuxListeningSocket>> listeningSockets(bool isVersion6) {
    const LinuxFileDescriptor descriptor(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
    const timeval patience{2, 0};
    if (!descriptor || ::setsockopt(descriptor.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) != 0 ||
        !ask(descriptor.get(), isVersion6)) {
        return std::nullopt;
    }
    std::vector<LinuxListeningSocket> sockets;
    const auto buffer = std::make_unique<char[]>(bufferBytes);
    Progress progress = Progress::more;
    while (progress == Progress::more) {
        const ssize_t length = ::recv(descriptor.get(), buffer.get(), bufferBytes, 0);
        if (length < 0 && errno == EINTR) {
            continue;
        }
        if (length <= 0) {
            return std::nullopt;
        }
        progress = parse({buffer.get(), static_cast<std::size_t>(length)}, sockets);
    }
    return progress == Progress::done ? std::optional(std::move(sockets)) : std::nullopt;
}

}  // namespace kestrune::LinuxSocketDiagnosis
