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
/// at the next thorough refresh, which looks through all that ran since they were last looked through. Processes whose
/// descriptors this user may not read hold nothing here. One thread at a time.
class LinuxSocketOwners final {
public:
    struct Holder {
        std::int32_t pid = 0;
        std::int32_t descriptor = 0;
        std::uint64_t inode = 0;

        bool operator==(const Holder&) const = default;
    };

    struct Question {
        int procFolder = -1;                          ///< the opened /proc
        const std::vector<std::uint64_t>& inodes;     ///< of the sockets that listen now, sorted
        const std::vector<ProcessRecord>& processes;  ///< that run now, ordered by pid
        const std::vector<std::int32_t>& active;      ///< those that may have run since the last refresh, ordered
        bool isThorough = false;
    };

    /// Brings the holders up to date.
    void refresh(const Question& question);

    /// Ordered by pid; a process that holds one socket through several descriptors counts once.
    [[nodiscard]] const std::vector<Holder>& holders() const { return m_holders; }

private:
    /// pid and start time.
    using Process = std::pair<std::int32_t, std::uint64_t>;

    /// Drops the holders that are none any more and answers the processes to look through, ordered.
    [[nodiscard]] std::vector<std::int32_t> recheck(const Question& question, const std::vector<Process>& now);
    void lookThrough(const Question& question, const std::vector<std::int32_t>& pids);
    void lookThrough(const Question& question, std::int32_t pid);

    /// Goes through the numbers from 0 on, which is half the work of listing them where there are many in a row. False
    /// when that is not so.
    [[nodiscard]] bool countThrough(int folder, std::int32_t pid, const std::vector<std::uint64_t>& inodes);
    void note(const Holder& holder, const std::vector<std::uint64_t>& inodes);
    void sortHolders();
    [[nodiscard]] std::vector<std::uint64_t> heldInodes() const;

    std::vector<Holder> m_holders;
    std::vector<std::int32_t> m_unsure;   ///< ran since they were last looked through, ordered
    std::vector<Process> m_processes;     ///< as of the last refresh, sorted
    std::vector<std::uint64_t> m_inodes;  ///< as of the last refresh, sorted
    LinuxDirectoryReader m_reader{LinuxDirectoryReader::smallBuffer};
};

}  // namespace kestrune
