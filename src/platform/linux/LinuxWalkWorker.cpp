#include "platform/linux/LinuxWalkWorker.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/linux/LinuxWalkNames.h"

namespace kestrune {

namespace {

constexpr std::int64_t bytesOfBlock = 512;

// Between two questions whether to go on: short enough for a disk that takes milliseconds an entry.
constexpr std::size_t entriesOfBatch = 32;

// A folder with fewer entries is measured before a thread has started.
constexpr std::int64_t entriesWorthHelpers = 128;

// Less than this many bytes of records are not worth a hand-over.
constexpr std::size_t bytesWorthSharing = std::size_t{4} * 1024;

}  // namespace

void LinuxWalkWorker::run(LinuxWalkJob job) noexcept {
    std::optional<LinuxWalkJob> next = std::move(job);
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

void LinuxWalkWorker::begin(LinuxWalkJob job) {
    m_path = std::move(job.path);
    m_child = std::move(job.child);
    m_here = {std::move(job.folder), job.depth, m_path.size()};
    switch (job.kind) {
        case LinuxWalkJob::Kind::list:
            list();
            break;
        case LinuxWalkJob::Kind::look: {
            LinuxWalkNames entries(std::move(job.names));
            lookAt(entries);
            keepWaiting();
            break;
        }
        case LinuxWalkJob::Kind::enter:
            m_above.push(std::move(m_here), std::move(job.names));
            break;
    }
}

void LinuxWalkWorker::list() {
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
bool LinuxWalkWorker::lookAt(Entries& entries) {
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

void LinuxWalkWorker::take(const DirectoryRecord& record) {
    switch (record.type) {
        case DT_DIR:
            m_waiting.append(record.name).push_back('\0');
            break;
        case DT_LNK:
            ++m_tally.links;
            break;
        case DT_REG:
        case DT_UNKNOWN:
            look(record.name);
            break;
        default:
            break;  // FIFOs, sockets and devices hold nothing of their own
    }
}

void LinuxWalkWorker::look(const char* name) {
    struct statx status {};

    constexpr int how = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
    constexpr unsigned wanted = STATX_TYPE | STATX_BLOCKS | STATX_MNT_ID;
    if (::statx(m_here.folder.get(), name, how, wanted, &status) != 0) {
        ++m_tally.unreadable;
    } else if (status.stx_mnt_id != m_parts.mount) {
        ++m_tally.elsewhere;
    } else if (S_ISDIR(status.stx_mode)) {
        m_waiting.append(name).push_back('\0');
    } else if (S_ISLNK(status.stx_mode)) {
        ++m_tally.links;
    } else if (S_ISREG(status.stx_mode)) {
        addFile(name, status.stx_blocks);
    }
}

void LinuxWalkWorker::addFile(const char* name, std::uint64_t blocks) {
    std::int64_t bytes = 0;
    if (__builtin_mul_overflow(blocks, bytesOfBlock, &bytes)) {
        std::abort();
    }
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

void LinuxWalkWorker::endBatch(std::size_t entries) {
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

void LinuxWalkWorker::keepWaiting() {
    if (!m_waiting.empty()) {
        m_above.push(std::move(m_here), std::exchange(m_waiting, {}));
    }
}

/// Whether to enter the next folder. Entries ask for themselves; folders that hold none or stay closed do not.
bool LinuxWalkWorker::goesOn() {
    if (!std::exchange(m_hasAsked, false)) {
        m_parts.limits.askBeforeFolder();
        m_parts.reporter.passBy(m_path);
    }
    return !m_parts.limits.isOver();
}

/// Opens the next waiting folder of the innermost branch. False when it could not be opened, or not be reached.
bool LinuxWalkWorker::enterNext() {
    if (m_parts.jobs.areWanted()) {
        static_cast<void>(shareBranch(true));
    }
    const std::int64_t givenUp = m_above.reachInnermost(m_here);
    if (givenUp > 0) {
        m_tally.unreadable += givenUp;
        return false;
    }
    LinuxWalkBranch& branch = m_above.innermost();
    const std::size_t before = branch.names.rfind('\0', branch.names.size() - 2);
    const std::size_t start = before == std::string::npos ? 0 : before + 1;
    const char* name = branch.names.data() + start;
    const std::size_t depth = branch.place.depth + 1;
    LinuxFileDescriptor next = openFolderBelow(branch.place.folder.get(), name);
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
void LinuxWalkWorker::shareWhileLooking(Entries& entries) {
    if (m_parts.jobs.areWanted() && !shareBranch(false)) {
        shareEntries(entries);
    }
}

bool LinuxWalkWorker::shareBranch(bool keepInnermost) {
    if (!m_parts.jobs.claim()) {
        return true;
    }
    std::optional<LinuxWalkBranch> branch = m_above.cutOff(keepInnermost);
    if (!branch) {
        m_parts.jobs.disclaim();
        return false;
    }
    m_parts.jobs.give(jobAt(std::move(branch->place), LinuxWalkJob::Kind::enter, std::move(branch->names)));
    return true;
}

template <class Entries>
void LinuxWalkWorker::shareEntries(Entries& entries) {
    if (entries.bytesAhead() < bytesWorthSharing || m_path.size() > LinuxWalkPath::longestPath ||
        !m_parts.jobs.claim()) {
        return;
    }
    LinuxFileDescriptor again = openFolderAgain(m_here.folder.get());
    if (!again) {
        m_parts.jobs.disclaim();
        return;
    }
    std::string names;
    const std::size_t kept = entries.bytesAhead() / 2;
    names.reserve(entries.bytesAhead() - kept);
    while (entries.bytesAhead() > kept) {
        if (const auto record = entries.nextAhead()) {
            LinuxWalkNames::append(names, *record);
        }
    }
    m_parts.jobs.give(
        jobAt({std::move(again), m_here.depth, m_path.size()}, LinuxWalkJob::Kind::look, std::move(names)));
}

LinuxWalkJob LinuxWalkWorker::jobAt(LinuxWalkPlace place, LinuxWalkJob::Kind kind, std::string names) const {
    LinuxWalkJob job;
    job.kind = kind;
    job.folder = std::move(place.folder);
    job.depth = place.depth;
    job.path = m_path.substr(0, place.pathLength);
    job.child = place.depth > 0 ? m_child : nullptr;
    job.names = std::move(names);
    return job;
}

}  // namespace kestrune
