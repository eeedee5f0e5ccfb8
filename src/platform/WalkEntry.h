#pragma once

#include <cstdint>

namespace kestrune {

/// What a walk does with an entry of a folder.
enum class WalkEntryKind {
    folder,      ///< visited
    file,        ///< regular: measured
    link,        ///< seen, not followed
    elsewhere,   ///< on another file system: seen, not entered
    unreadable,  ///< nobody knows what it is
    other        ///< FIFOs, sockets and devices hold nothing of their own
};

struct WalkEntry {
    WalkEntryKind kind = WalkEntryKind::other;
    std::int64_t bytes = 0;  ///< allocated, of a file

    bool operator==(const WalkEntry&) const = default;
};

}  // namespace kestrune
