#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/WalkChildren.h"
#include "platform/WalkEntry.h"
#include "platform/WalkJobs.h"
#include "platform/WalkLimits.h"
#include "platform/WalkPath.h"
#include "platform/WalkReporter.h"
#include "platform/WalkTally.h"

namespace kestrune {

/// Descriptors that one worker holds at most, with the job it is about to hand on.
constexpr std::size_t descriptorsOfWalkWorker = 7;

/// What the workers of one walk share.
template <class System>
struct WalkParts {
    WalkLimits& limits;
    WalkChildren& children;
    WalkReporter& reporter;
    WalkJobs<typename System::Folder>& jobs;
    System system;
};

/// One thread of a walk. Depth first: a folder is listed whole, its sub-folders wait by name, and a folder whose last
/// sub-folder is being visited is given up, so that a chain of folders, however long, needs two descriptors. One
/// thread.
///
/// System is what the operating systems differ in, a small value:
///     Folder        owns the descriptor of an open folder
///     Identity      by which a folder is recognised, given by identityOf(descriptor)
///     Record        an entry as it was listed; `name` lasts until the reader's next call
///     Reader        lists a folder: begin(descriptor); ready(n), how many of the next n entries can be taken;
///                   nextAhead(), one of them; bytesAhead(), what all of them take; failed(). makeReader() gives one
///     Listed        read like a Reader: entries that were listed on one thread and are looked at on another. Only
///                   where looksOneByOne: where a listing tells all about its entries there is nothing to share.
///     ThreadPolicy  held by each thread while it works
///     look(descriptor, record)         what the entry of the open folder is
///     openBelow(descriptor, path)      opens a folder for listing, no link followed; errno EXDEV: on another file
///     system openAgain(descriptor)            opens the same folder: no position is shared levelsAtOnce as many "../"
///     make a path the system takes
template <class System>
class WalkWorker final {
public:
    using Folder = typename System::Folder;
    using Job = WalkJob<Folder>;
    using Place = WalkPlace<Folder>;

    /// What the parts refer to and the tally outlive this. Once the walk proves worth it, so many helpers may start.
    WalkWorker(const WalkParts<System>& parts, WalkTally& tally, std::size_t helpers)
        : m_parts(parts), m_tally(tally), m_helpers(helpers), m_above(parts.system, descriptorsOfWalkWorker - 2) {}

    /// Does the job and then others until none is left. Out of memory ends the program: the other workers would wait
    /// for this one for ever.
    void run(Job job) noexcept {  // NOLINT(bugprone-exception-escape): that is the meaning
        std::optional<Job> next = std::move(job);
        while (next) {
            begin(std::move(*next));
            while (!m_above.isEmpty() && goesOn()) {
                if (enterNext()) {
                    list();
                }
            }
            if (m_parts.limits.isOver()) {
                m_parts.jobs.end();
            }
            m_above.clear();
            m_here.folder.reset();
            m_child.reset();
            next = m_parts.jobs.take();
        }
    }

    /// Whether the root of the walk could not be listed.
    [[nodiscard]] bool rootFailed() const { return m_rootFailed; }

private:
    // Between two questions whether to go on: short enough for a disk that takes milliseconds an entry.
    static constexpr std::size_t entriesOfBatch = 32;

    // A folder with fewer entries is measured before a thread has started.
    static constexpr std::int64_t entriesWorthHelpers = 128;

    // Less than this many bytes of records are not worth a hand-over.
    static constexpr std::size_t bytesWorthSharing = std::size_t{4} * 1024;

    void begin(Job job) {
        m_path = std::move(job.path);
        m_child = std::move(job.child);
        m_here = {std::move(job.folder), job.depth, m_path.size()};
        switch (job.kind) {
            case Job::Kind::list:
                list();
                break;
            case Job::Kind::look:
                if constexpr (System::looksOneByOne) {
                    typename System::Listed entries(std::move(job.names));
                    lookAt(entries);
                    keepWaiting();
                }
                break;
            case Job::Kind::enter:
                m_above.push(std::move(m_here), std::move(job.names));
                break;
        }
    }

