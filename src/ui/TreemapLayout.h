#pragma once

#include <vector>

namespace kestrune {

/// A rectangle with its origin at the top left.
struct TreemapRectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const TreemapRectangle&) const = default;
};

/// Divides area among weights, largest first, so that each part's share is its weight's and the parts are as close to
/// squares as the order allows (Bruls, Huizing, van Wijk: Squarified Treemaps, 2000). The first part lies at the top
/// left. Parts of weights that are 0, negative or not finite, and all parts of an empty area, are empty. O(n).
[[nodiscard]] std::vector<TreemapRectangle> squarified(const std::vector<double>& weights,
                                                       const TreemapRectangle& area);

}  // namespace kestrune
