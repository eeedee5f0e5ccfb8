#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune {

/// One running application or developer process.
struct RunningItem {
    std::int32_t id = 0;  ///< process identifier
    std::string name;
    std::string executable;
    std::int64_t memoryMB = 0;
    std::string cpu;
    std::vector<std::string> listeners;

    bool operator==(const RunningItem&) const = default;
};

}  // namespace kestrune
