#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "platform/linux/ApplicationSource.h"

namespace kestrune {

/// What several sources list, each application once: where two of them know one of its processes, the later adds what
/// the earlier did not know.
class MergedApplications final {
public:
    /// Adds what the next source lists.
    void add(const std::vector<SourcedApplication>& applications);

    /// In the order they were added.
    [[nodiscard]] const std::vector<SourcedApplication>& all() const { return m_all; }

    /// The application that process is, or is a part of; null when there is none.
    [[nodiscard]] const SourcedApplication* withProcess(std::int32_t pid) const;

private:
    std::vector<SourcedApplication> m_all;
    std::map<std::int32_t, std::size_t> m_places;  ///< in m_all, of all their processes
};

}  // namespace kestrune
