#pragma once

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace kestrune {

/// A new empty folder that goes away with everything in it, however deep it is.
class TemporaryFolder final {
public:
    TemporaryFolder() {
        const char* base = std::getenv("TMPDIR");
        std::string name = std::string(base != nullptr ? base : "/tmp") + "/kestrune-test-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) {
            ADD_FAILURE() << "no temporary folder at " << name;
        }
        m_path = name;
    }

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
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::string m_path;
};

}  // namespace kestrune
