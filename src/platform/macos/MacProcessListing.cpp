#include "platform/macos/MacProcessListing.h"

#include "platform/macos/MacProcessIdentity.h"

namespace kestrune {

ProcessSnapshot MacProcessListing::snapshot() {
    const auto before = MacProcessIdentity::startTimesOfUser(m_user);
    ProcessSnapshot snapshot = m_tools.snapshot();
    const auto after = MacProcessIdentity::startTimesOfUser(m_user);
    for (ProcessRecord& record : snapshot.processes) {
        const auto first = before.find(record.pid);
        const auto last = after.find(record.pid);
        if (first != before.end() && last != after.end() && first->second == last->second) {
            record.startTime = last->second;
        }
    }
    return snapshot;
}

}  // namespace kestrune
