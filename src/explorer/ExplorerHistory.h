#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "explorer/DiskExplorerResult.h"

namespace kestrune {

/// The folders that were explored, in order, with what was found: where "Back" and "Forward" lead. Holds a bounded
/// number of visits; the oldest are forgotten first. A visit after going back forgets what lay ahead.
class ExplorerHistory final {
public:
    struct Visit {
        std::string folder;
        DiskExplorerResult result;
    };

    static constexpr std::size_t visitsAtMost = 32;

    /// Remembers a finished scan as the visit that is shown. A scan of the folder that is shown already replaces it.
    void visit(std::string folder, DiskExplorerResult result);

    [[nodiscard]] bool canGoBack() const { return m_shown > 1; }

    [[nodiscard]] bool canGoForward() const { return m_shown < m_visits.size(); }

    /// The visit before or after, which then is the one that is shown. Only where canGoBack() or canGoForward().
    const Visit& goBack();
    const Visit& goForward();

    /// The newest visit to folder; null when it is not remembered. Valid until the next change.
    [[nodiscard]] const Visit* find(const std::string& folder) const;

private:
    std::deque<Visit> m_visits;
    std::size_t m_shown = 0;  ///< how many visits lie up to the one that is shown, itself included
};

}  // namespace kestrune
