#pragma once

#include <cstdint>
#include <vector>

#include "platform/ProcessListing.h"
#include "workspace/RunningItem.h"

namespace kestrune {

/// The rows of a listing, largest memory first: regular applications by their names, and of the other processes those
/// of developer tools and those that listen on a port. Without the process ownPID. An application that the listing
/// does not hold, or holds under another start time, is no row.
[[nodiscard]] std::vector<RunningItem> runningItems(const ProcessSnapshot& snapshot,
                                                    const std::vector<RunningApplication>& regularApplications,
                                                    std::int32_t ownPID);

}  // namespace kestrune
