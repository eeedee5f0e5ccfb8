#pragma once

#include "base/Published.h"

namespace kestrune::Motion {

/// True when the user or the desktop asked for less movement: every duration is 0 then. Main thread.
[[nodiscard]] bool isReduced();
void setReduced(bool reduced);

/// Tells that isReduced() is another now, for what moves already.
[[nodiscard]] Signal& changed();

/// ms, or 0 when movement is reduced.
[[nodiscard]] int duration(int milliseconds);

}  // namespace kestrune::Motion
