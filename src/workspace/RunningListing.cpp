#include "workspace/RunningListing.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_map>

#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

/// What isSameProcess() compares. Looks into the item it is made of.
struct Identity {
    explicit Identity(const RunningItem& item)
        : id(item.id), startTime(item.startTime), executable(startTime == 0 ? item.executable : std::string_view{}) {}

    std::int32_t id;
    std::uint64_t startTime;
    std::string_view executable;  ///< where no start time tells two holders of the number apart

    bool operator==(const Identity&) const = default;
};

struct IdentityHash {
    std::size_t operator()(const Identity& identity) const { return std::hash<std::int32_t>{}(identity.id); }
};

std::vector<RunningItem> filtered(const std::vector<RunningItem>& items, bool (*isKept)(const RunningItem&)) {
    std::vector<RunningItem> kept;
    std::copy_if(items.begin(), items.end(), std::back_inserter(kept), isKept);
    return kept;
}

}  // namespace

bool isSameProcess(const RunningItem& one, const RunningItem& other) {
    return Identity(one) == Identity(other);
}

std::vector<ListedItem> mergedListing(const std::vector<ListedItem>& shown, const std::vector<RunningItem>& now,
                                      bool held) {
    std::vector<ListedItem> merged;
    merged.reserve(now.size());
    std::unordered_map<Identity, const RunningItem*, IdentityHash> current;
    if (held) {
        for (const auto& item : now) {
            current.emplace(Identity(item), &item);
        }
        for (const auto& row : shown) {
            if (const auto found = current.find(Identity(row.item)); found != current.end()) {
                merged.push_back({*found->second, false});
                current.erase(found);
            } else {
                merged.push_back({row.item, true});
            }
        }
    }
    for (const auto& item : now) {
        if (!held || current.erase(Identity(item)) > 0) {
            merged.push_back({item, false});
        }
    }
    return merged;
}

std::vector<RunningItem> aiTools(const std::vector<RunningItem>& items) {
    return filtered(items,
                    [](const RunningItem& item) { return WorkspaceStore::isAIProcess(item.name, item.executable); });
}

std::vector<RunningItem> listeningItems(const std::vector<RunningItem>& items) {
    return filtered(items, [](const RunningItem& item) { return !item.listeners.empty(); });
}

}  // namespace kestrune
