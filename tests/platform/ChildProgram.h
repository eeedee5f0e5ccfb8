#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxProcessIdentity.h"

namespace kestrune {

/// A program of a test, with pipes as its standard input and output. It runs when the constructor returns, and is
/// killed and reaped with this object.
class ChildProgram final {
public:
    explicit ChildProgram(std::vector<std::string> command = {"/bin/cat"}, uid_t user = ::getuid()) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        std::array<int, 2> started{};
        for (std::array<int, 2>* pipe : {&input, &output, &started}) {
            EXPECT_EQ(::pipe2(pipe->data(), O_CLOEXEC), 0);
        }
        m_pid = ::fork();
        if (m_pid == 0) {
            become(command, user, {input[0], output[1], started[1]});
        }
        ::close(input[0]);
        ::close(output[1]);
        ::close(started[1]);
        m_input.reset(input[1]);
        m_output.reset(output[0]);
        // The other end closes when the program takes over.
        const LinuxFileDescriptor start(started[0]);
        char byte = 0;
        EXPECT_EQ(::read(start.get(), &byte, 1), 0);
    }

    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    ~ChildProgram() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            static_cast<void>(endingSignal());
        }
    }

    [[nodiscard]] pid_t pid() const { return m_pid; }

    [[nodiscard]] std::string command() const { return LinuxProcessIdentity::commandOf(folder().get()).value(); }

    [[nodiscard]] std::uint64_t startTime() const { return LinuxProcessIdentity::startTimeOf(folder().get()).value(); }

    void write(const std::string& text) const {
        EXPECT_EQ(::write(m_input.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    /// What the program writes up to the next line end, which is left out.
    [[nodiscard]] std::string readLine() const {
        std::string line;
        char byte = 0;
        while (::read(m_output.get(), &byte, 1) == 1 && byte != '\n') {
            line += byte;
        }
        return line;
    }

    /// True while the program answers, as /bin/cat does.
    [[nodiscard]] bool echoes() const {
        write("still here\n");
        return readLine() == "still here";
    }

    /// Ends the program and leaves it unreaped.
    void endUnreaped() const {
        ::kill(m_pid, SIGKILL);
        siginfo_t information{};
        EXPECT_EQ(::waitid(P_PID, static_cast<id_t>(m_pid), &information, WEXITED | WNOWAIT), 0);
    }

    /// Stops the program as a terminal does.
    void stop() const {
        ::kill(m_pid, SIGSTOP);
        int status = 0;
        EXPECT_EQ(::waitpid(m_pid, &status, WUNTRACED), m_pid);
        EXPECT_TRUE(WIFSTOPPED(status));
    }

    /// Waits for the end and reaps. The signal that ended the program, or 0.
    [[nodiscard]] int endingSignal() {
        int status = 0;
        while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
        }
        m_pid = -1;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

private:
    [[nodiscard]] LinuxFileDescriptor folder() const { return LinuxProcessIdentity::openFolder(m_pid); }

    struct Ends {
        int input;
        int output;
        int failure;  ///< gets a byte when the program cannot be started
    };

    [[noreturn]] static void become(std::vector<std::string>& command, uid_t user, Ends ends) {
        std::vector<char*> arguments;
        for (std::string& argument : command) {
            arguments.push_back(argument.data());
        }
        arguments.push_back(nullptr);
        if (::dup2(ends.input, STDIN_FILENO) >= 0 && ::dup2(ends.output, STDOUT_FILENO) >= 0 &&
            (user == ::getuid() || ::setuid(user) == 0)) {
            ::execv(arguments[0], arguments.data());
        }
        static_cast<void>(::write(ends.failure, "!", 1));
        ::_exit(127);
    }

    pid_t m_pid = -1;
    LinuxFileDescriptor m_input;
    LinuxFileDescriptor m_output;
};

}  // namespace kestrune
