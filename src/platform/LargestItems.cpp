#include "platform/LargestItems.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace kestrune {

namespace {

/// How folder + "/" + name compares with path, without being put together.
int compareJoined(const std::string& folder, std::string_view name, std::string_view path) {
    if (folder.empty()) {
        return name.compare(path);
    }
    const int inFolder = std::string_view(folder).compare(path.substr(0, folder.size()));
    if (inFolder != 0) {
        return inFolder;
    }
    path.remove_prefix(folder.size());
    const int atSlash = std::string_view("/").compare(path.substr(0, 1));
    return atSlash != 0 ? atSlash : name.compare(path.substr(1));
}

}  // namespace

bool isNamedBefore(const WalkedItem& one, const WalkedItem& other) {
    return std::tie(other.bytes, one.path) < std::tie(one.bytes, other.path);
}

std::int64_t LargestItems::leastBytes() const {
    if (!isFull()) {
        return 0;
    }
    return m_items.empty() ? std::numeric_limits<std::int64_t>::max() : m_items.front().bytes;
}

bool LargestItems::keeps(std::int64_t bytes, const std::string& folder, std::string_view name) const {
    if (!isFull()) {
        return true;
    }
    if (m_items.empty() || bytes != m_items.front().bytes) {
        return !m_items.empty() && bytes > m_items.front().bytes;
    }
    return compareJoined(folder, name, m_items.front().path) < 0;
}

void LargestItems::offer(WalkedItem item) {
    if (m_limit < 0) {
        m_items.push_back(std::move(item));
        return;
    }
    if (isFull()) {
        if (m_items.empty() || !isNamedBefore(item, m_items.front())) {
            leaveOut(1, item.bytes);
            return;
        }
        leaveOut(1, m_items.front().bytes);
        std::pop_heap(m_items.begin(), m_items.end(), isNamedBefore);
        m_items.pop_back();
    }
    m_items.push_back(std::move(item));
    std::push_heap(m_items.begin(), m_items.end(), isNamedBefore);
}

void LargestItems::leaveOut(std::int64_t items, std::int64_t bytes) {
    m_otherItems += items;
    m_otherBytes += bytes;
}

std::vector<WalkedItem> LargestItems::takeSorted() {
    std::vector<WalkedItem> sorted = std::exchange(m_items, {});
    std::sort(sorted.begin(), sorted.end(), isNamedBefore);
    return sorted;
}

}  // namespace kestrune
