#pragma once

#include <cstdint>

#include "platform/ProcessControl.h"
#include "platform/ProcessRunner.h"
#include "platform/SystemTools.h"

namespace kestrune {

/// Asks the process tool who owns a process and what it runs, as the listing did, and the kernel when it started and
/// which executable it runs, before the tool and once more right before the signal.
///
/// This system can hold no process by a descriptor, so one gap remains: between the last look and the kill(2) right
/// after it. Another process would be reached only if in that time the one meant ended, its parent reaped it, and its
/// number was given out anew, which happens only after all others have been.
class MacProcessControl final : public ProcessControl {
public:
    /// user is the number of the user who runs this program. runner and tools must outlive this object.
    MacProcessControl(ProcessRunner& runner, const SystemTools& tools, std::uint32_t user)
        : m_runner(runner), m_tools(tools), m_user(user) {}

    [[nodiscard]] bool requestTermination(const ProcessReference& process) override;

    /// The start time is what tells the process here; without one nothing is told.
    [[nodiscard]] std::optional<ProcessDetails> details(const ProcessReference& process) override;

private:
    ProcessRunner& m_runner;
    const SystemTools& m_tools;
    std::uint32_t m_user;
};

}  // namespace kestrune
