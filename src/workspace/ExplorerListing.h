#pragma once

#include <cstdint>
#include <string>
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

/// From home or "/" down to root, which is last.
[[nodiscard]] std::vector<ExplorerCrumb> crumbs(const std::string& root, const std::string& home);

/// "184,236 inspected · 161,902 files"
[[nodiscard]] std::string counts(const DiskExplorerResult& result);

/// Whether the scan did not see everything: it was stopped, met a limit or skipped locations.
[[nodiscard]] bool isIncomplete(const DiskExplorerResult& result);

/// "This scan is incomplete. 12 locations couldn’t be read or were skipped. Try a smaller folder to see more."
[[nodiscard]] std::string incompleteText(const DiskExplorerResult& result);

/// Whether the list of folders was cut at rowsAtMost.
[[nodiscard]] bool isCut(const DiskExplorerResult& result);

/// The folder above; empty for "/".
[[nodiscard]] std::string parentOf(const std::string& folder);

}  // namespace ExplorerListing

}  // namespace kestrune
