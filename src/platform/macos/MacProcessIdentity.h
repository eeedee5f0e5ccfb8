#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

/// Which process a number stands for, as the kernel tells. A start time is in microseconds since 1970: together with
/// the number it stays the same process for good. Any thread.
namespace kestrune::MacProcessIdentity {

struct Identity {
    std::uint64_t startTime = 0;
    std::uint32_t owner = 0;  ///< the effective user's number
    std::string executable;   ///< its path with links resolved; empty when the system does not show it

    bool operator==(const Identity&) const = default;
};

/// Nothing when there is no such process, it has ended and only waits to be reaped, or another one took its number
/// while it was looked at.
[[nodiscard]] std::optional<Identity> of(std::int32_t pid);

/// The start times of all processes of this effective user, by number, all from one moment. Empty when the system does
/// not say.
[[nodiscard]] std::unordered_map<std::int32_t, std::uint64_t> startTimesOfUser(std::uint32_t user);

/// Path of the working folder; nothing when the process does not show it.
[[nodiscard]] std::optional<std::string> workingDirectoryOf(std::int32_t pid);

}  // namespace kestrune::MacProcessIdentity
