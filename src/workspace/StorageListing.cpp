#include "workspace/StorageListing.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"

namespace kestrune {

namespace {

bool mentions(const CleanTarget& target, const std::string& lowerCasedSearch) {
    for (const std::string* text : {&target.title, &target.subtitle, &target.path}) {
        if (lowerCased(*text).find(lowerCasedSearch) != std::string::npos) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::vector<CleanTarget> storageRows(const std::vector<CleanTarget>& targets, const std::set<std::string>& excluded,
                                     const StorageFilter& filter) {
    const std::string search = lowerCased(filter.search);
    std::vector<CleanTarget> rows;
    std::copy_if(targets.begin(), targets.end(), std::back_inserter(rows), [&](const CleanTarget& target) {
        return (filter.showExcluded || !excluded.contains(target.path)) &&
               (!filter.category || target.category == *filter.category) && mentions(target, search);
    });
    return rows;
}

std::string abbreviatedPath(const std::string& path, const std::string& home) {
    const std::string base = standardizedPath(home);
    if (base.size() < 2) {
        return path;
    }
    if (path == base) {
        return "~";
    }
    return path.starts_with(base + "/") ? "~" + path.substr(base.size()) : path;
}

}  // namespace kestrune
