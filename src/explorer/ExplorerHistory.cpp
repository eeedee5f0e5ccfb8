#include "explorer/ExplorerHistory.h"

#include <algorithm>
#include <utility>

namespace kestrune {

void ExplorerHistory::visit(std::string folder, DiskExplorerResult result) {
    if (m_shown > 0 && m_visits[m_shown - 1].folder == folder) {
        m_visits[m_shown - 1].result = std::move(result);
        return;
    }
    m_visits.resize(m_shown);
    m_visits.push_back({std::move(folder), std::move(result)});
    if (m_visits.size() > visitsAtMost) {
        m_visits.pop_front();
    }
    m_shown = m_visits.size();
}

const ExplorerHistory::Visit& ExplorerHistory::goBack() {
    --m_shown;
    return m_visits[m_shown - 1];
}

const ExplorerHistory::Visit& ExplorerHistory::goForward() {
    ++m_shown;
    return m_visits[m_shown - 1];
}

const ExplorerHistory::Visit* ExplorerHistory::find(const std::string& folder) const {
    const auto found =
        std::find_if(m_visits.rbegin(), m_visits.rend(), [&](const Visit& visit) { return visit.folder == folder; });
    return found == m_visits.rend() ? nullptr : &*found;
}

}  // namespace kestrune
