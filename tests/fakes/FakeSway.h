#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/SwayMessages.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {

/// The socket of a sway, answered from a thread of its own, since whoever asks waits for the answer.
class FakeSway final {
public:
    FakeSway() {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path().copy(address.sun_path, sizeof address.sun_path - 1);
        m_socket.reset(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        if (::bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            ::listen(m_socket.get(), 8) != 0) {
            ADD_FAILURE() << "no socket at " << path();
        }
        m_thread = std::thread([this] { serve(); });
    }

    FakeSway(const FakeSway&) = delete;
    FakeSway& operator=(const FakeSway&) = delete;

    ~FakeSway() {
        m_isEnding = true;
        m_thread.join();
    }

    [[nodiscard]] std::string path() const { return m_folder.path("sway.sock"); }

    /// What is sent, as it is, to a question of this type; nothing is sent to others.
    void answer(std::uint32_t type, const std::string& bytes) {
        const std::lock_guard lock(m_mutex);
        m_answers[type] = bytes;
    }

    /// What was asked, in order: type and payload.
    [[nodiscard]] std::vector<SwayMessage> asked() {
        const std::lock_guard lock(m_mutex);
        return m_asked;
    }

    /// Sends bytes to every connection that has asked for events.
    void sendEvent(const std::string& bytes) {
        const std::lock_guard lock(m_mutex);
        for (const Connection& connection : m_connections) {
            if (connection.isSubscribed) {
                write(connection, bytes);
            }
        }
    }

private:
    struct Connection {
        LinuxFileDescriptor socket;
        SwayMessages messages;
        bool isSubscribed = false;
    };

    static void write(const Connection& connection, const std::string& bytes) {
        // Whoever asked may be gone.
        [[maybe_unused]] const ssize_t sent = ::send(connection.socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }

    void serve() {
        while (!m_isEnding) {
            std::vector<pollfd> waiting{{m_socket.get(), POLLIN, 0}};
            {
                const std::lock_guard lock(m_mutex);
                for (const Connection& connection : m_connections) {
                    waiting.push_back({connection.socket.get(), POLLIN, 0});
                }
            }
            ::poll(waiting.data(), waiting.size(), 5);
            const std::lock_guard lock(m_mutex);
            if ((waiting.front().revents & POLLIN) != 0) {
                m_connections.emplace_back().socket.reset(::accept4(m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC));
            }
            std::erase_if(m_connections, [this](Connection& connection) { return !isServed(connection); });
        }
    }

    bool isServed(Connection& connection) {
        char buffer[4096];
        const ssize_t count = ::recv(connection.socket.get(), buffer, sizeof buffer, MSG_DONTWAIT);
        if (count <= 0) {
            return count < 0;
        }
        connection.messages.add({buffer, static_cast<std::size_t>(count)});
        while (const std::optional<SwayMessage> message = connection.messages.take()) {
            constexpr std::uint32_t subscribe = 2;
            connection.isSubscribed = connection.isSubscribed || message->type == subscribe;
            m_asked.push_back(*message);
            if (const auto known = m_answers.find(message->type); known != m_answers.end()) {
                write(connection, known->second);
            }
        }
        return true;
    }

    const TemporaryFolder m_folder;
    LinuxFileDescriptor m_socket;
    std::mutex m_mutex;
    std::map<std::uint32_t, std::string> m_answers;
    std::vector<SwayMessage> m_asked;
    std::vector<Connection> m_connections;
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};

}  // namespace kestrune
