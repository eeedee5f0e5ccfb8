#include "ui/TreemapLayout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace kestrune {

namespace {

struct Part {
    std::size_t place;    // among all weights
    double weight;        // of the heaviest
    double onward = 0.0;  // weight of this part and all that follow
};

// What the parts of one row have in common while the row is being filled.
struct Row {
    double sum = 0;
    double smallest = std::numeric_limits<double>::infinity();
    double largest = 0;

    [[nodiscard]] Row with(double weight) const {
        return {sum + weight, std::min(smallest, weight), std::max(largest, weight)};
    }
};

bool isUsable(double value) {
    return std::isfinite(value) && value > 0;
}

std::vector<Part> usableParts(const std::vector<double>& weights) {
    double heaviest = 0;
    for (const double weight : weights) {
        heaviest = isUsable(weight) ? std::max(heaviest, weight) : heaviest;
    }
    std::vector<Part> parts;
    parts.reserve(weights.size());
    for (std::size_t place = 0; place < weights.size(); ++place) {
        // By the heaviest, so that no sum of huge weights overflows.
        const double weight = isUsable(weights[place]) ? weights[place] / heaviest : 0;
        if (weight > 0) {
            parts.push_back({place, weight});
        }
    }
    double onward = 0;
    std::for_each(parts.rbegin(), parts.rend(), [&onward](Part& part) {
        onward += part.weight;
        part.onward = onward;
    });
    return parts;
}

// How far the worst part of row is from a square: the longer of its sides by the shorter. The row lies along the side
// called along and takes its share of across.
double worstOf(const Row& row, double onward, double along, double across) {
    const double thickness = across * (row.sum / onward);
    const double shortest = along * (row.smallest / row.sum);
    const double longest = along * (row.largest / row.sum);
    if (!(thickness > 0) || !(shortest > 0)) {
        return std::numeric_limits<double>::infinity();
    }
    return std::max(longest / thickness, thickness / shortest);
}

// Where the row ends that begins at first: with the part whose successor would make the row worse.
std::size_t endOfRow(const std::vector<Part>& parts, std::size_t first, double along, double across) {
    const double onward = parts[first].onward;
    Row row = Row().with(parts[first].weight);
    double worst = worstOf(row, onward, along, across);
    std::size_t end = first + 1;
    while (end < parts.size()) {
        const Row longer = row.with(parts[end].weight);
        const double next = worstOf(longer, onward, along, across);
        if (next > worst) {
            break;
        }
        row = longer;
        worst = next;
        ++end;
    }
    return end;
}

}  // namespace

std::vector<TreemapRectangle> squarified(const std::vector<double>& weights, const TreemapRectangle& area) {
    std::vector<TreemapRectangle> result(weights.size());
    if (!isUsable(area.width) || !isUsable(area.height) || !std::isfinite(area.x) || !std::isfinite(area.y)) {
        return result;
    }
    const std::vector<Part> parts = usableParts(weights);
    TreemapRectangle rest = area;
    for (std::size_t first = 0; first < parts.size();) {
        const bool isColumn = rest.width >= rest.height;
        const double along = isColumn ? rest.height : rest.width;
        const double across = isColumn ? rest.width : rest.height;
        const std::size_t end = endOfRow(parts, first, along, across);
        double sum = 0;
        for (std::size_t at = first; at < end; ++at) {
            sum += parts[at].weight;
        }
        // The last row and the last part of each take what is left, so that the parts cover the area.
        const double thickness = end == parts.size() ? across : std::min(across, across * (sum / parts[first].onward));
        double before = 0;
        double start = 0;
        for (std::size_t at = first; at < end; ++at) {
            before += parts[at].weight;
            const double stop = at + 1 == end ? along : std::min(along, along * (before / sum));
            result[parts[at].place] = isColumn ? TreemapRectangle{rest.x, rest.y + start, thickness, stop - start}
                                               : TreemapRectangle{rest.x + start, rest.y, stop - start, thickness};
            start = stop;
        }
        if (isColumn) {
            rest.x += thickness;
            rest.width -= thickness;
        } else {
            rest.y += thickness;
            rest.height -= thickness;
        }
        first = end;
    }
    return result;
}

}  // namespace kestrune
