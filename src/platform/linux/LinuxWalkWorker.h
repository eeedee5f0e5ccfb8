#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/WalkChildren.h"
#include "platform/WalkLimits.h"
#include "platform/WalkReporter.h"
#include "platform/WalkTally.h"
#include "platform/linux/LinuxDirectoryReader.h"
#include "platform/linux/LinuxWalkJobs.h"
#include "platform/linux/LinuxWalkPath.h"

namespace kestrune {

/// What the workers of one walk share.
struct LinuxWalkParts {
    WalkLimits& limits;
    WalkChildren& children;
    WalkReporter& reporter;
    LinuxWalkJobs& jobs;
    std::uint64_t mount = 0;  ///< the one the walk stays on
};

/// One thread of a walk. Depth first: a folder is listed whole, its sub-folders wait by name, and a folder whose last
/// sub-folder is being visited is given up, so that a chain of folders, however long, needs two descriptors. One
/// thread.
class LinuxWalkWorker final {
public:
    /// Descriptors that one worker holds at most, with the job it is about to hand on.
    static constexpr std::size_t descriptorsAtMost = 7;

    /// What the parts refer to and the tally outlive this. Once the walk proves worth it, so many helpers may start.
    LinuxWalkWorker(const LinuxWalkParts& parts, WalkTally& tally, std::size_t helpers)
        : m_parts(parts), m_tally(tally), m_helpers(helpers) {}

    /// Does the job and then others until none is left. Out of memory ends the program: the other workers would wait
    /// for this one for ever.
    void run(LinuxWalkJob job) noexcept;

    /// Whether the root of the walk could not be listed.
    [[nodiscard]] bool rootFailed() const { return m_rootFailed; }

private:
    void begin(LinuxWalkJob job);
    void list();
    template <class Entries>
    bool lookAt(Entries& entries);
    void take(const DirectoryRecord& record);
    void look(const char* name);
    void addFile(const char* name, std::uint64_t blocks);
    void endBatch(std::size_t entries);
    void keepWaiting();
    [[nodiscard]] bool goesOn();
    [[nodiscard]] bool enterNext();

    template <class Entries>
    void shareWhileLooking(Entries& entries);
    [[nodiscard]] bool shareBranch(bool keepInnermost);
    template <class Entries>
    void shareEntries(Entries& entries);
    [[nodiscard]] LinuxWalkJob jobAt(LinuxWalkPlace place, LinuxWalkJob::Kind kind, std::string names) const;

    const LinuxWalkParts m_parts;
    WalkTally& m_tally;
    std::size_t m_helpers;
    LinuxDirectoryReader m_reader{LinuxDirectoryReader::mediumBuffer};
    LinuxWalkPlace m_here;
    LinuxWalkPath m_above{descriptorsAtMost - 2};  ///< the others: m_here and the next, or a half that is cut off
    std::string m_path;                            ///< of m_here below the root
    std::string m_waiting;                         ///< sub-folders found in m_here so far, each closed by a NUL
    std::shared_ptr<WalkChild> m_child;
    WalkChildFiles m_childFiles;
    std::int64_t m_batchFiles = 0;
    std::int64_t m_batchBytes = 0;
    bool m_hasAsked = false;  ///< whether to go on, since the last folder was entered
    bool m_rootFailed = false;
};

}  // namespace kestrune
