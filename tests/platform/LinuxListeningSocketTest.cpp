#include "platform/linux/LinuxListeningSocket.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

LinuxListeningSocket at(const std::string& address, std::uint16_t port, std::uint64_t inode = 0) {
    LinuxListeningSocket socket;
    socket.inode = inode;
    socket.isVersion6 = address.find(':') != std::string::npos;
    socket.port = port;
    EXPECT_EQ(::inet_pton(socket.isVersion6 ? AF_INET6 : AF_INET, address.c_str(), socket.address.data()), 1);
    return socket;
}

// Each as lsof 4.95 printed it for a socket at that address.
TEST(LinuxListeningSocket, endpointIsWrittenAsLsofPrintsIt) {
    EXPECT_EQ(endpointText(at("0.0.0.0", 48'933)), "*:48933");
    EXPECT_EQ(endpointText(at("127.0.0.1", 35'465)), "127.0.0.1:35465");
    EXPECT_EQ(endpointText(at("::1", 5173)), "[::1]:5173");
    EXPECT_EQ(endpointText(at("::", 42'267)), "*:42267");
    EXPECT_EQ(endpointText(at("fe80::1234", 53'055)), "[fe80::1234]:53055");
    EXPECT_EQ(endpointText(at("2001:db8:0:0:1::5", 39'891)), "[2001:db8::1:0:0:5]:39891");
    EXPECT_EQ(endpointText(at("2001:db8:0:1:2:0:4:5", 39'905)), "[2001:db8:0:1:2:0:4:5]:39905");
    EXPECT_EQ(endpointText(at("1::", 50'573)), "[1::]:50573");
}

TEST(LinuxListeningSocket, addressOfVersion4InVersion6IsWrittenAsLsofPrintsIt) {
    EXPECT_EQ(endpointText(at("::ffff:127.0.0.1", 46'885)), "127.0.0.1:46885");
    EXPECT_EQ(endpointText(at("::ffff:0.0.0.0", 54'761)), "*:54761");
    EXPECT_EQ(endpointText(at("::1.2.3.4", 41'537)), "[::1.2.3.4]:41537");
    EXPECT_EQ(endpointText(at("64:ff9b::1.2.3.4", 35'435)), "[64:ff9b::102:304]:35435");
    EXPECT_EQ(endpointText(at("::ffff:0:1.2.3.4", 36'563)), "[::ffff:0:102:304]:36563");
}

constexpr std::string_view table4 =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode                 "
    "\n"
    "   0: 00000000:BF25 00000000:0000 0A 00000000:00000000 00:00000000 00000000     0        0 1155380 1 00000000ef "
    "100\n"
    "   1: 0100007F:8A89 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 1155381 1 00000000ef "
    "100\n"
    "   2: 0100007F:8A89 0100007F:C9B9 01 00000000:00000000 00:00000000 00000000  1000        0 1155390 1 00000000ef "
    "100\n"
    "   3: 0100007F:8A90 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 0 1 00000000ef 100\n";

TEST(LinuxListeningSocket, tableGivesItsListeningSockets) {
    EXPECT_EQ(parseSocketTable(table4, false), (std::vector<LinuxListeningSocket>{at("0.0.0.0", 48'933, 1'155'380),
                                                                                  at("127.0.0.1", 35'465, 1'155'381)}));
}

TEST(LinuxListeningSocket, tableOfVersion6GivesItsListeningSockets) {
    constexpr std::string_view table =
        "  sl  local_address                         remote_address                        st tx_queue ...\n"
        "   0: 00000000000000000000000001000000:C9B9 00000000000000000000000000000000:0000 0A 00000000:00000000 "
        "00:00000000 00000000     0        0 1155382 1 0000000009b89fe8 100 0 0 10 0\n"
        "   4: 0000000000000000FFFF00000100007F:B725 00000000000000000000000000000000:0000 0A 00000000:00000000 "
        "00:00000000 00000000     0        0 1155385 1 000000004128d38e 100 0 0 10 0";
    EXPECT_EQ(
        parseSocketTable(table, true),
        (std::vector<LinuxListeningSocket>{at("::1", 51'641, 1'155'382), at("::ffff:127.0.0.1", 46'885, 1'155'385)}));
    EXPECT_TRUE(parseSocketTable(table, false).empty());
}

TEST(LinuxListeningSocket, linesThatAreNoneAreLeftOut) {
    EXPECT_TRUE(parseSocketTable("", false).empty());
    EXPECT_TRUE(parseSocketTable("\n\n \n", false).empty());
    EXPECT_TRUE(parseSocketTable("   0: 00000000:BF25 00000000:0000 0A\n", false).empty());
    EXPECT_TRUE(parseSocketTable("   0: 0000000G:BF25 00000000:0000 0A 0 0 0 0 0 7\n", false).empty());
    EXPECT_TRUE(parseSocketTable("   0: 00000000:1BF25 00000000:0000 0A 0 0 0 0 0 7\n", false).empty());
    EXPECT_TRUE(parseSocketTable("   0: 00000000 00000000:0000 0A 0 0 0 0 0 7\n", false).empty());
    EXPECT_TRUE(
        parseSocketTable("   0: 00000000:BF25 00000000:0000 0A 0 0 0 0 0 99999999999999999999\n", false).empty());
    EXPECT_EQ(parseSocketTable("   0: 00000000:BF25 00000000:0000 0A 0 0 0 0 0 7\n", false).size(), 1U);
}

}  // namespace
}  // namespace kestrune
