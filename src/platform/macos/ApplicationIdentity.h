#pragma once

#include <cstdint>

#include "platform/RunningApplications.h"

/// Whether an application is still the one that was listed. Any thread.
namespace kestrune::ApplicationIdentity {

/// True for a process that is still the one listed and runs the same program, both known, belongs to user and is not
/// this program: the one that may be ended.
[[nodiscard]] bool mayBeEnded(const RunningApplication& application, std::int32_t ownProcess, std::uint32_t user);

/// True once that very process has ended or runs another program, whoever has its number now.
[[nodiscard]] bool hasEnded(const RunningApplication& application);

}  // namespace kestrune::ApplicationIdentity
