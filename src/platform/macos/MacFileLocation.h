#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/macos/MacFileDescriptor.h"

namespace kestrune {

/// A file by its open folder and its name in it; the file itself may be missing.
struct MacFileLocation {
    MacFileDescriptor folder;
    std::string name;
};

/// Makes the folders missing on the way to a file, each with mode 0700 and synced into its parent, and removes those it
/// made when it goes away without keep(). One thread.
class MacMissingFolders final {
public:
    /// path is the file's; see made() for how it went.
    explicit MacMissingFolders(const std::string& path);
    MacMissingFolders(const MacMissingFolders&) = delete;
    MacMissingFolders& operator=(const MacMissingFolders&) = delete;
    ~MacMissingFolders();

    [[nodiscard]] bool made() const { return m_made; }

    void keep() { m_created.clear(); }

private:
    [[nodiscard]] bool make(const std::string& folder);

    std::vector<std::string> m_created;
    bool m_made = false;
};

/// Opens the folder that holds path; nothing when it cannot be opened or path names no file. Any thread.
[[nodiscard]] std::optional<MacFileLocation> locate(const std::string& path);

/// The regular file that stands, or may be made, at path: the location itself, or where the user's own link leads.
/// Nothing for any other link and for what is not a regular file. Any thread.
[[nodiscard]] std::optional<MacFileLocation> locateReplaceable(const std::string& path);

/// Puts what was written on the disk itself: F_FULLFSYNC of fcntl(2), because fsync(2) leaves it in the drive's cache;
/// fsync(2) where the file system does not know the former. One that can sync neither way (a folder on some network
/// volumes) counts as synced. Any thread.
[[nodiscard]] bool synced(int descriptor);

}  // namespace kestrune
