#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/LargestItems.h"

namespace kestrune {

/// sum += amount. A sum beyond the range ends the program: every figure shown after it would be wrong.
void addChecked(std::int64_t& sum, std::int64_t amount);

/// A number that one thread adds to and others may read meanwhile; they see it grow.
class WatchedNumber final {
public:
    void add(std::int64_t amount) {
        std::int64_t sum = value();
        addChecked(sum, amount);
        m_value.store(sum, std::memory_order_relaxed);
    }

    [[nodiscard]] std::int64_t value() const { return m_value.load(std::memory_order_relaxed); }

private:
    std::atomic<std::int64_t> m_value{0};
};

/// What one thread of a walk has seen. Its own thread writes; only `entries` and `bytes` may be read meanwhile.
struct WalkTally {
    explicit WalkTally(std::int64_t largestLimit) : largestFiles(largestLimit) {}

    /// Offers the file called name in folder to the largest ones; its path is put together only if it is one.
    void offerFile(std::int64_t size, const std::string& folder, std::string_view name);

    WatchedNumber entries;
    WatchedNumber bytes;
    std::int64_t files = 0;
    std::int64_t links = 0;
    std::int64_t elsewhere = 0;
    std::int64_t unreadable = 0;
    LargestItems largestFiles;
};

/// Adds a tally whose thread is done to what the walk found; the largest files are merged into `largest`.
void addTally(WalkTally& tally, TreeWalk& found, LargestItems& largest);

}  // namespace kestrune
