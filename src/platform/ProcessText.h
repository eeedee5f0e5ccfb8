#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ProcessListing.h"

/// What the process and port tools print, as pure functions. Names are raw bytes: one that is no text, or pretends to
/// be a line of its own, spoils its own row only. Lines end at "\n" or "\r\n". Any thread.
namespace kestrune::ProcessText {

/// Owner and command of one process.
struct Owner {
    std::uint32_t user = 0;
    std::string command;

    bool operator==(const Owner&) const = default;
};

/// Reads lines of pid, resident kilobytes, percent of processor time and command, which keeps the blanks inside it.
/// Lines that lack a field, or whose first two are no decimal numbers, are left out.
[[nodiscard]] std::vector<ProcessRecord> processes(std::string_view listing);

/// Reads the port tool's field format: "p" and a pid, then the endpoints of that process, each after "n". Other fields
/// are passed over; a "p" without a number makes the endpoints after it nobody's.
[[nodiscard]] ListeningPorts listeningPorts(std::string_view listing);

/// Reads the owner's number and, after the first run of white space, the command with all of its own. Nothing when
/// either is missing.
[[nodiscard]] std::optional<Owner> owner(std::string_view line);

}  // namespace kestrune::ProcessText
