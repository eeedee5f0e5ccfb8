#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/DirectoryWalker.h"

namespace kestrune {

/// The order in which a walk names things: larger first, then by path, byte by byte.
[[nodiscard]] bool isNamedBefore(const WalkedItem& one, const WalkedItem& other);

/// The largest of many items. Keeps at most as many as it is asked for, in a heap with the least of them in front, and
/// sums up the others. One thread at a time.
class LargestItems final {
public:
    /// Keeps at most limit items; negative: all.
    explicit LargestItems(std::int64_t limit) : m_limit(limit) {}

    /// Items smaller than this many bytes are not kept.
    [[nodiscard]] std::int64_t leastBytes() const;

    /// Whether an item called name in folder ("" or a path) is kept when it is offered.
    [[nodiscard]] bool keeps(std::int64_t bytes, const std::string& folder, std::string_view name) const;

    void offer(WalkedItem item);

    /// Counts items that were not worth an offer.
    void leaveOut(std::int64_t items, std::int64_t bytes);

    /// Gives what is kept in the order of isNamedBefore and is empty afterwards.
    [[nodiscard]] std::vector<WalkedItem> takeSorted();

    [[nodiscard]] std::int64_t otherItems() const { return m_otherItems; }

    [[nodiscard]] std::int64_t otherBytes() const { return m_otherBytes; }

private:
    [[nodiscard]] bool isFull() const { return m_limit >= 0 && m_items.size() >= static_cast<std::size_t>(m_limit); }

    std::int64_t m_limit;
    std::vector<WalkedItem> m_items;
    std::int64_t m_otherItems = 0;
    std::int64_t m_otherBytes = 0;
};

}  // namespace kestrune
