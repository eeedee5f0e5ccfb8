#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// Physical memory by class, in pages of pageSize bytes.
struct MemoryPages {
    std::uint64_t free = 0;
    std::uint64_t active = 0;
    std::uint64_t wired = 0;
    std::uint64_t inactive = 0;
    std::uint64_t speculative = 0;
    std::uint64_t compressed = 0;
    std::uint64_t pageSize = 0;

    bool operator==(const MemoryPages&) const = default;
};

/// Processor time since boot in ticks, summed over all processors.
struct CpuTicks {
    double user = 0;
    double system = 0;
    double idle = 0;
    double nice = 0;

    bool operator==(const CpuTicks&) const = default;
};

/// Bytes since an interface came up.
struct InterfaceBytes {
    std::uint64_t received = 0;
    std::uint64_t sent = 0;

    bool operator==(const InterfaceBytes&) const = default;
};

struct NetworkInterface {
    std::string name;
    bool isEthernetOrWiFi =
        false;  ///< a physical Ethernet or Wi-Fi adapter; no loopback, tunnel, bridge or container end
    bool isUp = false;
    std::optional<InterfaceBytes> bytes;

    bool operator==(const NetworkInterface&) const = default;
};

/// Counters of the whole machine. Each call reads the system once; nothing means that the system did not say.
/// One thread at a time.
class HostStatistics {
public:
    HostStatistics() = default;
    HostStatistics(const HostStatistics&) = delete;
    HostStatistics& operator=(const HostStatistics&) = delete;
    virtual ~HostStatistics() = default;

    [[nodiscard]] virtual std::optional<MemoryPages> memory() = 0;
    [[nodiscard]] virtual std::optional<CpuTicks> cpuTicks() = 0;

    /// When the machine was started, in seconds since 1970.
    [[nodiscard]] virtual std::optional<std::int64_t> bootTime() = 0;

    [[nodiscard]] virtual std::optional<std::vector<NetworkInterface>> networkInterfaces() = 0;
};

}  // namespace kestrune
