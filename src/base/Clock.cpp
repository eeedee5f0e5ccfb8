#include "base/Clock.h"

namespace kestrune {

WallTime SystemClock::now() const {
    return std::chrono::time_point_cast<Seconds>(std::chrono::system_clock::now());
}

Seconds SystemClock::uptime() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

}  // namespace kestrune
