#include "platform/linux/MergedApplications.h"

#include <algorithm>

namespace kestrune {

namespace {

std::vector<std::int32_t> processesOf(const SourcedApplication& application) {
    std::vector<std::int32_t> processes{application.pid};
    processes.insert(processes.end(), application.otherPids.begin(), application.otherPids.end());
    return processes;
}

}  // namespace

void MergedApplications::add(const std::vector<SourcedApplication>& applications) {
    for (const SourcedApplication& added : applications) {
        const std::vector<std::int32_t> processes = processesOf(added);
        const auto shared = std::find_if(processes.begin(), processes.end(),
                                         [this](std::int32_t pid) { return m_places.contains(pid); });
        const std::size_t place = shared == processes.end() ? m_all.size() : m_places.at(*shared);
        if (shared == processes.end()) {
            m_all.push_back(added);
            m_all.back().otherPids.clear();
        }
        SourcedApplication& known = m_all[place];
        for (const std::int32_t pid : processes) {
            if (m_places.emplace(pid, place).second && pid != known.pid) {
                known.otherPids.push_back(pid);
            }
        }
        addHints(added.hints, known.hints);
        if (known.name.empty()) {
            known.name = added.name;
        }
    }
}

const SourcedApplication* MergedApplications::withProcess(std::int32_t pid) const {
    const auto place = m_places.find(pid);
    return place == m_places.end() ? nullptr : &m_all[place->second];
}

}  // namespace kestrune
