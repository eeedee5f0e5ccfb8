#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/HostStatistics.h"

/// What the kernel writes into /proc and /sys, as pure functions. docs/figures.md says why the figures are composed
/// this way. Any thread.
namespace kestrune::LinuxProcText {

/// Reads /proc/meminfo. The classes add up to MemTotal, and everything but MemAvailable is in use. Sizes are in pages
/// of 1024 bytes, the unit of the file. Nothing without MemTotal and MemFree.
[[nodiscard]] std::optional<MemoryPages> memory(std::string_view meminfo);

/// Reads the first line of /proc/stat. Waiting for a disk is idle time; interrupts and time that a hypervisor took
/// are system time; guest time is part of user time already.
[[nodiscard]] std::optional<CpuTicks> cpuTicks(std::string_view stat);

/// Reads the "btime" line of /proc/stat.
[[nodiscard]] std::optional<std::int64_t> bootTime(std::string_view stat);

/// A file that holds one number, decimal or with the prefix "0x", and perhaps a line end.
[[nodiscard]] std::optional<std::uint64_t> number(std::string_view text);

}  // namespace kestrune::LinuxProcText
