#include "platform/linux/LinuxDirectoryWalker.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <deque>
#include <optional>
#include <utility>

#include "platform/linux/LinuxDirectoryReader.h"
#include "platform/linux/LinuxWalkWorker.h"

namespace kestrune {

namespace {

// More threads than processors: from a disk most of them wait. More than these gain nothing and cost descriptors.
constexpr std::size_t workersAtMost = 8;

std::optional<std::uint64_t> mountOf(int descriptor) {
    struct statx status {};

    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0) {
        return std::nullopt;
    }
    return status.stx_mnt_id;
}

/// How many workers find the descriptors they may need. What is opened gets the lowest free number, so that the one of
/// the root tells how many are in use.
std::size_t workersFor(const LinuxFileDescriptor& root) {
    rlimit limit{};
    const auto used = static_cast<rlim_t>(root.get()) + 1;
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur <= used) {
        return 1;
    }
    const rlim_t workers = (limit.rlim_cur - used) / LinuxWalkWorker::descriptorsAtMost;
    return static_cast<std::size_t>(std::clamp<rlim_t>(workers, 1, workersAtMost));
}

std::deque<WalkTally> talliesFor(const WalkRequest& request) {
    std::deque<WalkTally> tallies;
    for (std::size_t worker = 0; worker < workersAtMost; ++worker) {
        tallies.emplace_back(request.largestLimit);
    }
    return tallies;
}

/// One walk from its open root. What it finds is complete when the caller's own worker is done and the others are gone.
class Walk final {
public:
    Walk(const WalkRequest& request, std::uint64_t mount)
        : m_request(request),
          m_tallies(talliesFor(request)),
          m_limits(request),
          m_children(request.childLimit),
          m_reporter(request, m_tallies, m_children),
          m_mount(mount) {}

    TreeWalk run(LinuxFileDescriptor root) {
        TreeWalk found;
        found.exists = true;
        found.opened = walkFrom(std::move(root));
        if (!found.opened) {
            return found;
        }
        LargestItems largest(m_request.largestLimit);
        for (WalkTally& tally : m_tallies) {
            addTally(tally, found, largest);
        }
        found.end = m_limits.end();
        found.largestFiles = largest.takeSorted();
        m_children.finish(found);
        return found;
    }

private:
    bool walkFrom(LinuxFileDescriptor root) {
        LinuxWalkJobs jobs([this, &jobs](std::size_t worker, LinuxWalkJob job) {
            LinuxWalkWorker(partsWith(jobs), m_tallies[worker], 0).run(std::move(job));
        });
        LinuxWalkWorker first(partsWith(jobs), m_tallies[0], workersFor(root) - 1);
        LinuxWalkJob whole;
        whole.folder = std::move(root);
        first.run(std::move(whole));
        return !first.rootFailed();
    }

    LinuxWalkParts partsWith(LinuxWalkJobs& jobs) { return {m_limits, m_children, m_reporter, jobs, m_mount}; }

    const WalkRequest& m_request;
    std::deque<WalkTally> m_tallies;
    WalkLimits m_limits;
    WalkChildren m_children;
    WalkReporter m_reporter;
    const std::uint64_t m_mount;
};

}  // namespace

TreeWalk LinuxDirectoryWalker::walk(const WalkRequest& request) {
    LinuxFileDescriptor root = openFolderToWalk(request.folder);
    TreeWalk unopened;
    unopened.exists = root || (errno != ENOENT && errno != ENOTDIR);
    const auto mount = root ? mountOf(root.get()) : std::nullopt;
    return mount ? Walk(request, *mount).run(std::move(root)) : unopened;
}

}  // namespace kestrune
