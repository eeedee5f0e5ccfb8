#pragma once

#include "platform/HostStatistics.h"
#include "platform/macos/MacHostPort.h"

namespace kestrune {

/// Figures from Mach's host calls, sysctl and the list of interfaces. An interface's counters have 32 bits and start
/// again at 4 GiB.
class MacHostStatistics final : public HostStatistics {
public:
    [[nodiscard]] std::optional<MemoryPages> memory() override;
    [[nodiscard]] std::optional<CpuTicks> cpuTicks() override;
    [[nodiscard]] std::optional<std::int64_t> bootTime() override;
    [[nodiscard]] std::optional<std::vector<NetworkInterface>> networkInterfaces() override;

private:
    MacHostPort m_host;
};

}  // namespace kestrune
