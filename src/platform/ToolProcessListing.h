#pragma once

#include "base/Clock.h"
#include "platform/ProcessListing.h"
#include "platform/ProcessRunner.h"
#include "platform/SystemTools.h"

namespace kestrune {

/// Asks the system's port and process tools, the ports first. A tool that fails leaves its share of the snapshot
/// empty. Start times are not told.
class ToolProcessListing final : public ProcessListing {
public:
    /// All must outlive this object.
    ToolProcessListing(ProcessRunner& runner, const SystemTools& tools, const Clock& clock)
        : m_runner(runner), m_tools(tools), m_clock(clock) {}

    [[nodiscard]] ProcessSnapshot snapshot() override;

private:
    [[nodiscard]] std::string outputOf(const ToolCommand& tool, const ProcessLimits& limits);

    ProcessRunner& m_runner;
    const SystemTools& m_tools;
    const Clock& m_clock;
};

}  // namespace kestrune
