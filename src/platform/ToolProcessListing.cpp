#include "platform/ToolProcessListing.h"

#include <algorithm>

#include "platform/ProcessText.h"

namespace kestrune {

namespace {

// The caller waits for both tools together no longer than it would for one. A first tool that cannot be got rid of
// leaves the second this long.
constexpr Seconds secondToolsLeast{1};

ProcessLimits limitsOfFirst() {
    ProcessLimits limits;
    limits.abandonAfterSeconds -= secondToolsLeast.count();
    return limits;
}

// The usual limits, all drawn in alike to what is left of the last of them.
ProcessLimits limitsOfSecond(Seconds used) {
    const ProcessLimits whole;
    const double left = std::max(whole.abandonAfterSeconds - used.count(), secondToolsLeast.count());
    const double share = left / whole.abandonAfterSeconds;
    return {whole.terminateAfterSeconds * share, whole.killAfterSeconds * share, left};
}

}  // namespace

ProcessSnapshot ToolProcessListing::snapshot() {
    const Seconds start = m_clock.uptime();
    ProcessSnapshot snapshot;
    snapshot.listeners = ProcessText::listeningPorts(outputOf(m_tools.listeningSockets(), limitsOfFirst()));
    const ProcessLimits limits = limitsOfSecond(m_clock.uptime() - start);
    snapshot.processes = ProcessText::processes(outputOf(m_tools.userProcesses(), limits));
    return snapshot;
}

std::string ToolProcessListing::outputOf(const ToolCommand& tool, const ProcessLimits& limits) {
    return m_runner.run(tool.executable, tool.arguments, limits).output;
}

}  // namespace kestrune
