#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileStore.h"
#include "workspace/ActivityEntry.h"

/// The log's file: a JSON array of entries, newest first.
namespace kestrune::ActivityLog {

inline constexpr std::size_t maxEntries = 100;

/// The one place of the log below home.
[[nodiscard]] std::string path(const std::string& home);

/// entries with entry before them, the oldest dropped beyond maxEntries.
[[nodiscard]] std::vector<ActivityEntry> withEntry(std::vector<ActivityEntry> entries, const ActivityEntry& entry);

/// Dates are seconds since 2001-01-01 00:00:00 UTC; "trashPath" is left out when there is none, or when it is not
/// valid UTF-8 and so could not be read back as the same path.
[[nodiscard]] std::string encode(const std::vector<ActivityEntry>& entries);

/// Nothing unless bytes is an array in which every entry has every required field in its type.
[[nodiscard]] std::optional<std::vector<ActivityEntry>> decode(std::string_view bytes);

/// The newest maxEntries entries below home; none when the file is missing or cannot be read or decoded.
[[nodiscard]] std::vector<ActivityEntry> load(const FileStore& files, const std::string& home);

/// Durable when true.
[[nodiscard]] bool save(FileStore& files, const std::string& home, const std::vector<ActivityEntry>& entries);

}  // namespace kestrune::ActivityLog
