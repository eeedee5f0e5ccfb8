#include "platform/ParallelWalk.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr std::size_t workersAtMost = 8;

}  // namespace

std::size_t walkWorkersFor(std::uint64_t freeDescriptors) {
    return static_cast<std::size_t>(
        std::clamp<std::uint64_t>(freeDescriptors / descriptorsOfWalkWorker, 1, workersAtMost));
}

std::deque<WalkTally> walkTalliesFor(const WalkRequest& request) {
    std::deque<WalkTally> tallies;
    for (std::size_t worker = 0; worker < workersAtMost; ++worker) {
        tallies.emplace_back(request.largestLimit);
    }
    return tallies;
}

}  // namespace kestrune
