#include "ui/LocalTime.h"

#include <QDateTime>
#include <cmath>

namespace kestrune {

std::chrono::seconds localOffset(WallTime time) {
    const auto seconds = static_cast<qint64>(std::floor(time.time_since_epoch().count()));
    return std::chrono::seconds(QDateTime::fromSecsSinceEpoch(seconds).offsetFromUtc());
}

}  // namespace kestrune
