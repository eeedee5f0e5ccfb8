#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/RunningApplications.h"

namespace kestrune {

/// One running application or developer process.
struct RunningItem {
    std::int32_t id = 0;  ///< process identifier
    std::string name;
    std::string executable;  ///< as the listing prints it; raw bytes
    std::int64_t memoryMB = 0;
    std::string cpu;                        ///< percent as the listing prints it
    std::optional<RunningApplication> app;  ///< nothing for a process that is no regular application
    std::vector<std::string> listeners;     ///< listening TCP endpoints, sorted
    std::uint64_t startTime = 0;            ///< with id: the very process; 0 where the system does not say

    bool operator==(const RunningItem&) const = default;
};

}  // namespace kestrune
