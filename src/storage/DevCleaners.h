#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "platform/DirectoryWalker.h"
#include "platform/FileQueries.h"
#include "platform/ProcessRunner.h"
#include "platform/SystemTools.h"
#include "platform/Trash.h"
#include "storage/CleanTarget.h"

namespace kestrune {

/// One location of the catalog; relPath is below the home folder.
struct CatalogEntry {
    std::string_view title;
    std::string_view subtitle;
    std::string_view relPath;
};

/// Why a target was not moved. The domain is "Kestrune" for codes 1 to 3, else the system's, with code 0.
struct CleanError {
    std::string domain;
    int code = 0;
    std::string localizedDescription;

    bool operator==(const CleanError&) const = default;
};

/// What DevCleaners works with. Everything outlives it.
struct DevCleanersParts {
    FileQueries& fileQueries;
    DirectoryWalker& directoryWalker;
    Trash& trash;
    ProcessRunner& processRunner;
    SystemTools& systemTools;
};

/// Owns the catalog of cache and model folders below one home folder: the only places that are ever measured for
/// cleanup or moved. Scanning and moving happen on one work queue; the static functions are pure but for
/// isAllowedPath, which reads links.
class DevCleaners final {
public:
    using Cancelled = std::function<bool()>;

    /// Told before a location is measured: how many came before, how many there are, and its title.
    using Progress = std::function<void(int done, int total, std::string_view title)>;

    static const std::span<const CatalogEntry> aiCandidates;
    static const std::span<const CatalogEntry> devCandidates;
    static const std::span<const CatalogEntry> sysCandidates;

    /// Parents of catalog entries that are never targets themselves.
    static const std::span<const std::string_view> forbiddenTargets;

    /// home is taken as given.
    DevCleaners(std::string home, const DevCleanersParts& parts);

    [[nodiscard]] const std::string& home() const { return m_home; }

    /// The absolute path of a catalog entry.
    [[nodiscard]] std::string path(const CatalogEntry& entry) const;

    /// True only when path is exactly one of the catalog's locations below home and no component of it is a link.
    [[nodiscard]] static bool isAllowedPath(const std::string& path, const std::string& home,
                                            const FileQueries& fileQueries);

    [[nodiscard]] bool isAllowedPath(const std::string& path) const;

    /// targets without those inside another of them, shortest path first.
    [[nodiscard]] static std::vector<CleanTarget> nonOverlapping(std::vector<CleanTarget> targets);

    /// Allocated bytes below a folder, or the length of a single file; 0 when there is nothing. What could not be
    /// read puts path into scanIssues.
    [[nodiscard]] std::int64_t calculateSize(const std::string& path, const Cancelled& cancelled = {});

    /// Measures the whole catalog: what is larger than its category's floor, largest first. Clears scanIssues first.
    [[nodiscard]] std::vector<CleanTarget> scanAllTargets(const Cancelled& cancelled = {},
                                                          const Progress& progress = {});

    /// Catalog paths that the last scan could not read completely.
    [[nodiscard]] const std::vector<std::string>& scanIssues() const { return m_scanIssues; }

    /// Titles of catalog entries that exist but that the user may not read, in catalog order.
    [[nodiscard]] std::vector<std::string> unreadableTitles() const;

    /// The item that lies at target's place now, to be handed to cleanReviewedTarget after the user confirmed it.
    [[nodiscard]] std::optional<FileIdentity> identity(const CleanTarget& target);

    /// Checks target once more and moves it to the Trash: the path it has there, or why it did not move. With
    /// expected, anything but that very item is refused with code 1.
    [[nodiscard]] Result<std::string, CleanError> cleanReviewedTarget(const CleanTarget& target,
                                                                      const std::optional<FileIdentity>& expected = {});

    /// False at once when permanent: nothing is ever deleted.
    bool cleanTarget(const CleanTarget& target, bool permanent);

    /// Removes simulators that are no longer supported. Not part of a scan or a cleanup.
    void pruneUnavailableSimulators();

private:
    struct Listing;

    void note(const std::string& path);

    std::string m_home;
    DevCleanersParts m_parts;
    std::vector<std::string> m_scanIssues;
};

}  // namespace kestrune
