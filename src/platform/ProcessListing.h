#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kestrune {

/// One process as the system lists it.
struct ProcessRecord {
    std::int32_t pid = 0;
    std::int64_t residentKilobytes = 0;
    std::string cpu;              ///< processor share in percent as the system's listing prints it: "12.5"
    std::string command;          ///< path of the executable where the system tells, else its short name; raw bytes
    std::uint64_t startTime = 0;  ///< in the system's own unit, tells two holders of one pid apart; 0: not told

    bool operator==(const ProcessRecord&) const = default;
};

/// Endpoints as the port tool prints them ("*:3000", "127.0.0.1:8080", "[::1]:5173"), sorted, each once, by process.
using ListeningPorts = std::map<std::int32_t, std::vector<std::string>>;

struct ProcessSnapshot {
    std::vector<ProcessRecord> processes;  ///< in the order of the system's listing
    ListeningPorts listeners;              ///< listening TCP sockets

    bool operator==(const ProcessSnapshot&) const = default;
};

/// The processes of the user who runs this program, and who listens on which port.
class ProcessListing {
public:
    ProcessListing() = default;
    ProcessListing(const ProcessListing&) = delete;
    ProcessListing& operator=(const ProcessListing&) = delete;
    virtual ~ProcessListing() = default;

    /// What runs now. What cannot be read is left out. Blocks (65.5 s at most, where tools must be run); one thread at
    /// a time, not the main one.
    [[nodiscard]] virtual ProcessSnapshot snapshot() = 0;
};

}  // namespace kestrune
