#include "engine/TelemetryFormulas.h"

#include <algorithm>
#include <limits>

#include "base/Text.h"
#include "engine/FiniteNumber.h"

namespace kestrune::TelemetryFormulas {

namespace {

constexpr double bytesPerMebibyte = 1'048'576.0;
constexpr double bytesPerGigabyte = 1e9;

// The tool's fallback divides its blocks of 1024 bytes by a million, as the figure has always been defined.
constexpr double blocksPerGigabyte = 1e6;

// Conversion toward zero that stays defined for numbers no machine reports.
std::int64_t truncated(double value) {
    constexpr double limit = 9.2e18;
    return static_cast<std::int64_t>(std::clamp(value, -limit, limit));
}

}  // namespace

int percent(double part, double whole) {
    if (!(whole > 0)) {
        return 0;
    }
    constexpr double limit = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(part * 100 / whole, -limit, limit));
}

VMStat vmStat(const std::optional<MemoryPages>& pages) {
    if (!pages) {
        return {};
    }
    const auto mebibytes = [size = static_cast<double>(pages->pageSize)](std::uint64_t count) {
        return static_cast<double>(count) * size / bytesPerMebibyte;
    };
    VMStat stat;
    stat.free = mebibytes(pages->free);
    stat.active = mebibytes(pages->active);
    stat.wired = mebibytes(pages->wired);
    stat.inactive = mebibytes(pages->inactive);
    stat.spec = mebibytes(pages->speculative);
    stat.compressed = mebibytes(pages->compressed);
    return stat;
}

MemorySummary memorySummary(const VMStat& stat) {
    const double used = stat.active + stat.wired + stat.compressed;
    MemorySummary summary;
    summary.freeMB = stat.free + stat.inactive + stat.spec;
    summary.totalMB = summary.freeMB + used;
    summary.pct = percent(used, summary.totalMB);
    return summary;
}

int cpuLoadPercentage(const std::optional<CpuTicks>& previous, const CpuTicks& current) {
    if (!previous) {
        const double busy = current.user + current.system + current.nice;
        return percent(busy, std::max(busy + current.idle, 1.0));
    }
    const double busy = std::max(current.user - previous->user, 0.0) +
                        std::max(current.system - previous->system, 0.0) + std::max(current.nice - previous->nice, 0.0);
    return percent(busy, busy + std::max(current.idle - previous->idle, 0.0));
}

DiskSummary diskSummary(const VolumeCapacity& capacity) {
    const auto total = static_cast<double>(capacity.total.value_or(0));
    const auto available = static_cast<double>(capacity.available.value_or(0));
    DiskSummary summary;
    summary.totalGB = truncated(total / bytesPerGigabyte);
    summary.usedGB = truncated(std::max(total - available, 0.0) / bytesPerGigabyte);
    summary.freeGB = truncated(available / bytesPerGigabyte);
    if (summary.totalGB >= 1) {
        summary.pct = percent(static_cast<double>(summary.usedGB), static_cast<double>(summary.totalGB));
    }
    return summary;
}

DiskSummary diskSummaryFromDf(std::string_view output) {
    const std::vector<std::string> lines = split(output, '\n');
    if (lines.size() < 2) {
        return {};
    }
    const std::vector<std::string> fields = splitAtWhiteSpace(lines[1]);
    if (fields.size() < 4) {
        return {};
    }
    const std::optional<double> total = finiteNumber(fields[1]);
    const std::optional<double> used = finiteNumber(fields[2]);
    const std::optional<double> available = finiteNumber(fields[3]);
    if (!total || !used || !available) {
        return {};
    }
    DiskSummary summary;
    summary.totalGB = truncated(*total / blocksPerGigabyte);
    summary.usedGB = truncated(*used / blocksPerGigabyte);
    summary.freeGB = truncated(*available / blocksPerGigabyte);
    if (summary.totalGB >= 1) {
        summary.pct = percent(*used, *total);
    }
    return summary;
}

std::string uptimeText(std::int64_t seconds) {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 60 * minute;
    constexpr std::int64_t day = 24 * hour;
    const std::int64_t known = std::max<std::int64_t>(seconds, 0);
    const std::string belowOneDay =
        std::to_string(known % day / hour) + "h " + std::to_string(known % hour / minute) + "m";
    return known < day ? belowOneDay : std::to_string(known / day) + "d " + belowOneDay;
}

}  // namespace kestrune::TelemetryFormulas
