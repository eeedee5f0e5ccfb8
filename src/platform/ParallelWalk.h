#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>

#include "platform/WalkWorker.h"

namespace kestrune {

/// How many workers a walk gets that finds so many descriptors free. More threads than processors: from a disk most of
/// them wait. More than eight gain nothing and cost descriptors.
[[nodiscard]] std::size_t walkWorkersFor(std::uint64_t freeDescriptors);

/// A tally for each worker that a walk may get.
[[nodiscard]] std::deque<WalkTally> walkTalliesFor(const WalkRequest& request);

/// One walk from its open root on several threads; System as in WalkWorker.h. What it finds is complete when the
/// caller's own worker is done and the others are gone.
template <class System>
class ParallelWalk final {
public:
    /// request outlives this.
    ParallelWalk(const WalkRequest& request, System system)
        : m_request(request),
          m_tallies(walkTalliesFor(request)),
          m_limits(request),
          m_children(request.childLimit),
          m_reporter(request, m_tallies, m_children),
          m_system(std::move(system)) {}

    /// Walks from root on, on at most so many threads, the caller's included.
    [[nodiscard]] TreeWalk run(typename System::Folder root, std::size_t workers) {
        TreeWalk found;
        found.exists = true;
        found.opened = walkFrom(std::move(root), workers);
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
    using Worker = WalkWorker<System>;
    using Jobs = WalkJobs<typename System::Folder>;

    [[nodiscard]] bool walkFrom(typename System::Folder root, std::size_t workers) {
        Jobs jobs([this, &jobs](std::size_t worker, typename Worker::Job job) {
            Worker(partsWith(jobs), m_tallies[worker], 0).run(std::move(job));
        });
        Worker first(partsWith(jobs), m_tallies[0], workers - 1);
        typename Worker::Job whole;
        whole.folder = std::move(root);
        first.run(std::move(whole));
        return !first.rootFailed();
    }

    [[nodiscard]] WalkParts<System> partsWith(Jobs& jobs) { return {m_limits, m_children, m_reporter, jobs, m_system}; }

    const WalkRequest& m_request;
    std::deque<WalkTally> m_tallies;
    WalkLimits m_limits;
    WalkChildren m_children;
    WalkReporter m_reporter;
    const System m_system;
};

}  // namespace kestrune
