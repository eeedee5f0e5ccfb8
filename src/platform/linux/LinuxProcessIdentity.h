#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/LinuxFileDescriptor.h"

/// Which process a number stands for, as /proc tells. Whoever lists processes and whoever ends them ask here, so that
/// both call one process by one name.
///
/// A folder is the opened directory of one process. It belongs to that process for good: once the process is gone,
/// reading through it fails, whoever has the number by then. Any thread.
namespace kestrune::LinuxProcessIdentity {

/// What the line in the file "stat" of a process says.
struct Stat {
    std::string name;  ///< at most 15 bytes for programs, and any the program chose, line ends and ")" included
    char state = '?';  ///< 'R', 'S', 'D', 'T', 'Z' ...
    std::uint64_t processorTicks = 0;  ///< in user and system mode together, in clock ticks
    std::uint64_t startTime = 0;       ///< in clock ticks after the machine was booted
    std::int64_t residentPages = 0;
    std::int32_t parent = 0;   ///< the process that started it, or took it over; 0: none
    std::int32_t threads = 1;  ///< the first one included, also when it ended before the others

    bool operator==(const Stat&) const = default;
};

/// True for a process that only waits to be reaped. One whose first thread ended before the others runs on.
[[nodiscard]] bool hasEnded(const Stat& stat);

/// Nothing when text is not such a line up to its resident pages.
[[nodiscard]] std::optional<Stat> parseStat(std::string_view text);

/// The real owner's number in the file "status" of a process.
[[nodiscard]] std::optional<std::uint32_t> parseRealOwner(std::string_view status);

/// The folder of process pid; owns nothing when there is no such process.
[[nodiscard]] LinuxFileDescriptor openFolder(std::int32_t pid, const std::string& procRoot = "/proc");

[[nodiscard]] std::optional<Stat> statOf(int folder);

/// In clock ticks after the machine was booted. Together with the number it stays the same process for good.
[[nodiscard]] std::optional<std::uint64_t> startTimeOf(int folder);

[[nodiscard]] std::optional<std::uint32_t> realOwnerOf(int folder);

/// Path of the executable, whether or not its file was deleted or replaced since; nothing for a process that has none
/// (of the kernel, or ended) or does not show it.
[[nodiscard]] std::optional<std::string> executableOf(int folder);

/// Path of the working folder, also when it was deleted since; nothing when the process does not show it.
[[nodiscard]] std::optional<std::string> workingDirectoryOf(int folder);

/// What a listing calls the process: its executable, else its name.
[[nodiscard]] std::optional<std::string> commandOf(int folder);

}  // namespace kestrune::LinuxProcessIdentity
