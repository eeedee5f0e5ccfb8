#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrune {

/// The process a listing showed: all of it must still hold when something is done to that process.
struct ProcessReference {
    std::int32_t pid = 0;
    std::string command;          ///< as ProcessRecord::command
    std::uint64_t startTime = 0;  ///< as ProcessRecord::startTime; 0: not checked

    bool operator==(const ProcessReference&) const = default;
};

/// What else a person wants to know before ending a process.
struct ProcessDetails {
    std::string workingDirectory;                ///< raw bytes; empty when unknown
    std::optional<std::int64_t> secondsRunning;  ///< since it was started

    bool operator==(const ProcessDetails&) const = default;
};

/// Acts on single processes of this user.
class ProcessControl {
public:
    ProcessControl() = default;
    ProcessControl(const ProcessControl&) = delete;
    ProcessControl& operator=(const ProcessControl&) = delete;
    virtual ~ProcessControl() = default;

    /// Sends SIGTERM to process, if it belongs to this user and is still the one meant. True when the signal was
    /// delivered. A pid below 2 is refused without a look. Blocks; a work queue's thread.
    [[nodiscard]] virtual bool requestTermination(const ProcessReference& process) = 0;

    /// Nothing when the system does not say or process is another one by now. Does not block; any thread.
    [[nodiscard]] virtual std::optional<ProcessDetails> details(const ProcessReference& process) = 0;
};

}  // namespace kestrune
