#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Figures of one process out of the text of /proc, as pure functions. Any thread.
namespace kestrune::LinuxProcessFigures {

/// Reads the first number of /proc/uptime, in clock ticks after the machine was booted.
[[nodiscard]] std::optional<std::uint64_t> ticksSinceBoot(std::string_view uptime, std::uint64_t ticksPerSecond);

/// Reads the resident pages, the second number of "statm": it is exact, where "stat" tells the kernel's estimate.
[[nodiscard]] std::optional<std::int64_t> residentPages(std::string_view statm);

/// Tells one program image from the next in the line of "stat": where the image lies in memory changes whenever the
/// process begins to run another one, while pid and start time stay. 0: not told, because this user may not look into
/// the process or it has no image.
[[nodiscard]] std::uint64_t imageMark(std::string_view stat);

/// Percent of one processor since the process was started, as ps(1) prints it ("0.0", "12.5", "400").
[[nodiscard]] std::string processorShare(std::uint64_t processorTicks, std::uint64_t startTime,
                                         std::uint64_t ticksSinceBoot, std::uint64_t ticksPerSecond);

}  // namespace kestrune::LinuxProcessFigures
