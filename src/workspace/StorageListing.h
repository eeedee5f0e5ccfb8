#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "storage/CleanTarget.h"

namespace kestrune {

/// What the Storage page is asked to show.
struct StorageFilter {
    std::optional<CleanCategory> category;  ///< nothing: all categories
    std::string search;                     ///< looked for in title, subtitle and path, ASCII letters in either case
    bool showExcluded = false;              ///< excluded targets are listed among the others

    bool operator==(const StorageFilter&) const = default;
};

/// targets in their order, without those that filter leaves out.
[[nodiscard]] std::vector<CleanTarget> storageRows(const std::vector<CleanTarget>& targets,
                                                   const std::set<std::string>& excluded, const StorageFilter& filter);

/// path with "~" in the place of home; path itself when it does not lie below home.
[[nodiscard]] std::string abbreviatedPath(const std::string& path, const std::string& home);

}  // namespace kestrune
