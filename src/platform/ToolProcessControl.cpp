#include "platform/ToolProcessControl.h"

#include "platform/ProcessText.h"

namespace kestrune {

ToolProcessControl::ToolProcessControl(ProcessRunner& runner, const SystemTools& tools, std::uint32_t user,
                                       SendTermination sendTermination)
    : m_runner(runner), m_tools(tools), m_user(user), m_sendTermination(std::move(sendTermination)) {
}

bool ToolProcessControl::requestTermination(const ProcessReference& process) {
    // Numbers below 2 are the system's first process, or stand for whole groups of processes.
    if (process.pid < 2) {
        return false;
    }
    const ToolCommand tool = m_tools.processOwner(process.pid);
    const ProcessResult result = m_runner.run(tool.executable, tool.arguments);
    if (result.status != 0) {
        return false;
    }
    return ProcessText::owner(result.output) == ProcessText::Owner{m_user, process.command} &&
           m_sendTermination(process.pid);
}

std::optional<ProcessDetails> ToolProcessControl::details(const ProcessReference& /*process*/) {
    return std::nullopt;
}

}  // namespace kestrune
