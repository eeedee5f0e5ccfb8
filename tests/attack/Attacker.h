#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune::attack {

inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

/// 0 where nothing is.
inline ino_t inodeOf(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// A process that exchanges two names until it is killed.
class Attacker final {
public:
    Attacker(const std::string& one, const std::string& other) {
        std::array<int, 2> pipe = {-1, -1};
        if (::pipe2(pipe.data(), O_CLOEXEC) != 0 || (m_process = ::fork()) < 0) {
            std::perror("attacker");
            std::exit(2);
        }
        const LinuxFileDescriptor started(pipe[0]);
        LinuxFileDescriptor starts(pipe[1]);
        for (int i = 0; m_process == 0; ++i) {
            ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
            if (i > warmUp) {
                starts.reset();
            }
        }
        starts.reset();
        char byte = 0;
        const auto ended = ::read(started.get(), &byte, 1);
        static_cast<void>(ended);
    }

    Attacker(const Attacker&) = delete;
    Attacker& operator=(const Attacker&) = delete;

    ~Attacker() {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }

private:
    static constexpr int warmUp = 20;
    pid_t m_process = -1;
};

}  // namespace kestrune::attack
