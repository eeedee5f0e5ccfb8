#include "ui/TreemapLayout.h"

namespace kestrune {

std::vector<TreemapRectangle> squarified(const std::vector<double>& weights, const TreemapRectangle& area) {
    static_cast<void>(area);
    return std::vector<TreemapRectangle>(weights.size());
}

}  // namespace kestrune
