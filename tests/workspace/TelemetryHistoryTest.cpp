#include "workspace/TelemetryHistory.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

TelemetrySample sampleAt(double seconds, int memoryPercent = 50) {
    return {Seconds{seconds}, memoryPercent, 10, std::nullopt, std::nullopt};
}

}  // namespace

TEST(TelemetryHistory, samplesAreKeptInTheirOrder) {
    const auto history = appended(appended({}, sampleAt(10)), sampleAt(15));
    EXPECT_EQ(history, (std::vector<TelemetrySample>{sampleAt(10), sampleAt(15)}));
}

TEST(TelemetryHistory, fiveMinutesAreKept) {
    auto history = appended({sampleAt(0), sampleAt(5)}, sampleAt(300));
    EXPECT_EQ(history.size(), 3U);
    history = appended(history, sampleAt(305));
    EXPECT_EQ(history.front(), sampleAt(5));
    EXPECT_EQ(history.size(), 3U);
}

TEST(TelemetryHistory, aSampleLessThanASecondAfterTheLastReplacesIt) {
    const auto history = appended({sampleAt(10, 50)}, sampleAt(10.9, 60));
    EXPECT_EQ(history, (std::vector<TelemetrySample>{sampleAt(10.9, 60)}));
}

TEST(TelemetryHistory, aSampleAfterExactlyOneSecondIsAdded) {
    EXPECT_EQ(appended({sampleAt(10)}, sampleAt(11)).size(), 2U);
}

TEST(TelemetryHistory, afterALongPauseOnlyTheNewSampleIsLeft) {
    EXPECT_EQ(appended({sampleAt(10), sampleAt(15)}, sampleAt(9000)), (std::vector<TelemetrySample>{sampleAt(9000)}));
}

}  // namespace kestrune
