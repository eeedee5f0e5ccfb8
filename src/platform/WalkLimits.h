#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "platform/DirectoryWalker.h"

namespace kestrune {

/// Decides when a walk ends, for all of its threads. Any thread.
class WalkLimits final {
public:
    /// request outlives this.
    explicit WalkLimits(const WalkRequest& request) : m_request(request), m_left(request.entryLimit) {}

    /// Asks how many of the next `entries`, at least one, may be looked at. Those granted are to be looked at, all of
    /// them, unless the walk is abandoned: so the entry limit is met exactly. 0: the walk is over.
    [[nodiscard]] std::size_t grant(std::size_t entries);

    /// Asks whether the caller cancelled, where there is no entry to look at.
    void askWhetherCancelled();

    /// Asks whether to go on with a folder that waits: folders that hold nothing ask for no entries, and there may be
    /// a million of them.
    void askBeforeFolder();

    /// Whether nothing further is granted.
    [[nodiscard]] bool isOver() const { return m_end.load(std::memory_order_relaxed) != WalkEnd::finished; }

    /// Whether even what was granted is not worth looking at.
    [[nodiscard]] bool isAbandoned() const { return m_end.load(std::memory_order_relaxed) == WalkEnd::cancelled; }

    /// How the walk ended; where there are several reasons, cancelled comes before the limits and entries before time.
    [[nodiscard]] WalkEnd end() const { return m_end.load(std::memory_order_relaxed); }

private:
    void endWith(WalkEnd end);
    [[nodiscard]] std::size_t reserve(std::size_t entries);

    const WalkRequest& m_request;
    std::atomic<std::int64_t> m_left;  ///< of the entry limit; stays as it is when there is none
    std::atomic<WalkEnd> m_end{WalkEnd::finished};
};

}  // namespace kestrune
