#include "platform/macos/MacProcessRunner.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <iterator>
#include <memory>

#include "platform/ProcessDeadlines.h"
#include "platform/macos/MacEventQueue.h"

namespace kestrune {

namespace {

using Clock = ProcessDeadlines::Clock;

struct Pipe {
    MacFileDescriptor reading;
    MacFileDescriptor writing;
};

// This system has no pipe2(2). A tool of ours started between the two steps gets neither end: it inherits nothing. A
// process started by somebody else in this program might, and is why a run ends at its last limit, whoever holds the
// pipe.
std::optional<Pipe> makePipe() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return std::nullopt;
    }
    Pipe pipe{MacFileDescriptor(ends[0]), MacFileDescriptor(ends[1])};
    // Only our end does not block: the tool must find an ordinary pipe.
    const bool isReady = ::fcntl(pipe.reading.get(), F_SETFD, FD_CLOEXEC) == 0 &&
                         ::fcntl(pipe.writing.get(), F_SETFD, FD_CLOEXEC) == 0 &&
                         ::fcntl(pipe.reading.get(), F_SETFL, O_NONBLOCK) == 0;
    return isReady ? std::optional(std::move(pipe)) : std::nullopt;
}

// One run from its start to the moment its caller may go on.
class Run final {
public:
    Run(MacChildProcess& child, MacFileDescriptor pipe, MacEventQueue& events, ProcessDeadlines deadlines)
        : m_child(child),
          m_pipe(std::move(pipe)),
          m_events(events),
          m_deadlines(deadlines),
          m_isEndTold(m_events.watchEnd(child.pid())) {}

    // Returns when the process has ended and nobody holds the pipe any more, or when the last limit is reached.
    void wait() {
        while (!m_status || m_pipe) {
            const Clock::time_point now = Clock::now();
            if (m_deadlines.isOver(now)) {
                return;
            }
            step(now);
        }
    }

    // Nothing when the process could not be reaped in time.
    [[nodiscard]] std::optional<std::int32_t> status() const { return m_status; }

    [[nodiscard]] std::string takeOutput() { return std::move(m_output); }

private:
    void step(Clock::time_point now) {
        if (!m_status) {
            while (const std::optional<int> signal = m_deadlines.takeDueSignal(now)) {
                m_child.signal(*signal);
            }
        }
        const MacEventQueue::Events events = m_events.wait(longestWait(now));
        if (events.isReadable && m_pipe) {
            readOnce();
        }
        m_isEndTold = m_isEndTold && !events.hasEnded;
        if (!m_isEndTold && !m_status) {
            m_status = m_child.reap();
        }
    }

    // An end is told a moment before waitpid sees it, and one that came before it was watched for is not told at all.
    // Then the process is looked at with growing pauses.
    [[nodiscard]] std::chrono::milliseconds longestWait(Clock::time_point now) {
        using namespace std::chrono_literals;
        const std::chrono::milliseconds longest = m_deadlines.untilNext(m_status.has_value(), now);
        if (m_isEndTold || m_status) {
            return longest;
        }
        const std::chrono::milliseconds pause = m_pause;
        m_pause = std::clamp(pause * 2, 1ms, 100ms);
        return std::min(longest, pause);
    }

    void readOnce() {
        const ssize_t count = ::read(m_pipe.get(), m_chunk->data(), m_chunk->size());
        if (count > 0) {
            m_output.append(m_chunk->data(), static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            m_pipe.reset();
        }
    }

    using Chunk = std::array<char, 65536>;  // what a pipe holds

    MacChildProcess& m_child;
    MacFileDescriptor m_pipe;
    MacEventQueue& m_events;
    ProcessDeadlines m_deadlines;
    bool m_isEndTold;  // the queue will tell that the process has ended
    std::chrono::milliseconds m_pause{};
    std::optional<std::int32_t> m_status;
    std::string m_output;
    // Threads other than the main one have 512 KiB of stack here.
    std::unique_ptr<Chunk> m_chunk = std::make_unique<Chunk>();
};

}  // namespace

MacProcessRunner::MacProcessRunner() {
    struct sigaction current {};

    if (::sigaction(SIGCHLD, nullptr, &current) == 0 && current.sa_handler == SIG_IGN) {
        current.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &current, nullptr);
    }
}

ProcessResult MacProcessRunner::run(const std::string& executable, const std::vector<std::string>& arguments,
                                    const ProcessLimits& limits) {
    reapAbandoned();
    std::optional<Pipe> pipe = makePipe();
    MacEventQueue events;
    if (!pipe || !events || !events.watchReading(pipe->reading.get())) {
        return {};
    }
    const ProcessDeadlines deadlines(limits, Clock::now());
    std::optional<MacChildProcess> child = MacChildProcess::start(executable, arguments, std::move(pipe->writing));
    if (!child) {
        return {};
    }
    Run run(*child, std::move(pipe->reading), events, deadlines);
    run.wait();
    const std::optional<std::int32_t> status = run.status();
    if (!status) {
        child->signal(SIGKILL);
        abandon(std::move(*child));
    }
    return {status.value_or(SIGKILL), run.takeOutput()};
}

void MacProcessRunner::reapAbandoned() {
    const std::scoped_lock lock(m_mutex);
    for (auto child = m_abandoned.begin(); child != m_abandoned.end();) {
        child = child->reap() ? m_abandoned.erase(child) : std::next(child);
    }
}

void MacProcessRunner::abandon(MacChildProcess child) {
    const std::scoped_lock lock(m_mutex);
    m_abandoned.push_back(std::move(child));
}

}  // namespace kestrune
