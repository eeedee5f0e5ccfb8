#include "explorer/ExplorerHistory.h"

#include <utility>

namespace kestrune {

namespace {

std::size_t pathBytesOf(const DiskExplorerResult& result) {
    std::size_t bytes = 0;
    for (const auto* items : {&result.folders, &result.largestFiles}) {
        for (const auto& item : *items) {
            bytes += item.path.size();
        }
    }
    return bytes;
}

}  // namespace

void ExplorerHistory::visit(std::string folder, DiskExplorerResult result) {
    Visit visit{std::move(folder), std::move(result), ++m_scans};
    if (m_shown > 0 && m_visits[m_shown - 1].folder == visit.folder) {
        m_visits[m_shown - 1] = std::move(visit);
    } else {
        m_visits.resize(m_shown);
        m_visits.push_back(std::move(visit));
        ++m_shown;
    }
    while (holdsTooMuch()) {
        if (m_shown > 1) {
            m_visits.pop_front();
            --m_shown;
        } else {
            m_visits.pop_back();
        }
    }
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
    const Visit* newest = nullptr;
    for (const auto& visit : m_visits) {
        if (visit.folder == folder && (newest == nullptr || visit.scan > newest->scan)) {
            newest = &visit;
        }
    }
    return newest;
}

bool ExplorerHistory::holdsTooMuch() const {
    std::size_t pathBytes = 0;
    for (const auto& visit : m_visits) {
        pathBytes += pathBytesOf(visit.result);
    }
    return m_visits.size() > 1 && (m_visits.size() > visitsAtMost || pathBytes > pathBytesAtMost);
}

}  // namespace kestrune
