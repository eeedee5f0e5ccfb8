#pragma once

#include <string>
#include <vector>

#include "platform/RunningPrograms.h"
#include "platform/linux/ApplicationNames.h"
#include "platform/linux/DesktopEntryFolders.h"

namespace kestrune {

/// Applications and tools among this user's processes, by name, each name once; this program itself is left out. It
/// looks at processes rather than windows, so it sees the same on every desktop, in a terminal and without a display.
/// The .desktop files are read again when one of their folders changes. Main thread.
class LinuxRunningPrograms final : public RunningPrograms {
public:
    /// applicationFolders holds the folders with .desktop files, the user's own first.
    LinuxRunningPrograms(std::string procRoot, std::vector<std::string> applicationFolders);

    [[nodiscard]] std::vector<std::string> names() override;

private:
    std::string m_procRoot;
    DesktopEntryFolders m_folders;
    ApplicationNames m_names;
};

}  // namespace kestrune
