#pragma once

#include <cstdint>
#include <string>

namespace kestrune {

/// Memory by class in mebibytes.
struct VMStat {
    double free = 0;
    double active = 0;
    double wired = 0;
    double inactive = 0;
    double spec = 0;
    double compressed = 0;

    bool operator==(const VMStat&) const = default;
};

struct MemorySummary {
    double freeMB = 0;   ///< mebibytes that programs can have without anything being pushed out
    double totalMB = 0;  ///< mebibytes
    int pct = 0;         ///< percent in use

    bool operator==(const MemorySummary&) const = default;
};

/// Use of the start-up volume in whole gigabytes of 1,000,000,000 bytes.
struct DiskSummary {
    std::int64_t usedGB = 0;
    std::int64_t totalGB = 0;
    std::int64_t pct = 0;
    std::int64_t freeGB = 0;

    bool operator==(const DiskSummary&) const = default;
};

/// Bytes over all counted interfaces since they came up.
struct NetworkCounters {
    std::uint64_t received = 0;
    std::uint64_t sent = 0;

    bool operator==(const NetworkCounters&) const = default;
};

/// Bytes per second.
struct NetworkRates {
    double down = 0;
    double up = 0;

    bool operator==(const NetworkRates&) const = default;
};

/// One of the processes that hold the most memory.
struct TopProcess {
    double mem = 0;  ///< percent of the machine's memory
    std::string name;

    bool operator==(const TopProcess&) const = default;
};

struct BatteryReading {
    int percent = 0;     ///< 0 to 100
    std::string source;  ///< "On power adapter" or "On battery"

    bool operator==(const BatteryReading&) const = default;
};

}  // namespace kestrune
