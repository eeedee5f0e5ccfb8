#pragma once

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace kestrune {

/// A new empty folder that goes away with everything in it, however deep it is.
class TemporaryFolder final {
public:
    TemporaryFolder() : TemporaryFolder(std::getenv("TMPDIR") != nullptr ? std::getenv("TMPDIR") : "/tmp") {}

    /// Below base, for a test that asks much of the file system or of one file system. The path is the system's own of
    /// it: on macOS temporary folders lie behind a link, and TMPDIR ends with a slash.
    explicit TemporaryFolder(const std::string& base)
        : m_path(std::filesystem::canonical(base).string() + "/kestrune-test-XXXXXX") {
        if (::mkdtemp(m_path.data()) == nullptr) {
            ADD_FAILURE() << "no temporary folder at " << m_path;
        }
    }

    /// Where large trees are made fast: in memory when the system has such a file system.
    [[nodiscard]] static std::string fastBase() { return ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp"; }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    ~TemporaryFolder() {
        std::string tool = "/bin/rm";
        std::string option = "-rf";
        char* const arguments[] = {tool.data(), option.data(), m_path.data(), nullptr};
        pid_t child = -1;
        if (::posix_spawn(&child, tool.c_str(), nullptr, nullptr, arguments, nullptr) == 0) {
            ::waitpid(child, nullptr, 0);
        }
    }

    [[nodiscard]] const std::string& path() const { return m_path; }

    [[nodiscard]] std::string path(const std::string& name) const { return m_path + "/" + name; }

    /// Writes a file below the folder and answers its path.
    std::string write(const std::string& name, std::string_view bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    [[nodiscard]] static std::string contentOf(const std::string& path) {
        std::ostringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        return content.str();
    }

private:
    std::string m_path;
};

}  // namespace kestrune
