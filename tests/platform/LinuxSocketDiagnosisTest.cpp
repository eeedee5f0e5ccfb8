#include "platform/linux/LinuxSocketDiagnosis.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>

#include <algorithm>

#include "platform/linux/LinuxStatusFile.h"
#include "tests/platform/TestListener.h"

namespace kestrune {
namespace {

using LinuxSocketDiagnosis::Progress;

std::string message(std::uint16_t type, const std::string& content) {
    nlmsghdr header{};
    header.nlmsg_len = static_cast<std::uint32_t>(sizeof header + content.size());
    header.nlmsg_type = type;
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    bytes += content;
    bytes.resize(NLMSG_ALIGN(bytes.size()));
    return bytes;
}

std::string socketMessage(std::uint32_t inode, std::uint16_t port, std::uint8_t state = TCP_LISTEN) {
    inet_diag_msg socket{};
    socket.idiag_family = AF_INET;
    socket.idiag_state = state;
    socket.id.idiag_src[0] = htonl(INADDR_LOOPBACK);
    socket.id.idiag_sport = htons(port);
    socket.idiag_inode = inode;
    return message(SOCK_DIAG_BY_FAMILY, std::string(reinterpret_cast<const char*>(&socket), sizeof socket));
}

TEST(LinuxSocketDiagnosis, pieceGivesItsSockets) {
    std::vector<LinuxListeningSocket> sockets;
    EXPECT_EQ(LinuxSocketDiagnosis::parse(socketMessage(7, 80) + socketMessage(8, 8080), sockets), Progress::more);
    EXPECT_EQ(LinuxSocketDiagnosis::parse(socketMessage(9, 90) + message(NLMSG_DONE, "\0\0\0\0"), sockets),
              Progress::done);
    ASSERT_EQ(sockets.size(), 3U);
    EXPECT_EQ(sockets[1].inode, 8U);
    EXPECT_EQ(endpointText(sockets[1]), "127.0.0.1:8080");
    EXPECT_EQ(endpointText(sockets[2]), "127.0.0.1:90");
}

TEST(LinuxSocketDiagnosis, socketsThatDoNotListenOrThatNoProcessHoldsAreLeftOut) {
    std::vector<LinuxListeningSocket> sockets;
    EXPECT_EQ(LinuxSocketDiagnosis::parse(socketMessage(7, 80, TCP_ESTABLISHED) + socketMessage(0, 81), sockets),
              Progress::more);
    EXPECT_TRUE(sockets.empty());
}

TEST(LinuxSocketDiagnosis, refusalFails) {
    std::vector<LinuxListeningSocket> sockets;
    EXPECT_EQ(LinuxSocketDiagnosis::parse(message(NLMSG_ERROR, "\xff\xff\xff\xff"), sockets), Progress::failed);
}

TEST(LinuxSocketDiagnosis, piecesThatAreCutOffFail) {
    std::vector<LinuxListeningSocket> sockets;
    const std::string whole = socketMessage(7, 80);
    EXPECT_EQ(LinuxSocketDiagnosis::parse(std::string_view(whole).substr(0, whole.size() - 4), sockets),
              Progress::failed);
    EXPECT_EQ(LinuxSocketDiagnosis::parse(message(SOCK_DIAG_BY_FAMILY, "short"), sockets), Progress::failed);
    EXPECT_EQ(LinuxSocketDiagnosis::parse(std::string(sizeof(nlmsghdr), '\0'), sockets), Progress::failed);
    EXPECT_EQ(LinuxSocketDiagnosis::parse("", sockets), Progress::more);
    EXPECT_TRUE(sockets.empty());
}

TEST(LinuxSocketDiagnosis, kernelAnswersWhatItsTablesShow) {
    const TestListener four("127.0.0.1");
    const TestListener six("::1");
    for (const TestListener* listener : {&four, &six}) {
        const bool isVersion6 = listener == &six;
        LinuxStatusFile table(isVersion6 ? "/proc/net/tcp6" : "/proc/net/tcp");
        const std::vector<LinuxListeningSocket> shown = parseSocketTable(table.read(1U << 22U).value(), isVersion6);
        const std::vector<LinuxListeningSocket> told = LinuxSocketDiagnosis::listeningSockets(isVersion6).value();
        for (const std::vector<LinuxListeningSocket>* sockets : {&shown, &told}) {
            const auto place = std::find_if(sockets->begin(), sockets->end(), [&](const LinuxListeningSocket& socket) {
                return socket.inode == listener->inode();
            });
            ASSERT_NE(place, sockets->end());
            EXPECT_EQ(endpointText(*place), (isVersion6 ? "[::1]:" : "127.0.0.1:") + listener->port());
        }
    }
}

}  // namespace
}  // namespace kestrune
