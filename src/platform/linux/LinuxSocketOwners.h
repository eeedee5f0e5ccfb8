#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "platform/ProcessListing.h"
#include "platform/linux/LinuxDirectoryReader.h"

namespace kestrune {

/// Which of this user's processes hold which listening socket, known by the inode. A socket may have several holders
/// (a server and the workers it forked), and its owner's number says nothing about them.
///
/// The descriptors of a process are looked through when it is new. Later each descriptor that was found is looked at
/// alone, and not even that while its process does not run; when one is not there any more, its process is looked
/// through again. All processes are looked through when a socket is new or has lost its last holder. What this misses
/// is a socket handed to a process that was known already while another keeps it (SCM_RIGHTS, pidfd_getfd(2)): it shows
/// when everything is next looked at anew. Processes whose descriptors this user may not read hold nothing here. One
/// thread at a time.
class LinuxSocketOwners final {
public:
    struct Holder {
        std::int32_t pid = 0;
        std::int32_t descriptor = 0;
        std::uint64_t inode = 0;

        bool operator==(const Holder&) const = default;
    };

    /// Brings the holders up to date: inodes are those of the sockets that listen now, sorted; processes are ordered by
    /// pid; active are those that may have run since the last refresh, sorted; procFolder is the opened /proc.
    void refresh(int procFolder, const std::vector<std::uint64_t>& inodes, const std::vector<ProcessRecord>& processes,
                 const std::vector<std::int32_t>& active);

    /// Lets nothing that is known be relied on at the next refresh.
    void forget();

    /// Ordered by pid; a process that holds one socket through several descriptors counts once.
    [[nodiscard]] const std::vector<Holder>& holders() const { return m_holders; }

private:
    /// pid and start time.
    using Process = std::pair<std::int32_t, std::uint64_t>;

    /// Drops the holders that are none any more and answers the processes to look through, ordered.
    [[nodiscard]] std::vector<std::int32_t> recheck(int procFolder, const std::vector<std::uint64_t>& inodes,
                                                    const std::vector<Process>& processes,
                                                    const std::vector<std::int32_t>& active);
    void lookThrough(int procFolder, std::int32_t pid, const std::vector<std::uint64_t>& inodes);

    /// Goes through the numbers from 0 on, which is half the work of listing them where there are many in a row. False
    /// when that is not so.
    [[nodiscard]] bool countThrough(int folder, std::int32_t pid, const std::vector<std::uint64_t>& inodes);
    void note(const Holder& holder, const std::vector<std::uint64_t>& inodes);
    void sortHolders();
    [[nodiscard]] std::vector<std::uint64_t> heldInodes() const;

    std::vector<Holder> m_holders;
    std::vector<Process> m_processes;     ///< as of the last refresh, sorted
    std::vector<std::uint64_t> m_inodes;  ///< as of the last refresh, sorted
    LinuxDirectoryReader m_reader;
};

}  // namespace kestrune