    void list() {
        m_reader.begin(m_here.folder.get());
        const bool seenAny = lookAt(m_reader);
        if (m_reader.failed()) {
            ++m_tally.unreadable;
            m_rootFailed = m_rootFailed || (m_here.depth == 0 && !seenAny);
        }
        keepWaiting();
    }

    /// Looks at all of them, or at fewer when the walk ends. Answers whether there were any.
    template <class Entries>
    bool lookAt(Entries& entries) {
        std::size_t ready = entries.ready(entriesOfBatch);
        const bool any = ready > 0;
        if (!any) {
            m_parts.limits.askWhetherCancelled();
        }
        for (; ready > 0; ready = entries.ready(entriesOfBatch)) {
            const std::size_t granted = m_parts.limits.grant(ready);
            m_hasAsked = true;
            std::size_t seen = 0;
            for (; seen < granted && !m_parts.limits.isAbandoned(); ++seen) {
                if (const auto record = entries.nextAhead()) {
                    take(*record);
                }
            }
            endBatch(seen);
            if (m_parts.limits.isOver()) {
                break;
            }
            shareWhileLooking(entries);
        }
        return any;
    }

    void take(const typename System::Record& record) {
        const WalkEntry entry = m_parts.system.look(m_here.folder.get(), record);
        switch (entry.kind) {
            case WalkEntryKind::folder:
                m_waiting.append(record.name).push_back('\0');
                break;
            case WalkEntryKind::file:
                addFile(record.name, entry.bytes);
                break;
            case WalkEntryKind::link:
                ++m_tally.links;
                break;
            case WalkEntryKind::elsewhere:
                ++m_tally.elsewhere;
                break;
            case WalkEntryKind::unreadable:
                ++m_tally.unreadable;
                break;
            case WalkEntryKind::other:
                break;
        }
    }

    void addFile(const char* name, std::int64_t bytes) {
        ++m_batchFiles;
        addChecked(m_batchBytes, bytes);
        m_tally.offerFile(bytes, m_path, name);
        if (m_here.depth > 0) {
            return;
        }
        if (bytes < m_parts.children.leastBytes()) {
            ++m_childFiles.otherFiles;
            addChecked(m_childFiles.otherBytes, bytes);
        } else {
            m_childFiles.files.push_back({name, bytes, false});
        }
    }

    void endBatch(std::size_t entries) {
        m_tally.entries.add(static_cast<std::int64_t>(entries));
        if (m_batchFiles > 0) {
            m_tally.files += std::exchange(m_batchFiles, 0);
            const std::int64_t bytes = std::exchange(m_batchBytes, 0);
            m_tally.bytes.add(bytes);
            if (m_child) {
                m_child->addFiles(bytes);
            } else {
                m_parts.children.add(m_childFiles);
            }
        }
        m_parts.reporter.passBy(m_path);
        if (m_helpers > 0 && m_tally.entries.value() >= entriesWorthHelpers) {
            m_parts.jobs.allowWorkers(std::exchange(m_helpers, 0));
        }
    }

    void keepWaiting() {
        if (!m_waiting.empty()) {
            m_above.push(std::move(m_here), std::exchange(m_waiting, {}));
        }
    }

    /// Whether to enter the next folder. Entries ask for themselves; folders that hold none or stay closed do not.
    bool goesOn() {
        if (!std::exchange(m_hasAsked, false)) {
            m_parts.limits.askBeforeFolder();
            m_parts.reporter.passBy(m_path);
        }
        return !m_parts.limits.isOver();
    }

