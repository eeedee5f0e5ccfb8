#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// Fills folders with everything a walk may meet: links that lead out and around, hard links, sparse files, FIFOs,
/// sockets, names that are no text, folders that nobody may list or enter, empty, deep and wide ones. A seed gives one
/// tree.
class RandomTree final {
public:
    explicit RandomTree(unsigned seed) : m_random(seed) {}

    RandomTree(const RandomTree&) = delete;
    RandomTree& operator=(const RandomTree&) = delete;

    /// Opens what it closed, outermost first, so that whoever made the tree can remove it.
    ~RandomTree() {
        for (auto folder = m_closed.rbegin(); folder != m_closed.rend(); ++folder) {
            ::chmod(folder->c_str(), 0755);
        }
    }

    void fill(const std::string& folder, int depth) {
        const int most = number(0, 12) == 0 ? 300 : 9;
        for (int entry = number(0, most); entry > 0 && m_left > 0; --entry, --m_left) {
            make(folder + "/" + name(entry), folder, depth);
        }
    }

private:
    int number(int least, int most) { return std::uniform_int_distribution<>(least, most)(m_random); }

    std::string name(int entry) {
        static const std::vector<std::string> kinds = {"plain", "\xFF", "\xFE",     "\xFF\xFE", "new\nline",
                                                       " ",     "..a",  "\xC3\xA9", "*?",       "a!"};
        return kinds[static_cast<std::size_t>(number(0, 9))] + std::to_string(entry);
    }

    void make(const std::string& path, const std::string& folder, int depth) {
        switch (number(0, 10)) {
            case 0:
                ASSERT_EQ(0, ::symlink(folder.c_str(), path.c_str()));
                break;
            case 1:
                ASSERT_EQ(0, ::symlink("..", path.c_str()));
                break;
            case 2:
                ASSERT_EQ(0, ::mkfifo(path.c_str(), 0600));
                break;
            case 3:
                makeSparse(path);
                break;
            case 4:
                ASSERT_EQ(0, m_lastFile.empty() ? 0 : ::link(m_lastFile.c_str(), path.c_str()));
                break;
            case 5:
                makeSocket(path);
                break;
            case 6:
            case 7:
            case 8:
                makeFolder(path, depth);
                break;
            default:
                std::ofstream(path) << std::string(static_cast<std::size_t>(number(0, 20000)), 'x');
                m_lastFile = path;
        }
    }

    void makeFolder(const std::string& path, int depth) {
        static const std::vector<mode_t> closedModes = {0, 0744, 0711};
        ASSERT_EQ(0, ::mkdir(path.c_str(), 0755));
        const bool closed = number(0, 15) == 0;
        if (depth > 0) {
            fill(path, closed ? 0 : depth - 1);
        }
        if (closed) {
            m_closed.push_back(path);
            ASSERT_EQ(0, ::chmod(path.c_str(), closedModes[static_cast<std::size_t>(number(0, 2))]));
        }
    }

    static void makeSocket(const std::string& path) {
        const LinuxFileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.size() < sizeof address.sun_path) {
            std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
            ASSERT_EQ(0, ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
        }
    }

    static void makeSparse(const std::string& path) {
        const LinuxFileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        ASSERT_EQ(0, ::ftruncate(file.get(), 1 << 30));
        ASSERT_EQ(1, ::pwrite(file.get(), "x", 1, 1 << 20));
    }

    std::mt19937 m_random;
    int m_left = 300;  ///< entries, so that a tree stays quick to make
    std::string m_lastFile;
    std::vector<std::string> m_closed;
};

}  // namespace kestrune
