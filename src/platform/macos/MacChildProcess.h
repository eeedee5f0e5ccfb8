#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/macos/MacFileDescriptor.h"

namespace kestrune {

/// A tool this program started and has not reaped yet. The number of an ended process stays taken until it is reaped,
/// so a signal can reach no other process as long as only this object reaps and signals it: one thread at a time.
/// Going away leaves the process as it is: reap it first.
class MacChildProcess final {
public:
    /// Starts executable with arguments (without the program name) and output as its standard output and error; output
    /// is closed here. The child gets default signal dispositions, an empty signal mask and no descriptor above 2.
    /// Nothing when it could not be started. Any thread.
    [[nodiscard]] static std::optional<MacChildProcess> start(const std::string& executable,
                                                              const std::vector<std::string>& arguments,
                                                              MacFileDescriptor output);

    MacChildProcess(MacChildProcess&& other) noexcept : m_pid(std::exchange(other.m_pid, 0)) {}

    MacChildProcess& operator=(MacChildProcess&& other) noexcept {
        m_pid = std::exchange(other.m_pid, 0);
        return *this;
    }

    MacChildProcess(const MacChildProcess&) = delete;
    MacChildProcess& operator=(const MacChildProcess&) = delete;
    ~MacChildProcess() = default;

    /// 0 once it is reaped.
    [[nodiscard]] pid_t pid() const { return m_pid; }

    /// Sends a signal; nothing happens when the process has ended.
    void signal(int number) const;

    /// The exit status, or the number of the signal that ended it; nothing while it runs. Never blocks; told once.
    [[nodiscard]] std::optional<std::int32_t> reap();

private:
    explicit MacChildProcess(pid_t pid) : m_pid(pid) {}

    pid_t m_pid;
};

}  // namespace kestrune
