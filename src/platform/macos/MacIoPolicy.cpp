#include "platform/macos/MacIoPolicy.h"

#include <sys/resource.h>

namespace kestrune {

MacIoPolicy::MacIoPolicy(int type, int policy) : m_type(type) {
    const int before = ::getiopolicy_np(type, IOPOL_SCOPE_THREAD);
    if (before >= 0 && ::setiopolicy_np(type, IOPOL_SCOPE_THREAD, policy) == 0) {
        m_before = before;
    }
}

MacIoPolicy::~MacIoPolicy() {
    if (m_before >= 0) {
        ::setiopolicy_np(m_type, IOPOL_SCOPE_THREAD, m_before);
    }
}

MacQuietThread::MacQuietThread()
    : m_cloud(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_MATERIALIZE_DATALESS_FILES_OFF),
      m_accessTimes(IOPOL_TYPE_VFS_ATIME_UPDATES, IOPOL_ATIME_UPDATES_OFF) {
}

}  // namespace kestrune
