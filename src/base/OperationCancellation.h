#pragma once

#include <mutex>

namespace kestrune {

/// The flag a worker polls to learn that the user asked it to stop. Shared by reference between the main thread,
/// which cancels and resets, and the workers, which read. Every operation may be called from any thread.
class OperationCancellation final {
public:
    void cancel();
    void reset();
    [[nodiscard]] bool isCancelled() const;

private:
    mutable std::mutex m_lock;
    bool m_cancelled = false;
};

}  // namespace kestrune
