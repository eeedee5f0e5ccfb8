#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ProcessListing.h"
#include "platform/linux/LinuxDirectoryReader.h"

namespace kestrune {

/// The processes whose real owner is one user, read from /proc; what `ps -U` lists, with the figures it prints.
///
/// Figures are read at every refresh. What stays as long as a process runs one program image (its owner, its
/// executable) is read again when the image, the process or the effective owner is another one, when a process does not
/// show its image, and when everything is looked at anew; the last also covers an executable that was renamed while it
/// runs. One thread at a time.
class LinuxProcessTable final {
public:
    LinuxProcessTable(std::uint32_t user, std::uint64_t ticksPerSecond, std::int64_t kilobytesPerPage)
        : m_user(user), m_ticksPerSecond(ticksPerSecond), m_kilobytesPerPage(kilobytesPerPage) {}

    /// What runs now, ordered by pid; procFolder is the opened /proc. With anew nothing that was known is relied on.
    [[nodiscard]] std::vector<ProcessRecord> refresh(int procFolder, bool anew);

private:
    struct Entry {
        std::int32_t pid = 0;
        std::uint64_t folderInode = 0;  ///< of its folder in /proc, which another process with this pid does not get
        std::uint32_t effectiveUser = 0;
        bool isUsers = false;         ///< whether the real owner is the user
        std::uint64_t imageMark = 0;  ///< see LinuxProcessFigures
        ProcessRecord record;         ///< when it is the user's
    };

    /// Of all processes, only pid and folderInode told.
    [[nodiscard]] std::vector<Entry> listEntries(int procFolder);

    /// Tells all of entry; false when the process is gone.
    [[nodiscard]] bool learn(int procFolder, Entry& entry);

    /// Brings up to date what was known of entry; false when it does not hold any more.
    [[nodiscard]] bool update(int procFolder, Entry& entry);

    [[nodiscard]] bool takeFigures(Entry& entry, std::uint64_t processorTicks, std::string_view statm) const;
    [[nodiscard]] std::string_view contentOf(int folder, const char* path);

    const std::uint32_t m_user;
    const std::uint64_t m_ticksPerSecond;
    const std::int64_t m_kilobytesPerPage;
    std::uint64_t m_ticksSinceBoot = 0;
    std::vector<Entry> m_entries;  ///< of all users' processes, ordered by pid
    LinuxDirectoryReader m_reader;
    std::string m_buffer;
};

}  // namespace kestrune
