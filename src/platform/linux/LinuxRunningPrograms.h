#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/RunningPrograms.h"
#include "platform/linux/ApplicationNames.h"

namespace kestrune {

/// Applications and tools among this user's processes, by name, each name once; this program itself is left out. It
/// looks at processes rather than windows, so it sees the same on every desktop, in a terminal and without a display.
/// The .desktop files are read again when one of their folders changes. Main thread.
class LinuxRunningPrograms final : public RunningPrograms {
public:
    /// applicationFolders holds the folders with .desktop files, the user's own first.
    LinuxRunningPrograms(std::string procRoot, std::vector<std::string> applicationFolders);

    /// The folders of the XDG Base Directory Specification and of the package runners, for a home folder.
    [[nodiscard]] static std::vector<std::string> standardApplicationFolders(const std::string& home);

    [[nodiscard]] std::vector<std::string> names() override;

private:
    void readEntriesWhenChanged();

    std::string m_procRoot;
    std::vector<std::string> m_folders;
    std::vector<std::int64_t> m_folderTimes;  ///< nanoseconds, as of the last reading; empty before the first
    ApplicationNames m_names;
};

}  // namespace kestrune
