#pragma once

#include <mutex>
#include <vector>

#include "platform/ProcessRunner.h"
#include "platform/macos/MacChildProcess.h"

namespace kestrune {

/// Starts tools with posix_spawn. The watchdog is the calling thread itself: it waits for output, for the end of the
/// process and for the next time limit in one kevent. No thread, no signal handler and no timer is involved, and any
/// number of threads may run tools at once.
class MacProcessRunner final : public ProcessRunner {
public:
    /// An ignored SIGCHLD is inherited from whoever started the program, and would make the kernel throw every exit
    /// status away: it is set back to its default.
    MacProcessRunner();

    [[nodiscard]] ProcessResult run(const std::string& executable, const std::vector<std::string>& arguments,
                                    const ProcessLimits& limits = {}) override;

private:
    void reapAbandoned();
    void abandon(MacChildProcess child);

    std::mutex m_mutex;
    std::vector<MacChildProcess> m_abandoned;  ///< killed, but stuck in the kernel when their caller had to go on
};

}  // namespace kestrune
