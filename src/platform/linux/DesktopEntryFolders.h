#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/DesktopEntry.h"

namespace kestrune {

/// The .desktop files of some folders, read again when one of the folders changes. Files in folders below them are not
/// looked at. Anybody may have written the files: at most 10,000 of a folder are read, of each the first 256 KiB, and
/// only regular files are opened. One thread at a time.
class DesktopEntryFolders final {
public:
    /// folders, the user's own first. languages as parseDesktopEntry takes them.
    explicit DesktopEntryFolders(std::vector<std::string> folders, std::vector<std::string> languages = {});

    /// The folders of the XDG Base Directory Specification and of the package runners, for a home folder.
    [[nodiscard]] static std::vector<std::string> standard(const std::string& home);

    /// Looks for changes. True when entries() holds something new; everything, also what was taken before.
    [[nodiscard]] bool refresh();

    /// Each file id once: a file of an earlier folder stands in for those of the same name in later ones.
    [[nodiscard]] const std::vector<DesktopEntry>& entries() const { return m_entries; }

    /// The same, for who keeps them; entries() is empty until the next change.
    [[nodiscard]] std::vector<DesktopEntry> takeEntries() { return std::exchange(m_entries, {}); }

private:
    std::vector<std::string> m_folders;
    std::vector<std::string> m_languages;
    std::vector<std::int64_t> m_times;  ///< of change, nanoseconds, as of the last reading; empty before the first
    std::vector<DesktopEntry> m_entries;
};

}  // namespace kestrune
