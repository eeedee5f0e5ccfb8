#include "platform/linux/LinuxChildProcess.h"

#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "platform/ArgumentVector.h"

namespace kestrune {

namespace {

// The C library of Debian 12 declares pidfd_open and its kin without C linkage, hence the plain system calls below.

class SpawnFileActions final {
public:
    explicit SpawnFileActions(int output) {
        m_ok = ::posix_spawn_file_actions_init(&m_actions) == 0;
        if (m_ok) {
            m_ok = ::posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO) == 0 &&
                   ::posix_spawn_file_actions_adddup2(&m_actions, output, STDERR_FILENO) == 0 &&
                   ::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1) == 0;
        }
    }

    SpawnFileActions(const SpawnFileActions&) = delete;
    SpawnFileActions& operator=(const SpawnFileActions&) = delete;

    ~SpawnFileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return m_ok ? &m_actions : nullptr; }

private:
    posix_spawn_file_actions_t m_actions{};
    bool m_ok = false;
};

class SpawnAttributes final {
public:
    SpawnAttributes() {
        sigset_t none;
        sigemptyset(&none);
        // sigfillset leaves out the C library's own two signals, and posix_spawn then has the child ignore them.
        sigset_t all;
        std::memset(&all, 0xFF, sizeof all);
        m_ok = ::posix_spawnattr_init(&m_attributes) == 0 &&
               ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK) == 0 &&
               ::posix_spawnattr_setsigdefault(&m_attributes, &all) == 0 &&
               ::posix_spawnattr_setsigmask(&m_attributes, &none) == 0;
    }

    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    ~SpawnAttributes() { ::posix_spawnattr_destroy(&m_attributes); }

    [[nodiscard]] const posix_spawnattr_t* get() const { return m_ok ? &m_attributes : nullptr; }

private:
    posix_spawnattr_t m_attributes{};
    bool m_ok = false;
};

}  // namespace

std::optional<LinuxChildProcess> LinuxChildProcess::start(const std::string& executable,
                                                          const std::vector<std::string>& arguments,
                                                          LinuxFileDescriptor output) {
    const std::optional<std::vector<char*>> vector = argumentVector(executable, arguments);
    if (!vector) {
        return std::nullopt;
    }
    pid_t pid = -1;
    {
        const SpawnFileActions actions(output.get());
        const SpawnAttributes attributes;
        if (actions.get() == nullptr || attributes.get() == nullptr ||
            ::posix_spawn(&pid, executable.c_str(), actions.get(), attributes.get(), vector->data(), environ) != 0) {
            return std::nullopt;
        }
    }
    // Closing our copy first leaves a free descriptor number for the next call.
    output.reset();
    // The number cannot mean another process yet: it stays taken until we reap it.
    LinuxFileDescriptor descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (!descriptor) {
        ::kill(pid, SIGKILL);
        while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
        return std::nullopt;
    }
    return LinuxChildProcess(std::move(descriptor));
}

void LinuxChildProcess::signal(int number) const {
    ::syscall(SYS_pidfd_send_signal, m_descriptor.get(), number, nullptr, 0);
}

std::optional<std::int32_t> LinuxChildProcess::reap() const {
    siginfo_t info{};
    while (::waitid(P_PIDFD, static_cast<id_t>(m_descriptor.get()), &info, WEXITED | WNOHANG) != 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    // For a process that ended by exit, si_status is its exit status; otherwise the signal's number.
    return info.si_pid == 0 ? std::nullopt : std::optional<std::int32_t>(info.si_status);
}

}  // namespace kestrune
