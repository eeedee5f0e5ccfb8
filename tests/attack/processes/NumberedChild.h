#pragma once

#include <fcntl.h>
#include <linux/sched.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune::attack {

/// A copy of /bin/cat that runs under a process number of the attacker's choice; it needs the right to choose. Killed
/// and reaped with this object.
class NumberedChild final {
public:
    /// number 0: whichever the kernel gives. pid() is not positive when the program could not be started.
    explicit NumberedChild(std::string program, pid_t number = 0) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0) {
            return;
        }
        std::array<char*, 2> arguments{program.data(), nullptr};
        clone_args request{};
        request.exit_signal = SIGCHLD;
        request.set_tid = number == 0 ? 0 : reinterpret_cast<std::uintptr_t>(&number);
        request.set_tid_size = number == 0 ? 0 : 1;
        m_pid = static_cast<pid_t>(::syscall(SYS_clone3, &request, sizeof request));
        if (m_pid == 0) {
            if (::dup2(input[0], STDIN_FILENO) >= 0 && ::dup2(output[1], STDOUT_FILENO) >= 0) {
                ::execv(arguments[0], arguments.data());
            }
            ::_exit(127);
        }
        ::close(input[0]);
        ::close(output[1]);
        m_input.reset(input[1]);
        m_output.reset(output[0]);
        if (!echoes()) {
            end();
        }
    }

    NumberedChild(const NumberedChild&) = delete;
    NumberedChild& operator=(const NumberedChild&) = delete;

    ~NumberedChild() { end(); }

    [[nodiscard]] pid_t pid() const { return m_pid; }

    /// True while the program runs and no signal is about to end it: one would have done so before the answer.
    [[nodiscard]] bool echoes() const {
        char byte = '?';
        return m_pid > 0 && ::write(m_input.get(), ".", 1) == 1 && ::read(m_output.get(), &byte, 1) == 1 && byte == '.';
    }

    /// Kills and reaps it: its number is free then.
    void end() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            static_cast<void>(endingSignal());
        }
    }

    /// Waits for the end and reaps. The signal that ended it, or 0.
    int endingSignal() {
        int status = 0;
        while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
        }
        m_pid = -1;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

private:
    pid_t m_pid = -1;
    LinuxFileDescriptor m_input;
    LinuxFileDescriptor m_output;
};

}  // namespace kestrune::attack
