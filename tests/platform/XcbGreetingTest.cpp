#include "platform/linux/XcbGreeting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <thread>

#include "platform/linux/XcbConnection.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

/// A server that accepts, and says no more than the test makes it say.
class XcbGreetingTest : public testing::Test {
protected:
    XcbGreetingTest() { listenAt(server, name); }

    static void listenAt(const LinuxFileDescriptor& socket, const std::string& name) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::copy(name.begin(), name.end(), address.sun_path);
        const std::size_t length = offsetof(sockaddr_un, sun_path) + name.size();
        EXPECT_EQ(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(length)), 0);
        EXPECT_EQ(::listen(socket.get(), 4), 0);
    }

    TemporaryFolder folder;
    const std::string name = folder.path("X7");
    LinuxFileDescriptor server{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

TEST_F(XcbGreetingTest, serverThatAnswersIsGreetedInTheWordsOfTheProtocol) {
    std::string greeting(12, '\0');
    std::thread answering([&] {
        const LinuxFileDescriptor client(::accept(server.get(), nullptr, nullptr));
        EXPECT_EQ(::recv(client.get(), greeting.data(), greeting.size(), MSG_WAITALL), 12);
        EXPECT_EQ(::send(client.get(), "", 1, 0), 1);
    });
    EXPECT_TRUE(XcbGreeting::answered({folder.path("missing"), name}, milliseconds(10'000)));
    answering.join();
    EXPECT_TRUE(greeting.starts_with("l") || greeting.starts_with("B"));
    EXPECT_EQ(greeting[2] + greeting[3], 11);
}

TEST_F(XcbGreetingTest, serverThatSaysNothingIsGivenUp) {
    EXPECT_FALSE(XcbGreeting::answered({name}, milliseconds(1)));
}

TEST_F(XcbGreetingTest, serverThatHangsUpDoesNotAnswer) {
    std::thread refusing([&] { LinuxFileDescriptor(::accept(server.get(), nullptr, nullptr)).reset(); });
    EXPECT_FALSE(XcbGreeting::answered({name}, milliseconds(10'000)));
    refusing.join();
}

TEST_F(XcbGreetingTest, serverThatIsNotThereIsNotWaitedFor) {
    EXPECT_FALSE(XcbGreeting::answered({}, milliseconds(10'000)));
    EXPECT_FALSE(XcbGreeting::answered({folder.path("missing"), std::string(200, 'x')}, milliseconds(10'000)));
}

TEST_F(XcbGreetingTest, serverWhoseQueueIsFullIsNotWaitedFor) {
    EXPECT_EQ(::listen(server.get(), 0), 0);
    EXPECT_FALSE(XcbGreeting::answered({name}, milliseconds(1)));
    EXPECT_FALSE(XcbGreeting::answered({name}, milliseconds(1)));
    EXPECT_FALSE(XcbGreeting::answered({name}, milliseconds(10'000)));
}

TEST_F(XcbGreetingTest, noConnectionIsOpenedToAServerThatSaysNothing) {
    // A name outside the file system, which goes away with its socket.
    const std::string number = std::to_string(::getpid());
    const LinuxFileDescriptor silent(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    listenAt(silent, std::string(1, '\0') + "/tmp/.X11-unix/X" + number);
    const char* const display = std::getenv("DISPLAY");
    const std::string before = display == nullptr ? "" : display;
    ::setenv("DISPLAY", (":" + number).c_str(), 1);
    EXPECT_EQ(XcbConnection::open(true), nullptr);
    EXPECT_EQ(XcbConnection::open(false), nullptr);
    ::setenv("DISPLAY", "example.invalid:0", 1);
    EXPECT_EQ(XcbConnection::open(false), nullptr);
    ::setenv("DISPLAY", before.c_str(), 1);
}

TEST_F(XcbGreetingTest, displayOnThisMachineHasItsSockets) {
    EXPECT_THAT(XcbGreeting::socketsOf(":7"), ElementsAre("@/tmp/.X11-unix/X7", "/tmp/.X11-unix/X7"));
    EXPECT_THAT(XcbGreeting::socketsOf("unix:7.1"), ElementsAre("@/tmp/.X11-unix/X7", "/tmp/.X11-unix/X7"));
}

TEST_F(XcbGreetingTest, displayElsewhereHasNone) {
    for (const std::string display : {"localhost:10.0", "example.org:0", "tcp/example.org:0", "nonsense", "/run/X7"}) {
        EXPECT_THAT(XcbGreeting::socketsOf(display), IsEmpty()) << display;
    }
}

}  // namespace
}  // namespace kestrune
