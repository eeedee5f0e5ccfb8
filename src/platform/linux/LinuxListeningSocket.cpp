#include "platform/linux/LinuxListeningSocket.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstring>

#include "base/WholeNumber.h"

namespace kestrune {

namespace {

constexpr std::size_t version4Bytes = 4;
constexpr std::size_t mappedPrefixBytes = 12;

bool isMapped(const std::array<std::uint8_t, 16>& address) {
    constexpr std::array<std::uint8_t, mappedPrefixBytes> prefix{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    return std::equal(prefix.begin(), prefix.end(), address.begin());
}

std::string addressText(const LinuxListeningSocket& socket) {
    const std::uint8_t* bytes = socket.address.data();
    std::size_t length = socket.isVersion6 ? socket.address.size() : version4Bytes;
    if (socket.isVersion6 && isMapped(socket.address)) {
        bytes += mappedPrefixBytes;
        length = version4Bytes;
    }
    if (std::all_of(bytes, bytes + length, [](std::uint8_t byte) { return byte == 0; })) {
        return "*";
    }
    std::array<char, INET6_ADDRSTRLEN> text{};
    if (length == version4Bytes) {
        return ::inet_ntop(AF_INET, bytes, text.data(), text.size());
    }
    return std::string("[").append(::inet_ntop(AF_INET6, bytes, text.data(), text.size())).append("]");
}

std::string_view takeField(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    const std::string_view field = line.substr(0, line.find(' '));
    line.remove_prefix(field.size());
    return field;
}

// The table shows an address as numbers of 32 bits, each in the processor's own byte order.
bool parseAddress(std::string_view text, LinuxListeningSocket& socket) {
    constexpr std::size_t digitsPerWord = 8;
    const std::size_t length = socket.isVersion6 ? socket.address.size() : version4Bytes;
    const std::size_t colon = text.find(':');
    if (colon != 2 * length) {
        return false;
    }
    for (std::size_t word = 0; word < length / version4Bytes; ++word) {
        const auto value = wholeNumber<std::uint32_t>(text.substr(word * digitsPerWord, digitsPerWord), 16);
        if (!value) {
            return false;
        }
        std::memcpy(socket.address.data() + word * version4Bytes, &*value, version4Bytes);
    }
    const auto port = wholeNumber<std::uint16_t>(text.substr(colon + 1), 16);
    socket.port = port.value_or(0);
    return port.has_value();
}

std::optional<LinuxListeningSocket> parseLine(std::string_view line, bool isVersion6) {
    constexpr std::string_view listening = "0A";
    LinuxListeningSocket socket;
    socket.isVersion6 = isVersion6;
    takeField(line);
    const std::string_view local = takeField(line);
    takeField(line);
    if (takeField(line) != listening || !parseAddress(local, socket)) {
        return std::nullopt;
    }
    // Queues, timer, retransmissions, owner and timeout come before the inode.
    for (int i = 0; i < 5; ++i) {
        takeField(line);
    }
    socket.inode = wholeNumber<std::uint64_t>(takeField(line)).value_or(0);
    return socket.inode == 0 ? std::nullopt : std::optional(socket);
}

}  // namespace

std::string endpointText(const LinuxListeningSocket& socket) {
    return addressText(socket).append(":").append(std::to_string(socket.port));
}

std::vector<LinuxListeningSocket> parseSocketTable(std::string_view table, bool isVersion6) {
    std::vector<LinuxListeningSocket> sockets;
    while (!table.empty()) {
        const std::size_t end = std::min(table.find('\n'), table.size());
        if (const std::optional<LinuxListeningSocket> socket = parseLine(table.substr(0, end), isVersion6)) {
            sockets.push_back(*socket);
        }
        table.remove_prefix(std::min(end + 1, table.size()));
    }
    return sockets;
}

}  // namespace kestrune
