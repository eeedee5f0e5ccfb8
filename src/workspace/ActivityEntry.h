#pragma once

#include <optional>
#include <string>

#include "base/Clock.h"

namespace kestrune {

/// One line of the activity log.
struct ActivityEntry {
    std::string id;  ///< a random UUID (RFC 4122, version 4) in canonical upper-case text
    WallTime date;
    std::string title;
    std::string detail;
    std::optional<std::string> trashPath;  ///< where a moved item lies in the Trash
    bool failed = false;

    bool operator==(const ActivityEntry&) const = default;
};

/// A new random identifier.
[[nodiscard]] std::string makeActivityId();

}  // namespace kestrune
