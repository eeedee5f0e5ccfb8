#include "platform/linux/LinuxProcessRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "platform/ProcessDeadlines.h"

namespace kestrune {

namespace {

using Clock = ProcessDeadlines::Clock;

// One run from its start to the moment its caller may go on.
class Run final {
public:
    Run(const LinuxChildProcess& child, LinuxFileDescriptor pipe, ProcessDeadlines deadlines)
        : m_child(child), m_pipe(std::move(pipe)), m_deadlines(deadlines) {}

    // Returns when the process has ended and nobody holds the pipe any more, or when the last limit is reached.
    void wait() {
        while (!m_status || m_pipe) {
            const Clock::time_point now = Clock::now();
            if (m_deadlines.isOver(now)) {
                return;
            }
            waitForEvent(now);
        }
    }

    // Nothing when the process could not be reaped in time.
    [[nodiscard]] std::optional<std::int32_t> status() const { return m_status; }

    [[nodiscard]] std::string takeOutput() { return std::move(m_output); }

private:
    void waitForEvent(Clock::time_point now) {
        if (!m_status) {
            while (const std::optional<int> signal = m_deadlines.takeDueSignal(now)) {
                m_child.signal(*signal);
            }
        }
        const int longest = static_cast<int>(m_deadlines.untilNext(m_status.has_value(), now).count());
        // poll passes over negative descriptors.
        std::array<pollfd, 2> watched{{{m_pipe.get(), POLLIN, 0}, {m_status ? -1 : m_child.descriptor(), POLLIN, 0}}};
        if (::poll(watched.data(), watched.size(), longest) <= 0) {
            return;
        }
        if (watched[0].revents != 0) {
            readOnce();
        }
        if (watched[1].revents != 0) {
            m_status = m_child.reap();
        }
    }

    void readOnce() {
        const ssize_t count = ::read(m_pipe.get(), m_chunk.data(), m_chunk.size());
        if (count > 0) {
            m_output.append(m_chunk.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            m_pipe.reset();
        }
    }

    const LinuxChildProcess& m_child;
    LinuxFileDescriptor m_pipe;
    ProcessDeadlines m_deadlines;
    std::optional<std::int32_t> m_status;
    std::string m_output;
    std::array<char, 65536> m_chunk;  // what a pipe holds
};

}  // namespace

LinuxProcessRunner::LinuxProcessRunner() {
    struct sigaction current {};

    if (::sigaction(SIGCHLD, nullptr, &current) == 0 && current.sa_handler == SIG_IGN) {
        current.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &current, nullptr);
    }
}

ProcessResult LinuxProcessRunner::run(const std::string& executable, const std::vector<std::string>& arguments,
                                      const ProcessLimits& limits) {
    reapAbandoned();
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {};
    }
    LinuxFileDescriptor reading(ends[0]);
    LinuxFileDescriptor writing(ends[1]);
    // Our end only: the tool must find an ordinary, blocking pipe.
    if (::fcntl(reading.get(), F_SETFL, O_NONBLOCK) != 0) {
        return {};
    }
    const ProcessDeadlines deadlines(limits, Clock::now());
    std::optional<LinuxChildProcess> child = LinuxChildProcess::start(executable, arguments, std::move(writing));
    if (!child) {
        return {};
    }
    Run run(*child, std::move(reading), deadlines);
    run.wait();
    const std::optional<std::int32_t> status = run.status();
    if (!status) {
        child->signal(SIGKILL);
        abandon(std::move(*child));
    }
    return {status.value_or(SIGKILL), run.takeOutput()};
}

void LinuxProcessRunner::reapAbandoned() {
    const std::scoped_lock lock(m_mutex);
    std::erase_if(m_abandoned, [](const LinuxChildProcess& child) { return child.reap().has_value(); });
}

void LinuxProcessRunner::abandon(LinuxChildProcess child) {
    const std::scoped_lock lock(m_mutex);
    m_abandoned.push_back(std::move(child));
}

}  // namespace kestrune
