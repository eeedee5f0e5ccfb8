#include "platform/linux/LinuxProcessControl.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <ctime>

#include "platform/linux/LinuxPinnedProcess.h"
#include "platform/linux/LinuxProcessIdentity.h"

namespace kestrune {

namespace {

// The process meant, when it is this user's and still the same.
std::optional<LinuxPinnedProcess> pinned(const ProcessReference& process) {
    std::optional<LinuxPinnedProcess> found = LinuxPinnedProcess::open(process.pid);
    if (found && found->realOwner() == ::getuid() && found->isSame(process.startTime, process.command)) {
        return found;
    }
    return std::nullopt;
}

std::optional<std::int64_t> secondsSince(std::uint64_t startTime) {
    timespec now{};
    const long ticksPerSecond = ::sysconf(_SC_CLK_TCK);
    if (ticksPerSecond <= 0 || ::clock_gettime(CLOCK_BOOTTIME, &now) != 0) {
        return std::nullopt;
    }
    const auto startedAt = static_cast<std::int64_t>(startTime / static_cast<std::uint64_t>(ticksPerSecond));
    return std::max<std::int64_t>(now.tv_sec - startedAt, 0);
}

}  // namespace

bool LinuxProcessControl::requestTermination(const ProcessReference& process) {
    const std::optional<LinuxPinnedProcess> found = pinned(process);
    return found && found->send(SIGTERM);
}

std::optional<ProcessDetails> LinuxProcessControl::details(const ProcessReference& process) {
    const std::optional<LinuxPinnedProcess> found = pinned(process);
    const std::optional<std::uint64_t> startTime =
        found ? LinuxProcessIdentity::startTimeOf(found->folder()) : std::nullopt;
    if (!startTime) {
        return std::nullopt;
    }
    return ProcessDetails{LinuxProcessIdentity::workingDirectoryOf(found->folder()).value_or(std::string{}),
                          secondsSince(*startTime)};
}

}  // namespace kestrune
