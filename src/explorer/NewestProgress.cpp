#include "explorer/NewestProgress.h"

#include <utility>

namespace kestrune {

bool NewestProgress::put(DiskExplorerProgress step) {
    const std::lock_guard guard(m_lock);
    const bool noneWaited = !m_waiting.has_value();
    m_waiting = std::move(step);
    return noneWaited;
}

std::optional<DiskExplorerProgress> NewestProgress::take() {
    const std::lock_guard guard(m_lock);
    return std::exchange(m_waiting, std::nullopt);
}

}  // namespace kestrune
