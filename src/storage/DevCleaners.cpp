#include "storage/DevCleaners.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Localized.h"
#include "base/Text.h"

namespace kestrune {

/// One list of the catalog, the category it yields and the size that a location must exceed to be worth a row.
struct DevCleaners::Listing {
    CleanCategory category;
    std::span<const CatalogEntry> entries;
    std::int64_t floorBytes;

    static std::array<Listing, 3> all() {
        return {{{CleanCategory::aiModels, aiCandidates, 1'000'000},
                 {CleanCategory::buildCaches, devCandidates, 5'000'000},
                 {CleanCategory::logs, sysCandidates, 10'000'000}}};
    }
};

namespace {

// What is left of path below home when, by its text alone, it is one of the catalog's locations.
std::optional<std::string> catalogPathBelow(const std::string& home, const std::string& path) {
    const std::string base = standardizedPath(home);
    const std::string wanted = standardizedPath(path);
    if (!base.starts_with('/') || !wanted.starts_with(base + "/")) {
        return std::nullopt;
    }
    for (const auto& list : {DevCleaners::aiCandidates, DevCleaners::devCandidates, DevCleaners::sysCandidates}) {
        for (const auto& entry : list) {
            if (wanted == base + "/" + std::string(entry.relPath)) {
                return std::string(entry.relPath);
            }
        }
    }
    return std::nullopt;
}

CleanError protectedOrChanged() {
    return {"Kestrune", 1, localized("This location is protected or has changed. Rescan before continuing.")};
}

CleanError noLongerPresent() {
    return {"Kestrune", 2, localized("This item is no longer present. Rescan to update the list.")};
}

CleanError locationUnknown() {
    return {"Kestrune", 3,
            localized("Moved to Trash, but macOS did not return its location. Open Trash to inspect it.")};
}

CleanError worded(const TrashError& error) {
    switch (error.failure) {
        case TrashFailure::protectedOrChanged:
            return protectedOrChanged();
        case TrashFailure::missing:
            return noLongerPresent();
        case TrashFailure::locationUnknown:
            return locationUnknown();
        case TrashFailure::system:
            break;
    }
    return {"System", 0, error.message};
}

bool isInside(const CleanTarget& target, const CleanTarget& other) {
    return target.path == other.path || target.path.starts_with(other.path + "/");
}

}  // namespace

DevCleaners::DevCleaners(std::string home, const DevCleanersParts& parts) : m_home(std::move(home)), m_parts(parts) {
}

std::string DevCleaners::path(const CatalogEntry& entry) const {
    return m_home + "/" + std::string(entry.relPath);
}

bool DevCleaners::isAllowedPath(const std::string& path, const std::string& home, const FileQueries& fileQueries) {
    if (!catalogPathBelow(home, path)) {
        return false;
    }
    const std::string plain = standardizedPath(path);
    return fileQueries.resolvingLinks(plain) == plain;
}

bool DevCleaners::isAllowedPath(const std::string& path) const {
    return isAllowedPath(path, m_home, m_parts.fileQueries);
}

std::vector<CleanTarget> DevCleaners::nonOverlapping(std::vector<CleanTarget> targets) {
    std::stable_sort(targets.begin(), targets.end(), [](const CleanTarget& left, const CleanTarget& right) {
        return characterCount(left.path) < characterCount(right.path);
    });
    std::vector<CleanTarget> kept;
    for (auto& target : targets) {
        if (std::none_of(kept.begin(), kept.end(), [&](const CleanTarget& other) { return isInside(target, other); })) {
            kept.push_back(std::move(target));
        }
    }
    return kept;
}

std::int64_t DevCleaners::calculateSize(const std::string& path, const Cancelled& cancelled) {
    const auto kind = m_parts.fileQueries.kind(path);
    if (!kind) {
        return 0;
    }
    if (*kind != FileKind::directory) {
        return m_parts.fileQueries.fileSize(path).value_or(0);
    }
    const TreeSize size =
        m_parts.directoryWalker.measure(path, [&cancelled] { return cancelled != nullptr && cancelled(); });
    if (!size.opened) {
        m_scanIssues.push_back(path);
        return 0;
    }
    if (size.unreadable > 0) {
        note(path);
    }
    return size.allocatedBytes;
}

std::vector<CleanTarget> DevCleaners::scanAllTargets(const Cancelled& cancelled, const Progress& progress) {
    m_scanIssues.clear();
    const auto total = static_cast<int>(aiCandidates.size() + devCandidates.size() + sysCandidates.size());
    std::vector<CleanTarget> found;
    int done = 0;
    for (const auto& listing : Listing::all()) {
        for (const auto& entry : listing.entries) {
            if (cancelled && cancelled()) {
                break;
            }
            const std::string location = path(entry);
            if (m_parts.fileQueries.kind(location)) {
                if (progress) {
                    progress(done, total, entry.title);
                }
                const std::int64_t bytes = calculateSize(location, cancelled);
                if (bytes > listing.floorBytes) {
                    found.push_back({listing.category, std::string(entry.title), localized(entry.subtitle), location,
                                     bytes, false, std::nullopt});
                }
            }
            ++done;
        }
    }

    found = nonOverlapping(std::move(found));
    std::stable_sort(found.begin(), found.end(), [](const CleanTarget& left, const CleanTarget& right) {
        return left.sizeBytes > right.sizeBytes;
    });
    return found;
}

std::vector<std::string> DevCleaners::unreadableTitles() const {
    std::vector<std::string> titles;
    for (const auto& listing : Listing::all()) {
        for (const auto& entry : listing.entries) {
            const std::string location = path(entry);
            if (m_parts.fileQueries.kind(location) && !m_parts.fileQueries.isReadable(location)) {
                titles.emplace_back(entry.title);
            }
        }
    }
    return titles;
}

std::optional<FileIdentity> DevCleaners::identity(const CleanTarget& target) {
    const auto relativePath = catalogPathBelow(m_home, target.path);
    return relativePath ? m_parts.trash.identity(standardizedPath(m_home), *relativePath) : std::nullopt;
}

Result<std::string, CleanError> DevCleaners::cleanReviewedTarget(const CleanTarget& target,
                                                                 const std::optional<FileIdentity>& expected) {
    const auto relativePath = catalogPathBelow(m_home, target.path);
    if (target.isCommand || !relativePath || !isAllowedPath(target.path)) {
        return protectedOrChanged();
    }
    if (!m_parts.fileQueries.kind(target.path)) {
        return noLongerPresent();
    }
    const auto moved = m_parts.trash.moveToTrash({standardizedPath(m_home), *relativePath, expected});
    if (!moved.ok()) {
        return worded(moved.error());
    }
    if (moved.value().location.empty()) {
        return locationUnknown();
    }
    return moved.value().location;
}

bool DevCleaners::cleanTarget(const CleanTarget& target, bool permanent) {
    return !permanent && cleanReviewedTarget(target).ok();
}

void DevCleaners::pruneUnavailableSimulators() {
    const ToolCommand tool = m_parts.systemTools.deleteUnavailableSimulators();
    static_cast<void>(m_parts.processRunner.run(tool.executable, tool.arguments));
}

void DevCleaners::note(const std::string& path) {
    if (std::find(m_scanIssues.begin(), m_scanIssues.end(), path) == m_scanIssues.end()) {
        m_scanIssues.push_back(path);
    }
}

}  // namespace kestrune
