#include "base/OperationCancellation.h"

namespace kestrune {

void OperationCancellation::cancel() {
    const std::lock_guard guard(m_lock);
    m_cancelled = true;
}

void OperationCancellation::reset() {
    const std::lock_guard guard(m_lock);
    m_cancelled = false;
}

bool OperationCancellation::isCancelled() const {
    const std::lock_guard guard(m_lock);
    return m_cancelled;
}

}  // namespace kestrune
