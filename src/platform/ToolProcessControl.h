#pragma once

#include <cstdint>
#include <functional>

#include "platform/ProcessControl.h"
#include "platform/ProcessRunner.h"
#include "platform/SystemTools.h"

namespace kestrune {

/// Asks the system's process tool who owns a process and what it runs right before the signal goes out. The tool goes
/// by the number and tells no start time, so it cannot tell two runs of one program apart.
class ToolProcessControl final : public ProcessControl {
public:
    /// Sends SIGTERM to the process with this number; true when it was delivered.
    using SendTermination = std::function<bool(std::int32_t pid)>;

    /// user is the number of the user who runs this program. runner and tools must outlive this object.
    ToolProcessControl(ProcessRunner& runner, const SystemTools& tools, std::uint32_t user,
                       SendTermination sendTermination);

    [[nodiscard]] bool requestTermination(const ProcessReference& process) override;
    [[nodiscard]] std::optional<ProcessDetails> details(const ProcessReference& process) override;

private:
    ProcessRunner& m_runner;
    const SystemTools& m_tools;
    std::uint32_t m_user;
    SendTermination m_sendTermination;
};

}  // namespace kestrune
