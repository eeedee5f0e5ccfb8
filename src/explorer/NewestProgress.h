#pragma once

#include <mutex>
#include <optional>

#include "explorer/DiskExplorerProgress.h"

namespace kestrune {

/// Hands progress from a scan to the thread that shows it, where only the newest step counts: however far that thread
/// lags behind, one step at most waits for it. Any thread.
class NewestProgress final {
public:
    /// Leaves step in place of the one that waits. True when none did: then someone has to be told to take it.
    [[nodiscard]] bool put(DiskExplorerProgress step);

    /// The step that waits, once; nothing when none does.
    [[nodiscard]] std::optional<DiskExplorerProgress> take();

private:
    std::mutex m_lock;
    std::optional<DiskExplorerProgress> m_waiting;
};

}  // namespace kestrune
