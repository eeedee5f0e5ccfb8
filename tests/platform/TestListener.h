#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cstdint>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// A socket of this process that listens at a free port of an address. Programs started meanwhile inherit it.
class TestListener final {
public:
    explicit TestListener(const std::string& address) {
        const bool isVersion6 = address.find(':') != std::string::npos;
        m_descriptor.reset(::socket(isVersion6 ? AF_INET6 : AF_INET, SOCK_STREAM, 0));
        sockaddr_storage place{};
        auto* const place4 = reinterpret_cast<sockaddr_in*>(&place);
        auto* const place6 = reinterpret_cast<sockaddr_in6*>(&place);
        place.ss_family = isVersion6 ? AF_INET6 : AF_INET;
        void* const bytes = isVersion6 ? static_cast<void*>(&place6->sin6_addr) : static_cast<void*>(&place4->sin_addr);
        EXPECT_EQ(::inet_pton(place.ss_family, address.c_str(), bytes), 1);
        socklen_t length = isVersion6 ? sizeof *place6 : sizeof *place4;
        auto* const general = reinterpret_cast<sockaddr*>(&place);
        EXPECT_EQ(::bind(m_descriptor.get(), general, length), 0) << address;
        EXPECT_EQ(::listen(m_descriptor.get(), 1), 0);
        EXPECT_EQ(::getsockname(m_descriptor.get(), general, &length), 0);
        // Both versions keep the port at one place.
        m_port = ntohs(place4->sin_port);
    }

    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }

    [[nodiscard]] std::string port() const { return std::to_string(m_port); }

    [[nodiscard]] std::uint64_t inode() const {
        struct stat status {};

        EXPECT_EQ(::fstat(m_descriptor.get(), &status), 0);
        return status.st_ino;
    }

    void close() { m_descriptor.reset(); }

private:
    LinuxFileDescriptor m_descriptor;
    std::uint16_t m_port = 0;
};

}  // namespace kestrune
