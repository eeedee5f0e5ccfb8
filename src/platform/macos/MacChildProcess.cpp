#include "platform/macos/MacChildProcess.h"

#include <crt_externs.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/ArgumentVector.h"

namespace kestrune {

namespace {

// With POSIX_SPAWN_CLOEXEC_DEFAULT the child gets the descriptors that these actions make and no other, whatever was
// opened in this program without close-on-exec.
class SpawnFileActions final {
public:
    explicit SpawnFileActions(int output) {
        m_isInitialized = ::posix_spawn_file_actions_init(&m_actions) == 0;
        m_isComplete = m_isInitialized && ::posix_spawn_file_actions_addinherit_np(&m_actions, STDIN_FILENO) == 0 &&
                       ::posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO) == 0 &&
                       ::posix_spawn_file_actions_adddup2(&m_actions, output, STDERR_FILENO) == 0;
    }

    SpawnFileActions(const SpawnFileActions&) = delete;
    SpawnFileActions& operator=(const SpawnFileActions&) = delete;

    ~SpawnFileActions() {
        if (m_isInitialized) {
            ::posix_spawn_file_actions_destroy(&m_actions);
        }
    }

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return m_isComplete ? &m_actions : nullptr; }

private:
    posix_spawn_file_actions_t m_actions{};
    bool m_isInitialized = false;
    bool m_isComplete = false;
};

class SpawnAttributes final {
public:
    SpawnAttributes() {
        // sigemptyset and sigfillset are macros on this system.
        sigset_t none;
        sigemptyset(&none);
        sigset_t all;
        sigfillset(&all);
        constexpr short flags = POSIX_SPAWN_CLOEXEC_DEFAULT | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK;
        m_isInitialized = ::posix_spawnattr_init(&m_attributes) == 0;
        m_isComplete = m_isInitialized && ::posix_spawnattr_setflags(&m_attributes, flags) == 0 &&
                       ::posix_spawnattr_setsigdefault(&m_attributes, &all) == 0 &&
                       ::posix_spawnattr_setsigmask(&m_attributes, &none) == 0;
    }

    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    ~SpawnAttributes() {
        if (m_isInitialized) {
            ::posix_spawnattr_destroy(&m_attributes);
        }
    }

    [[nodiscard]] const posix_spawnattr_t* get() const { return m_isComplete ? &m_attributes : nullptr; }

private:
    posix_spawnattr_t m_attributes{};
    bool m_isInitialized = false;
    bool m_isComplete = false;
};

}  // namespace

std::optional<MacChildProcess> MacChildProcess::start(const std::string& executable,
                                                      const std::vector<std::string>& arguments,
                                                      MacFileDescriptor output) {
    const std::optional<std::vector<char*>> vector = argumentVector(executable, arguments);
    if (!vector) {
        return std::nullopt;
    }
    const SpawnFileActions actions(output.get());
    const SpawnAttributes attributes;
    pid_t pid = 0;
    if (actions.get() == nullptr || attributes.get() == nullptr ||
        ::posix_spawn(&pid, executable.c_str(), actions.get(), attributes.get(), vector->data(), *::_NSGetEnviron()) !=
            0) {
        return std::nullopt;
    }
    return MacChildProcess(pid);
}

void MacChildProcess::signal(int number) const {
    if (m_pid > 0) {
        ::kill(m_pid, number);
    }
}

std::optional<std::int32_t> MacChildProcess::reap() {
    int status = 0;
    pid_t reaped = 0;
    do {
        reaped = ::waitpid(m_pid, &status, WNOHANG);
    } while (reaped < 0 && errno == EINTR);
    if (reaped == 0) {
        return std::nullopt;
    }
    m_pid = 0;
    if (reaped < 0) {
        return -1;
    }
    return WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace kestrune
