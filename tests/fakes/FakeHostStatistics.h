#pragma once

#include "platform/HostStatistics.h"

namespace kestrune {

/// Counters the test sets; nothing until then.
class FakeHostStatistics final : public HostStatistics {
public:
    [[nodiscard]] std::optional<MemoryPages> memory() override {
        ++memoryReads;
        return memoryPages;
    }

    [[nodiscard]] std::optional<CpuTicks> cpuTicks() override {
        ++cpuReads;
        return ticks;
    }

    [[nodiscard]] std::optional<std::int64_t> bootTime() override { return bootSeconds; }

    [[nodiscard]] std::optional<std::vector<NetworkInterface>> networkInterfaces() override {
        ++networkReads;
        return interfaces;
    }

    std::optional<MemoryPages> memoryPages;
    std::optional<CpuTicks> ticks;
    std::optional<std::int64_t> bootSeconds;
    std::optional<std::vector<NetworkInterface>> interfaces;

    int memoryReads = 0;
    int cpuReads = 0;
    int networkReads = 0;
};

}  // namespace kestrune
