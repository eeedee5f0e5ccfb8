#include "platform/macos/MacProcessControl.h"

#include <sys/types.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <utility>

#include "platform/ToolProcessControl.h"
#include "platform/macos/MacProcessIdentity.h"

namespace kestrune {

namespace {

using MacProcessIdentity::Identity;

// Numbers below 2 are the system's first process, or stand for whole groups of processes.
bool mayBeMeant(const ProcessReference& process) {
    return process.pid >= 2;
}

// The start time comes from the clock on the wall, which may have been set back since.
std::int64_t secondsSince(std::uint64_t startTime) {
    using std::chrono::microseconds;
    const auto now = std::chrono::duration_cast<microseconds>(std::chrono::system_clock::now().time_since_epoch());
    const microseconds started(static_cast<std::int64_t>(startTime));
    const std::int64_t seconds = std::chrono::duration_cast<std::chrono::seconds>(now - started).count();
    return std::max<std::int64_t>(seconds, 0);
}

}  // namespace

bool MacProcessControl::requestTermination(const ProcessReference& process) {
    if (!mayBeMeant(process)) {
        return false;
    }
    const std::optional<Identity> meant = MacProcessIdentity::of(process.pid);
    if (!meant || meant->owner != m_user || (process.startTime != 0 && meant->startTime != process.startTime)) {
        return false;
    }
    const auto signalIfStillMeant = [&meant](std::int32_t pid) {
        return MacProcessIdentity::of(pid) == meant && ::kill(pid, SIGTERM) == 0;
    };
    return ToolProcessControl(m_runner, m_tools, m_user, signalIfStillMeant).requestTermination(process);
}

std::optional<ProcessDetails> MacProcessControl::details(const ProcessReference& process) {
    if (!mayBeMeant(process) || process.startTime == 0) {
        return std::nullopt;
    }
    std::string folder = MacProcessIdentity::workingDirectoryOf(process.pid).value_or(std::string{});
    // Asked last: when it is the same process now, it was when the folder was read.
    const std::optional<Identity> now = MacProcessIdentity::of(process.pid);
    if (!now || now->owner != m_user || now->startTime != process.startTime) {
        return std::nullopt;
    }
    return ProcessDetails{std::move(folder), secondsSince(now->startTime)};
}

}  // namespace kestrune
