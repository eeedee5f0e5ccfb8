#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

/// A TCP socket that waits for connections, and the address it waits at.
struct LinuxListeningSocket {
    std::uint64_t inode = 0;
    bool isVersion6 = false;
    std::array<std::uint8_t, 16> address{};  ///< in network order; version 4 takes the first four bytes
    std::uint16_t port = 0;

    bool operator==(const LinuxListeningSocket&) const = default;
};

/// As lsof(8) prints it: any address is "*", version 6 stands in brackets, a version 4 address mapped into version 6 as
/// what it maps, and no scope is told: "*:3000", "127.0.0.1:8080", "[::1]:5173". Any thread.
[[nodiscard]] std::string endpointText(const LinuxListeningSocket& socket);

/// The listening sockets in the text of /proc/net/tcp or, with isVersion6, /proc/net/tcp6. Other sockets, and lines
/// that are none, are left out; so are sockets without an inode, which no process holds. Any thread.
[[nodiscard]] std::vector<LinuxListeningSocket> parseSocketTable(std::string_view table, bool isVersion6);

}  // namespace kestrune
