#pragma once

#include <cstdint>

#include "platform/RunningApplications.h"

/// What applications are told apart by before one is closed. Pure functions.
namespace kestrune::AppClosing {

/// True for an application known to need much memory or processor time: by its identifier, or by its name whatever its
/// case.
[[nodiscard]] bool isHeavy(const RunningApplication& application);

/// True when found is the process that started at startTime, and not a later one with the same number. A start time of
/// 0 is unknown and taken for the same.
[[nodiscard]] bool isSameProcess(const RunningApplication& found, std::uint64_t startTime);

}  // namespace kestrune::AppClosing
