#include "workspace/TelemetryHistory.h"

namespace kestrune {

std::vector<TelemetrySample> appended(std::vector<TelemetrySample> history, const TelemetrySample& sample) {
    if (!history.empty() && sample.time - history.back().time < Seconds{1}) {
        history.pop_back();
    }
    std::erase_if(history,
                  [&sample](const TelemetrySample& old) { return sample.time - old.time > telemetryHistorySpan; });
    history.push_back(sample);
    return history;
}

}  // namespace kestrune
