#pragma once

#include <chrono>

#include "base/Clock.h"

namespace kestrune {

/// How far the user's local time is ahead of UTC at time.
[[nodiscard]] std::chrono::seconds localOffset(WallTime time);

}  // namespace kestrune
