#include "platform/WalkTally.h"

#include <cstdlib>
#include <limits>
#include <utility>

namespace kestrune {

void addChecked(std::int64_t& sum, std::int64_t amount) {
    if (amount > std::numeric_limits<std::int64_t>::max() - sum) {
        std::abort();
    }
    sum += amount;
}

void WalkTally::offerFile(std::int64_t size, const std::string& folder, std::string_view name) {
    if (!largestFiles.keeps(size, folder, name)) {
        return;
    }
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path += folder;
    if (!folder.empty()) {
        path += '/';
    }
    path += name;
    largestFiles.offer({std::move(path), size, false});
}

void addTally(WalkTally& tally, TreeWalk& found, LargestItems& largest) {
    found.entries += tally.entries.value();
    addChecked(found.bytes, tally.bytes.value());
    found.files += tally.files;
    found.links += tally.links;
    found.elsewhere += tally.elsewhere;
    found.unreadable += tally.unreadable;
    for (WalkedItem& file : tally.largestFiles.takeSorted()) {
        largest.offer(std::move(file));
    }
}

}  // namespace kestrune
