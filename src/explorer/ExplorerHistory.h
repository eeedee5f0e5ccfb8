#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "explorer/DiskExplorerResult.h"

namespace kestrune {

/// The folders that were explored, in order, with what was found: where "Back" and "Forward" lead. Holds a bounded
/// number of visits, and fewer when their paths are enormous; the oldest are forgotten first, the one that is shown
/// never. A visit after going back forgets what lay ahead.
class ExplorerHistory final {
public:
    struct Visit {
        std::string folder;
        DiskExplorerResult result;
        std::uint64_t scan = 0;  ///< grows with every scan
    };

    static constexpr std::size_t visitsAtMost = 32;
    static constexpr std::size_t pathBytesAtMost = std::size_t{4} << 20;

    /// Remembers a finished scan as the visit that is shown. A scan of the folder that is shown already replaces it.
    void visit(std::string folder, DiskExplorerResult result);

    [[nodiscard]] bool canGoBack() const { return m_shown > 1; }

    [[nodiscard]] bool canGoForward() const { return m_shown < m_visits.size(); }

    /// The visit before or after, which then is the one that is shown. Only where canGoBack() or canGoForward().
    const Visit& goBack();
    const Visit& goForward();

    /// The visit to folder that was scanned last; null when none is remembered. Valid until the next change.
    [[nodiscard]] const Visit* find(const std::string& folder) const;

private:
    [[nodiscard]] bool holdsTooMuch() const;  ///< over one of the two bounds

    std::deque<Visit> m_visits;
    std::size_t m_shown = 0;  ///< how many visits lie up to the one that is shown, itself included
    std::uint64_t m_scans = 0;
};

}  // namespace kestrune
