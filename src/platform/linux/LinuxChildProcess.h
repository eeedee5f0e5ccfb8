#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// A tool this program started and has not reaped yet. It is held by a process descriptor, so a signal can never reach
/// another process that got the same number. Going away leaves the process as it is: reap it first.
class LinuxChildProcess final {
public:
    /// Starts executable with arguments (without the program name) and output as its standard output and error; output
    /// is closed here. The child gets default signal dispositions, an empty signal mask and no descriptor above 2.
    /// Nothing when it could not be started. Any thread.
    [[nodiscard]] static std::optional<LinuxChildProcess> start(const std::string& executable,
                                                                const std::vector<std::string>& arguments,
                                                                LinuxFileDescriptor output);

    /// Polls readable once the process has ended.
    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }

    /// Sends a signal; nothing happens when the process has ended.
    void signal(int number) const;

    /// The exit status, or the number of the signal that ended it; nothing while it runs. Never blocks; not to be
    /// called again once it told a status.
    [[nodiscard]] std::optional<std::int32_t> reap() const;

private:
    explicit LinuxChildProcess(LinuxFileDescriptor descriptor) : m_descriptor(std::move(descriptor)) {}

    LinuxFileDescriptor m_descriptor;
};

}  // namespace kestrune
