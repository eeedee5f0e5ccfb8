#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <string>

#include "platform/WalkChildren.h"
#include "platform/WalkTally.h"

namespace kestrune {

/// Tells a walk's progress five times a second, from whichever of its threads comes by next; the others walk on.
class WalkReporter final {
public:
    /// The three outlive this. No tally is added or removed meanwhile.
    WalkReporter(const WalkRequest& request, const std::deque<WalkTally>& tallies, WalkChildren& children)
        : m_request(request), m_tallies(tallies), m_children(children) {}

    /// Tells what is known if it is time to. `folder` is the one the calling thread reads. Any thread.
    void passBy(const std::string& folder) {
        if (m_request.progress && std::chrono::steady_clock::now() >= m_next.load(std::memory_order_relaxed)) {
            tell(folder);
        }
    }

private:
    using Moment = std::chrono::steady_clock::time_point;
    static constexpr std::chrono::milliseconds pause{200};

    void tell(const std::string& folder);

    const WalkRequest& m_request;
    const std::deque<WalkTally>& m_tallies;
    WalkChildren& m_children;
    std::mutex m_telling;
    std::atomic<Moment> m_next{std::chrono::steady_clock::now() + pause};
};

}  // namespace kestrune
