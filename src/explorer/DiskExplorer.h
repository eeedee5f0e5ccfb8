#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/Clock.h"
#include "explorer/DiskExplorerProgress.h"
#include "explorer/DiskExplorerResult.h"
#include "platform/DirectoryWalker.h"

namespace kestrune {

/// Limits of one scan, and whom it asks and tells. The functions may be empty; they are called from any thread.
struct DiskExplorerRequest {
    std::int64_t fileLimit = 250'000;                           ///< entries; negative: none
    std::int64_t largestLimit = 50;                             ///< files; negative: 0
    Seconds timeLimit{45.0};                                    ///< negative: 0
    std::int64_t folderLimit = -1;                              ///< direct children in the result; negative: all
    std::function<bool()> cancelled;                            ///< several threads may ask at once
    std::function<void(const DiskExplorerProgress&)> progress;  ///< about five times a second, one call at a time
};

/// Measures a folder: which of its direct children take the most space, and which single files are the largest. Only
/// reads; hidden files count, links and other file systems do not.
namespace DiskExplorer {

/// Scans folder, an absolute path; the paths found begin with its standard form. A folder that does not exist and a
/// path that is not absolute give the empty result; a folder that cannot be listed counts as one skipped location. The
/// time limit runs on the clock's uptime. Any thread.
[[nodiscard]] DiskExplorerResult scan(DirectoryWalker& walker, const Clock& clock, const std::string& folder,
                                      const DiskExplorerRequest& request = {});

}  // namespace DiskExplorer

}  // namespace kestrune
