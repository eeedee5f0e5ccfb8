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
/// A process whose processor clock stands still since the last refresh did not run, so its share of the processor, its
/// owners and its program image are what they were; only its memory is read, which the system takes away from sleepers
/// too. For one that ran, the image and its owners are read again when the image, the process or the effective owner
/// is another one, or when the process does not show its image. A thorough refresh reads them of all that ran, and the
/// executables of the others, which may have been renamed. One thread at a time.
class LinuxProcessTable final {
public:
    LinuxProcessTable(std::uint32_t user, std::uint64_t ticksPerSecond, std::int64_t kilobytesPerPage)
        : m_user(user), m_ticksPerSecond(ticksPerSecond), m_kilobytesPerPage(kilobytesPerPage) {}

    /// What runs now, ordered by pid; procFolder is the opened /proc.
    [[nodiscard]] std::vector<ProcessRecord> refresh(int procFolder, bool isThorough);

    /// Those of the last refresh that were new, or may have run since the one before; ordered.
    [[nodiscard]] const std::vector<std::int32_t>& active() const { return m_active; }

private:
    struct Entry {
        std::int32_t pid = 0;
        std::uint64_t folderInode = 0;  ///< of its folder in /proc, which another process with this pid does not get
        std::uint32_t effectiveUser = 0;
        bool isUsers = false;              ///< whether the real owner is the user
        bool ran = true;                   ///< whether it may have run since the refresh before
        std::int64_t processorClock = -1;  ///< nanoseconds of processor time; -1: not told
        std::uint64_t processorTicks = 0;
        std::uint64_t imageMark = 0;  ///< see LinuxProcessFigures
        ProcessRecord record;         ///< when it is the user's
    };

    /// Of all processes, only pid and folderInode told.
    [[nodiscard]] std::vector<Entry> listEntries(int procFolder);

    /// Tells all of entry; false when the process is gone.
    [[nodiscard]] bool learn(int procFolder, Entry& entry);

    /// Brings up to date what was known of entry; false when it does not hold any more.
    [[nodiscard]] bool update(int procFolder, Entry& entry, bool isThorough);

    [[nodiscard]] bool updateActive(int procFolder, Entry& entry);
    [[nodiscard]] bool takeFigures(Entry& entry, std::string_view statm) const;
    [[nodiscard]] std::int64_t processorClockOf(std::int32_t pid) const;
    [[nodiscard]] std::string_view contentOf(int folder, const char* path);

    const std::uint32_t m_user;
    const std::uint64_t m_ticksPerSecond;
    const std::int64_t m_kilobytesPerPage;
    std::uint64_t m_ticksSinceBoot = 0;
    bool m_hasClocks = false;  ///< whether the numbers in /proc are those that the system's clocks are asked by
    std::vector<std::int32_t> m_active;
    std::vector<Entry> m_entries;  ///< of all users' processes, ordered by pid
    LinuxDirectoryReader m_reader{LinuxDirectoryReader::smallBuffer};
    std::string m_buffer;
};

}  // namespace kestrune
