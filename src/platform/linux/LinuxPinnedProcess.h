#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// One process, held by a descriptor: everything read and every signal sent through it concerns that very process,
/// whoever gets its number once it has ended. Look first, then signal: a signal that was delivered proves that the
/// look was at the same process. Any thread.
class LinuxPinnedProcess final {
public:
    /// Nothing for numbers below 2 (without asking the kernel), when there is no such process, and on kernels that
    /// cannot hold a process by descriptor: ending one by its number alone is never safe.
    [[nodiscard]] static std::optional<LinuxPinnedProcess> open(std::int32_t pid);

    /// True once it has ended, reaped or not.
    [[nodiscard]] bool hasEnded() const;

    /// True while it runs and started then (in clock ticks after the machine was booted).
    [[nodiscard]] bool startedAt(std::uint64_t startTime) const;

    /// True while it runs, started then (0: whenever) and a listing calls it command. One that runs another program
    /// by now is not the same.
    [[nodiscard]] bool isSame(std::uint64_t startTime, const std::string& command) const;

    /// The real owner's number; nothing once it has ended.
    [[nodiscard]] std::optional<std::uint32_t> realOwner() const;

    /// True when the kernel delivered the signal; false when the process has ended or may not be signalled.
    [[nodiscard]] bool send(int signal) const;

    /// Its directory in /proc.
    [[nodiscard]] int folder() const { return m_folder.get(); }

private:
    LinuxPinnedProcess(LinuxFileDescriptor process, LinuxFileDescriptor folder)
        : m_process(std::move(process)), m_folder(std::move(folder)) {}

    LinuxFileDescriptor m_process;
    LinuxFileDescriptor m_folder;
};

}  // namespace kestrune
