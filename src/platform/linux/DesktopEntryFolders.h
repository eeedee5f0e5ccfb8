#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/DesktopEntry.h"

namespace kestrune {

/// The .desktop files of some folders. When one of the folders changes, its files that changed are read again. Files in
/// folders below them are not looked at. Anybody may have written the files: 4,096 of them are known at most, of each
/// its first 256 KiB, no more are read once a refresh has read 16 MiB, and only regular files are opened. One thread at
/// a time.
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
    /// Tells whether a file is still the one that was read.
    struct Stamp {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t changed = 0;  ///< nanoseconds
        std::int64_t size = 0;

        bool operator==(const Stamp&) const = default;
    };

    struct File {
        Stamp stamp;
        std::optional<DesktopEntry> entry;  ///< nothing for a file that holds none
    };

    using Files = std::map<std::string, File>;  ///< by path

    [[nodiscard]] static std::optional<Stamp> stampOf(const std::string& path);
    [[nodiscard]] std::optional<File> read(const std::string& path, const Stamp& stamp, std::size_t& bytesLeft) const;

    std::vector<std::string> m_folders;
    std::vector<std::string> m_languages;
    std::vector<std::int64_t> m_times;  ///< of change, nanoseconds, as of the last reading; empty before the first
    Files m_files;                      ///< as of the last reading
    std::vector<DesktopEntry> m_entries;
};

}  // namespace kestrune
