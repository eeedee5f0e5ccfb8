#pragma once

#include <string>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// Sees what happens to names in two folders, from its making on (inotify(7)): after a rename between them it tells
/// what no look at the names can tell, whether what has the new name is what had the old one. One thread.
class LinuxMoveWatch final {
public:
    LinuxMoveWatch(int fromFolder, int toFolder);

    /// Whether the last thing that happened to the name "to" is that "from" was renamed to it. False also when that was
    /// not seen.
    [[nodiscard]] bool cameStraight(const std::string& from, const std::string& to);

private:
    [[nodiscard]] int watch(int folder) const;

    const LinuxFileDescriptor m_events;
    const int m_from;
    const int m_to;
};

}  // namespace kestrune
