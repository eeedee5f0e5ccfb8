#include "platform/linux/LinuxProcText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

#include "base/WholeNumber.h"

namespace kestrune::LinuxProcText {

namespace {

// The text up to the next line end, which is taken off text together with it.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

// The number at the front of text after blanks, which is taken off together with them. Nothing when there is none, or
// one that 64 bits do not hold.
std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{}) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

struct Meminfo {
    std::optional<std::uint64_t> total;
    std::optional<std::uint64_t> free;
    std::optional<std::uint64_t> available;
    std::uint64_t buffers = 0;
    std::uint64_t cached = 0;
    std::uint64_t shared = 0;
    std::uint64_t reclaimable = 0;
    std::uint64_t unevictable = 0;
    std::uint64_t unreclaimable = 0;
    std::uint64_t kernelStack = 0;
    std::uint64_t pageTables = 0;
    std::uint64_t perProcessor = 0;
    std::uint64_t hugePages = 0;
    std::uint64_t compressedPool = 0;
};

Meminfo parseMeminfo(std::string_view text) {
    Meminfo info;
    const std::array<std::pair<std::string_view, std::optional<std::uint64_t>*>, 3> vital{
        {{"MemTotal", &info.total}, {"MemFree", &info.free}, {"MemAvailable", &info.available}}};
    const std::array<std::pair<std::string_view, std::uint64_t*>, 11> others{{{"Buffers", &info.buffers},
                                                                              {"Cached", &info.cached},
                                                                              {"Shmem", &info.shared},
                                                                              {"SReclaimable", &info.reclaimable},
                                                                              {"Unevictable", &info.unevictable},
                                                                              {"SUnreclaim", &info.unreclaimable},
                                                                              {"KernelStack", &info.kernelStack},
                                                                              {"PageTables", &info.pageTables},
                                                                              {"Percpu", &info.perProcessor},
                                                                              {"Hugetlb", &info.hugePages},
                                                                              {"Zswap", &info.compressedPool}}};
    while (!text.empty()) {
        std::string_view line = takeLine(text);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) {
            continue;
        }
        const std::string_view key = line.substr(0, colon);
        line.remove_prefix(colon + 1);
        const std::optional<std::uint64_t> value = takeNumber(line);
        if (!value) {
            continue;
        }
        for (const auto& [name, field] : vital) {
            if (key == name) {
                *field = value;
            }
        }
        for (const auto& [name, field] : others) {
            if (key == name) {
                *field = *value;
            }
        }
    }
    return info;
}

std::uint64_t difference(std::uint64_t from, std::uint64_t what) {
    return from - std::min(from, what);
}

// Kernels before 3.14 do not estimate it themselves.
std::uint64_t estimatedAvailable(const Meminfo& info) {
    return *info.free + difference(info.buffers + info.cached + info.reclaimable, info.shared);
}

}  // namespace

std::optional<MemoryPages> memory(std::string_view meminfo) {
    const Meminfo info = parseMeminfo(meminfo);
    if (!info.total || !info.free) {
        return std::nullopt;
    }
    const std::uint64_t available = std::min(info.available.value_or(estimatedAvailable(info)), *info.total);
    MemoryPages pages;
    pages.pageSize = 1024;
    // The kernel holds some free pages back, so MemAvailable may even be below MemFree.
    pages.free = std::min(*info.free, available);
    pages.inactive = available - pages.free;
    std::uint64_t used = *info.total - available;
    const auto take = [&used](std::uint64_t wanted) {
        const std::uint64_t taken = std::min(wanted, used);
        used -= taken;
        return taken;
    };
    pages.compressed = take(info.compressedPool);
    for (const std::uint64_t part :
         {info.unevictable, info.unreclaimable, info.kernelStack, info.pageTables, info.perProcessor, info.hugePages}) {
        pages.wired += take(part);
    }
    pages.active = used;
    return pages;
}

std::optional<CpuTicks> cpuTicks(std::string_view stat) {
    std::string_view line = takeLine(stat);
    if (line.substr(0, 4) != "cpu ") {
        return std::nullopt;
    }
    line.remove_prefix(4);
    // user, nice, system, idle, iowait, irq, softirq, steal; the last four came one after the other with Linux 2.6.
    std::array<double, 8> ticks{};
    std::size_t count = 0;
    while (count < ticks.size()) {
        const std::optional<std::uint64_t> value = takeNumber(line);
        if (!value) {
            break;
        }
        ticks.at(count++) = static_cast<double>(*value);
    }
    if (count < 4 || (count < ticks.size() && line.find_first_not_of(" \t") != std::string_view::npos)) {
        return std::nullopt;
    }
    return CpuTicks{ticks[0], ticks[2] + ticks[5] + ticks[6] + ticks[7], ticks[3] + ticks[4], ticks[1]};
}

std::optional<std::int64_t> bootTime(std::string_view stat) {
    constexpr std::string_view key = "btime ";
    while (!stat.empty()) {
        std::string_view line = takeLine(stat);
        if (line.substr(0, key.size()) != key) {
            continue;
        }
        line.remove_prefix(key.size());
        const std::optional<std::uint64_t> seconds = takeNumber(line);
        if (!seconds || !std::in_range<std::int64_t>(*seconds)) {
            return std::nullopt;
        }
        return static_cast<std::int64_t>(*seconds);
    }
    return std::nullopt;
}

std::optional<std::uint64_t> number(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
        text.remove_suffix(1);
    }
    const bool isHexadecimal = text.substr(0, 2) == "0x";
    if (isHexadecimal) {
        text.remove_prefix(2);
    }
    return wholeNumber<std::uint64_t>(text, isHexadecimal ? 16 : 10);
}

}  // namespace kestrune::LinuxProcText
