#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "explorer/DiskExplorerResult.h"

namespace kestrune {

/// One bar row of the disk explorer, worded and measured.
struct ExplorerRow {
    std::string path;    ///< absolute bytes: identifies the row
    std::string name;    ///< last part, readable
    std::string detail;  ///< of a largest file: where it lies below the root; of a direct child: empty
    std::int64_t bytes = 0;
    double share = 0;     ///< of everything measured, 0 to 1
    double bar = 0;       ///< of the largest row of its list, 0 to 1
    std::string percent;  ///< share in whole percent, "<1%" for what is less and not 0
    int rank = 0;         ///< place among the direct children, 0 is the largest; −1 for largest files
    bool isDirectory = false;

    bool operator==(const ExplorerRow&) const = default;
};

/// A folder on the way to the one explored.
struct ExplorerCrumb {
    std::string path;
    std::string label;  ///< "~" for home, "/" for the root of all, else the last part, readable

    bool operator==(const ExplorerCrumb&) const = default;
};

/// What the Disk Explorer page shows of a result, as pure functions. Counts have the thousands separators of the
/// design, sizes are worded by base/ByteCount.
namespace ExplorerListing {

/// Rows shown of a result's folders.
constexpr std::size_t rowsAtMost = 200;

[[nodiscard]] std::vector<ExplorerRow> folderRows(const DiskExplorerResult& result);
[[nodiscard]] std::vector<ExplorerRow> fileRows(const DiskExplorerResult& result, const std::string& root);

/// What a list that shows one selection of rows shows next. Where it is held, because somebody is at it, its rows keep
/// their places and take the new figures: rows that are gone stay as they were, new ones follow below, as far as there
/// are rows now. Where it is not held, or nothing that is shown is left, it shows now.
[[nodiscard]] std::vector<ExplorerRow> mergedRows(const std::vector<ExplorerRow>& shown,
                                                  const std::vector<ExplorerRow>& now, bool held);

/// Crumbs at most; a deeper folder has one called "…" in the place of those that are left out.
constexpr std::size_t crumbsAtMost = 64;

/// From home or "/" down to root, which is last. home may be empty: not known.
[[nodiscard]] std::vector<ExplorerCrumb> crumbs(const std::string& root, const std::string& home);

/// "184,236 inspected · 161,902 files"
[[nodiscard]] std::string counts(const DiskExplorerResult& result);

/// Whether the scan did not see everything: it was stopped, met a limit or skipped locations.
[[nodiscard]] bool isIncomplete(const DiskExplorerResult& result);

/// "This scan is incomplete. 12 locations couldn’t be read or were skipped. Try a smaller folder to see more."
[[nodiscard]] std::string incompleteText(const DiskExplorerResult& result);

/// Whether the list of folders was cut at rowsAtMost.
[[nodiscard]] bool isCut(const DiskExplorerResult& result);

/// path for a tooltip or a screen reader: well-formed, visible, and at most 300 characters long.
[[nodiscard]] std::string readablePath(std::string_view path);

/// count with separators between thousands: "184,236".
[[nodiscard]] std::string grouped(std::int64_t count);

/// share in whole percent: "27%", "<1%" for what is less and not 0, and "100%" for nothing less than all.
[[nodiscard]] std::string percentText(double share);

/// The folder above; empty for "/".
[[nodiscard]] std::string parentOf(const std::string& folder);

/// What lies directly in folder on the way down to below; empty where below does not lie in folder.
[[nodiscard]] std::string childTowards(const std::string& folder, const std::string& below);

}  // namespace ExplorerListing

}  // namespace kestrune
