#pragma once

#include <mutex>
#include <vector>

#include "platform/ProcessRunner.h"
#include "platform/linux/LinuxChildProcess.h"

namespace kestrune {

/// Starts tools with posix_spawn. The watchdog is the calling thread itself: it waits for output, for the end of the
/// process and for the next time limit in one poll. No thread, no signal handler and no timer is involved, and any
/// number of threads may run tools at once.
class LinuxProcessRunner final : public ProcessRunner {
public:
    /// An ignored SIGCHLD is inherited from whoever started the program, and would make the kernel throw every exit
    /// status away: it is set back to its default.
    LinuxProcessRunner();

    [[nodiscard]] ProcessResult run(const std::string& executable, const std::vector<std::string>& arguments,
                                    const ProcessLimits& limits = {}) override;

private:
    void reapAbandoned();
    void abandon(LinuxChildProcess child);

    std::mutex m_mutex;
    std::vector<LinuxChildProcess> m_abandoned;  ///< killed, but stuck in the kernel when their caller had to go on
};

}  // namespace kestrune
