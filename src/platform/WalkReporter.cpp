#include "platform/WalkReporter.h"

namespace kestrune {

void WalkReporter::tell(const std::string& folder) {
    const std::unique_lock guard(m_telling, std::try_to_lock);
    if (!guard.owns_lock() || std::chrono::steady_clock::now() < m_next.load(std::memory_order_relaxed)) {
        return;
    }
    WalkProgress progress;
    progress.folder = folder;
    for (const WalkTally& tally : m_tallies) {
        progress.entries += tally.entries.value();
        addChecked(progress.bytes, tally.bytes.value());
    }
    m_children.report(progress);
    m_request.progress(progress);
    m_next.store(std::chrono::steady_clock::now() + pause, std::memory_order_relaxed);
}

}  // namespace kestrune
