#pragma once

#include <vector>

#include "workspace/RunningItem.h"

namespace kestrune {

/// A row as a live list shows it.
struct ListedItem {
    RunningItem item;
    bool ended = false;  ///< gone since, but kept in its place while the list is held

    bool operator==(const ListedItem&) const = default;
};

/// Whether two items are the same process.
[[nodiscard]] bool isSameProcess(const RunningItem& one, const RunningItem& other);

/// What a live list shows next. Without held, exactly now, in its order. While held (the pointer, a menu, a dialog or
/// the keyboard is on the list) no row of shown moves: those still in now get its figures, the others are marked ended,
/// and new ones follow at the end in the order of now.
[[nodiscard]] std::vector<ListedItem> mergedListing(const std::vector<ListedItem>& shown,
                                                    const std::vector<RunningItem>& now, bool held);

/// The recognised AI tools among items.
[[nodiscard]] std::vector<RunningItem> aiTools(const std::vector<RunningItem>& items);

/// The items that listen on a port.
[[nodiscard]] std::vector<RunningItem> listeningItems(const std::vector<RunningItem>& items);

}  // namespace kestrune
