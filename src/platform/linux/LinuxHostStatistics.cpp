#include "platform/linux/LinuxHostStatistics.h"

#include "platform/linux/LinuxProcText.h"

namespace kestrune {

namespace {

constexpr std::size_t memoryLength = 8192;
constexpr std::size_t firstLineLength = 512;

// The boot time comes after one line a processor and one number an interrupt.
constexpr std::size_t wholeStatLength = 1U << 20U;

}  // namespace

LinuxHostStatistics::LinuxHostStatistics(const std::string& procRoot, const std::string& sysRoot,
                                         std::chrono::milliseconds networkListAge)
    : m_statPath(procRoot + "/stat"),
      m_memory(procRoot + "/meminfo"),
      m_stat(m_statPath),
      m_adapters(sysRoot + "/class/net", networkListAge) {
}

std::optional<MemoryPages> LinuxHostStatistics::memory() {
    const std::optional<std::string_view> text = m_memory.read(memoryLength);
    return text ? LinuxProcText::memory(*text) : std::nullopt;
}

std::optional<CpuTicks> LinuxHostStatistics::cpuTicks() {
    const std::optional<std::string_view> text = m_stat.read(firstLineLength);
    return text ? LinuxProcText::cpuTicks(*text) : std::nullopt;
}

std::optional<std::int64_t> LinuxHostStatistics::bootTime() {
    LinuxStatusFile stat(m_statPath);
    const std::optional<std::string_view> text = stat.read(wholeStatLength);
    return text ? LinuxProcText::bootTime(*text) : std::nullopt;
}

std::optional<std::vector<NetworkInterface>> LinuxHostStatistics::networkInterfaces() {
    return m_adapters.read();
}

}  // namespace kestrune
