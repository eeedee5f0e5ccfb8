#include "workspace/ExplorerListing.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include "base/Localized.h"
#include "base/Text.h"
#include "workspace/ReadableText.h"

namespace kestrune::ExplorerListing {

namespace {

constexpr std::size_t pathLimit = 300;
constexpr std::size_t longestCharacter = 4;  // bytes of UTF-8
constexpr int all = 100;                     // percent

double quotient(std::int64_t part, std::int64_t whole) {
    return part > 0 && whole > 0 ? std::min(1.0, static_cast<double>(part) / static_cast<double>(whole)) : 0.0;
}

std::string readableName(std::string_view path) {
    const std::string name = lastPathComponent(path);
    return name.empty() ? "/" : ReadableText::name(name);
}

ExplorerRow row(const DiskExplorerItem& item, std::int64_t measured, std::int64_t largest) {
    ExplorerRow made;
    made.path = item.path;
    made.name = readableName(item.path);
    made.bytes = item.bytes;
    made.share = quotient(item.bytes, measured);
    made.bar = quotient(item.bytes, largest);
    made.percent = percentText(made.share);
    made.isDirectory = item.isDirectory;
    return made;
}

std::int64_t largestOf(const std::vector<DiskExplorerItem>& items) {
    return items.empty() ? 0 : items.front().bytes;
}

/// Whether path lies in folder or below it; folder has no "/" at its end unless it is all of it.
bool isWithin(std::string_view path, std::string_view folder) {
    return path.substr(0, folder.size()) == folder &&
           (folder == "/" || path.size() == folder.size() || path[folder.size()] == '/');
}

/// The folder of the file at path as it is told below root.
std::string place(std::string_view path, const std::string& root) {
    const std::string_view folder = path.substr(0, std::max<std::size_t>(1, path.rfind('/')));
    if (folder == root) {
        return readableName(root);
    }
    if (!isWithin(folder, root)) {
        return readablePath(folder);
    }
    return readablePath(folder.substr(root == "/" ? 1 : root.size() + 1));
}

}  // namespace

std::vector<ExplorerRow> folderRows(const DiskExplorerResult& result) {
    std::vector<ExplorerRow> rows;
    const std::int64_t measured = result.measuredBytes();
    const std::int64_t largest = largestOf(result.folders);
    rows.reserve(std::min(result.folders.size(), rowsAtMost));
    while (rows.size() < result.folders.size() && rows.size() < rowsAtMost) {
        const auto rank = static_cast<int>(rows.size());
        rows.push_back(row(result.folders[rows.size()], measured, largest));
        rows.back().rank = rank;
    }
    return rows;
}

std::vector<ExplorerRow> fileRows(const DiskExplorerResult& result, const std::string& root) {
    std::vector<ExplorerRow> rows;
    const std::int64_t measured = result.measuredBytes();
    const std::int64_t largest = largestOf(result.largestFiles);
    rows.reserve(result.largestFiles.size());
    for (const auto& file : result.largestFiles) {
        rows.push_back(row(file, measured, largest));
        rows.back().detail = place(file.path, root);
        rows.back().rank = -1;
    }
    return rows;
}

std::vector<ExplorerRow> mergedRows(const std::vector<ExplorerRow>& shown, const std::vector<ExplorerRow>& now,
                                    bool held) {
    if (!held) {
        return now;
    }
    std::unordered_map<std::string_view, const ExplorerRow*> current;
    for (const auto& one : now) {
        current.emplace(one.path, &one);
    }
    std::vector<ExplorerRow> merged;
    std::unordered_set<std::string_view> kept;
    for (const auto& one : shown) {
        const auto found = current.find(one.path);
        if (found != current.end()) {
            kept.insert(found->first);
        }
        merged.push_back(found == current.end() ? one : *found->second);
    }
    if (kept.empty()) {
        return now;
    }
    for (const auto& one : now) {
        if (merged.size() < now.size() && kept.count(one.path) == 0) {
            merged.push_back(one);
        }
    }
    return merged;
}

std::vector<ExplorerCrumb> crumbs(const std::string& root, const std::string& home) {
    const std::string start = standardizedPath(home);
    const bool atHome = start.size() > 1 && isWithin(root, start);
    const ExplorerCrumb top = atHome ? ExplorerCrumb{start, "~"} : ExplorerCrumb{"/", "/"};
    std::vector<ExplorerCrumb> found;  // from root up
    std::string folder = root;
    while (folder.size() > top.path.size() && found.size() + 2 < crumbsAtMost) {
        found.push_back({folder, readableName(folder)});
        folder = parentOf(folder);
    }
    if (folder.size() > top.path.size()) {
        found.push_back({folder, "…"});
    }
    found.push_back(top);
    std::reverse(found.begin(), found.end());
    return found;
}

std::string counts(const DiskExplorerResult& result) {
    return localized("%1 inspected · %2 files", {grouped(result.inspectedFiles), grouped(result.regularFiles)});
}

bool isIncomplete(const DiskExplorerResult& result) {
    return result.stopped || result.limitReached || result.skippedLocations > 0;
}

std::string incompleteText(const DiskExplorerResult& result) {
    return localized(
        "This scan is incomplete. %1 locations couldn’t be read or were skipped. Try a smaller folder to see more.",
        {grouped(result.skippedLocations)});
}

bool isCut(const DiskExplorerResult& result) {
    return result.folders.size() >= rowsAtMost;
}

std::string readablePath(std::string_view path) {
    // A path may be very long, and all but its ends goes: that much is not looked at.
    constexpr std::size_t end = pathLimit * longestCharacter;
    if (path.size() <= 2 * end) {
        return ReadableText::visible(ReadableText::elided(path, pathLimit));
    }
    const std::string ends = std::string(path.substr(0, end)).append(path.substr(path.size() - end));
    return ReadableText::visible(ReadableText::elided(ends, pathLimit));
}

std::string grouped(std::int64_t count) {
    constexpr std::size_t group = 3;
    const std::string sign = count < 0 ? "-" : "";
    const std::string digits = std::to_string(count).substr(sign.size());
    const std::size_t first = (digits.size() - 1) % group + 1;
    std::string text = sign + digits.substr(0, first);
    for (std::size_t index = first; index < digits.size(); index += group) {
        // Translators: thousands and what follows them, as in 12,480.
        text = localized("%1,%2", {text, digits.substr(index, group)});
    }
    return text;
}

std::string percentText(double share) {
    const double percent = share * all;
    if (percent > 0 && percent < 1) {
        return localized("<1%");
    }
    return localized("%1%", {std::to_string(share < 1 ? std::min(all - 1L, std::lround(percent)) : all)});
}

std::string parentOf(const std::string& folder) {
    const auto slash = folder.rfind('/');
    return slash == std::string::npos || folder == "/" ? "" : slash == 0 ? "/" : folder.substr(0, slash);
}

std::string childTowards(const std::string& folder, const std::string& below) {
    if (folder == below || !isWithin(below, folder)) {
        return "";
    }
    const std::size_t begin = folder == "/" ? 1 : folder.size() + 1;
    return below.substr(0, below.find('/', begin));
}

}  // namespace kestrune::ExplorerListing
