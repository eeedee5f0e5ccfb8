#pragma once

#include <chrono>
#include <string>

#include "platform/HostStatistics.h"
#include "platform/linux/LinuxNetworkAdapters.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

/// Figures from /proc and /sys. The files stay open between calls. networkInterfaces tells physical Ethernet and Wi-Fi
/// adapters only; a new one appears within networkListAge.
class LinuxHostStatistics final : public HostStatistics {
public:
    explicit LinuxHostStatistics(const std::string& procRoot = "/proc", const std::string& sysRoot = "/sys",
                                 std::chrono::milliseconds networkListAge = std::chrono::seconds(30));

    [[nodiscard]] std::optional<MemoryPages> memory() override;
    [[nodiscard]] std::optional<CpuTicks> cpuTicks() override;
    [[nodiscard]] std::optional<std::int64_t> bootTime() override;
    [[nodiscard]] std::optional<std::vector<NetworkInterface>> networkInterfaces() override;

private:
    std::string m_statPath;
    LinuxStatusFile m_memory;
    LinuxStatusFile m_stat;
    LinuxNetworkAdapters m_adapters;
};

}  // namespace kestrune