    /// Opens the next waiting folder of the innermost branch. False when it could not be opened, or not be reached.
    [[nodiscard]] bool enterNext() {
        if (m_parts.jobs.areWanted()) {
            static_cast<void>(shareBranch(true));
        }
        const std::int64_t givenUp = m_above.reachInnermost(m_here);
        if (givenUp > 0) {
            m_tally.unreadable += givenUp;
            return false;
        }
        auto& branch = m_above.innermost();
        const std::size_t before = branch.names.rfind('\0', branch.names.size() - 2);
        const std::size_t start = before == std::string::npos ? 0 : before + 1;
        const char* name = branch.names.data() + start;
        const std::size_t depth = branch.place.depth + 1;
        Folder next = m_parts.system.openBelow(branch.place.folder.get(), name);
        if (!next) {
            ++(errno == EXDEV ? m_tally.elsewhere : m_tally.unreadable);
        } else {
            m_path.resize(branch.place.pathLength);
            m_path.append(m_path.empty() ? 0 : 1, '/').append(name);
            if (depth == 1) {
                m_child = m_parts.children.enter(name);
            }
        }
        branch.names.resize(start);
        if (start == 0) {
            m_here = m_above.popInnermost();
        }
        if (!next) {
            return false;
        }
        m_here = {std::move(next), depth, m_path.size()};
        return true;
    }

    template <class Entries>
    void shareWhileLooking(Entries& entries) {
        if (m_parts.jobs.areWanted() && !shareBranch(false)) {
            if constexpr (System::looksOneByOne) {
                shareEntries(entries);
            }
        }
    }

    /// False: there is no branch to spare.
    [[nodiscard]] bool shareBranch(bool keepInnermost) {
        if (!m_parts.jobs.claim()) {
            return true;
        }
        auto branch = m_above.cutOff(keepInnermost);
        if (!branch) {
            m_parts.jobs.disclaim();
            return false;
        }
        Job job = jobAt(std::move(branch->place), Job::Kind::enter);
        job.names = std::move(branch->names);
        m_parts.jobs.give(std::move(job));
        return true;
    }

    template <class Entries>
    void shareEntries(Entries& entries) {
        if (entries.bytesAhead() < bytesWorthSharing || m_path.size() > WalkPath<System>::longestPath ||
            !m_parts.jobs.claim()) {
            return;
        }
        Folder again = m_parts.system.openAgain(m_here.folder.get());
        if (!again) {
            m_parts.jobs.disclaim();
            return;
        }
        Job job = jobAt({std::move(again), m_here.depth, m_path.size()}, Job::Kind::look);
        const std::size_t kept = entries.bytesAhead() / 2;
        job.names.reserve(entries.bytesAhead() - kept);
        while (entries.bytesAhead() > kept) {
            if (const auto record = entries.nextAhead()) {
                System::Listed::append(job.names, *record);
            }
        }
        m_parts.jobs.give(std::move(job));
    }

    [[nodiscard]] Job jobAt(Place place, typename Job::Kind kind) const {
        Job job;
        job.kind = kind;
        job.folder = std::move(place.folder);
        job.depth = place.depth;
        job.path = m_path.substr(0, place.pathLength);
        job.child = place.depth > 0 ? m_child : nullptr;
        return job;
    }

    const WalkParts<System> m_parts;
    const typename System::ThreadPolicy m_policy{};
    WalkTally& m_tally;
    std::size_t m_helpers;
    typename System::Reader m_reader = System::makeReader();
    Place m_here;
    WalkPath<System> m_above;  ///< all descriptors but m_here's and the next one's, or a cut-off half's
    std::string m_path;        ///< of m_here below the root
    std::string m_waiting;     ///< sub-folders found in m_here so far, each closed by a NUL
    std::shared_ptr<WalkChild> m_child;
    WalkChildFiles m_childFiles;
    std::int64_t m_batchFiles = 0;
    std::int64_t m_batchBytes = 0;
    bool m_hasAsked = false;  ///< whether to go on, since the last folder was entered
    bool m_rootFailed = false;
};

}  // namespace kestrune
