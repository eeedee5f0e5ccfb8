#pragma once

#include <string>
#include <vector>

namespace kestrune {

/// What /proc tells about one process.
struct ProcessFacts {
    std::string executable;              ///< its path, whether or not its file was deleted since; empty when unknown
    std::vector<std::string> arguments;  ///< with the program name first
    std::string workingFolder;           ///< of an interpreter only; empty when unknown

    bool operator==(const ProcessFacts&) const = default;
};

/// Reads the folder of a process in /proc; what cannot be read is empty.
[[nodiscard]] ProcessFacts readProcessFacts(const std::string& folder);

}  // namespace kestrune
