#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/LargestItems.h"

namespace kestrune {

/// A folder directly below the walked one while it is being measured, perhaps by several threads.
class WalkChild final {
public:
    explicit WalkChild(std::string name) : m_name(std::move(name)) {}

    /// Adds regular files. Any thread.
    void addFiles(std::int64_t bytes) {
        m_bytes.fetch_add(bytes, std::memory_order_relaxed);
        m_holdsFiles.store(true, std::memory_order_relaxed);
    }

    [[nodiscard]] const std::string& name() const { return m_name; }

    [[nodiscard]] bool holdsFiles() const { return m_holdsFiles.load(std::memory_order_relaxed); }

    [[nodiscard]] std::int64_t bytes() const { return m_bytes.load(std::memory_order_relaxed); }

private:
    const std::string m_name;
    std::atomic<std::int64_t> m_bytes{0};
    std::atomic<bool> m_holdsFiles{false};
};

/// Files directly below the walked folder, gathered by one thread before they are handed in.
struct WalkChildFiles {
    std::vector<WalkedItem> files;
    std::int64_t otherFiles = 0;  ///< too small to be named
    std::int64_t otherBytes = 0;
};

/// The direct children of the walked folder. A child whose last holder lets go of it is complete and only then competes
/// for a place among those named, so that a million children take no more memory than the named ones. Any thread.
class WalkChildren final {
public:
    /// Names at most limit children; negative: all. Outlives every child it gave.
    explicit WalkChildren(std::int64_t limit);

    WalkChildren(const WalkChildren&) = delete;
    WalkChildren& operator=(const WalkChildren&) = delete;

    /// A folder that is about to be measured.
    [[nodiscard]] std::shared_ptr<WalkChild> enter(std::string name);

    /// Files smaller than this need not be handed in by name.
    [[nodiscard]] std::int64_t leastBytes() const { return m_leastBytes.load(std::memory_order_relaxed); }

    /// Hands files in; the batch is empty afterwards.
    void add(WalkChildFiles& batch);

    /// Fills in the children by what is known of them.
    void report(WalkProgress& progress);

    /// Fills in the children; nobody holds one any more.
    void finish(TreeWalk& found);

private:
    void complete(WalkChild* child);

    const std::int64_t m_limit;
    std::mutex m_lock;
    std::vector<WalkChild*> m_held;  ///< still being measured
    LargestItems m_complete;
    std::atomic<std::int64_t> m_leastBytes;
};

}  // namespace kestrune
