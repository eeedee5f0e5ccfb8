#include "ui/TelemetryTiles.h"

#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

const Sparkline& chart(const TileContent& tile) {
    return std::get<Sparkline>(tile.drawing);
}

}  // namespace

TEST(TelemetryTiles, networkIsSampledUntilTwoReadingsAreThere) {
    StoreFixture fixture;
    const TileContent tile = telemetryTiles(fixture.store()).at(4);
    EXPECT_EQ(tile.value, QStringLiteral("Sampling…"));
    EXPECT_EQ(tile.detail, QStringLiteral("Wi-Fi / Ethernet interfaces"));
    EXPECT_FALSE(tile.isKnown);
}

TEST(TelemetryTiles, ratesAreWholeBytesInFileStyle) {
    StoreFixture fixture;
    fixture.store().downloadRate.set(2'400'000.9);
    fixture.store().uploadRate.set(318'000.2);
    const TileContent tile = telemetryTiles(fixture.store()).at(4);
    EXPECT_EQ(tile.value + QLatin1Char(' ') + tile.unit, QStringLiteral("2.4 MB/s ↓"));
    EXPECT_EQ(tile.detail, QStringLiteral("318 KB/s ↑ · Wi-Fi / Ethernet"));
}

TEST(TelemetryTiles, machineWithoutBatterySaysSo) {
    StoreFixture fixture;
    const TileContent tile = telemetryTiles(fixture.store()).at(5);
    EXPECT_EQ(tile.value, QStringLiteral("Not available"));
    EXPECT_EQ(tile.detail, QStringLiteral("No battery reported"));
}

TEST(TelemetryTiles, pressureLightsAStepForEachLevel) {
    StoreFixture fixture;
    const auto steps = [&](const char* level) {
        fixture.store().pressure.set(level);
        return std::get<TileLevel>(telemetryTiles(fixture.store()).at(1).drawing).steps;
    };
    EXPECT_EQ(steps("Observing"), 0);
    EXPECT_EQ(steps("Normal"), 1);
    EXPECT_EQ(steps("Elevated"), 2);
    EXPECT_EQ(steps("High"), 3);
}

TEST(TelemetryTiles, availableMemoryHasOneDecimal) {
    StoreFixture fixture;
    fixture.store().availableMemoryGB.set(11.84);
    EXPECT_EQ(telemetryTiles(fixture.store()).at(0).detail, QStringLiteral("11.8 GB available"));
}

TEST(TelemetryTiles, linesLieByTimeAndSkipMissingReadings) {
    StoreFixture fixture;
    fixture.store().downloadRate.set(32'000);
    fixture.store().uploadRate.set(0);
    fixture.store().telemetryHistory.set(
        {{Seconds{0}, 10, 5, {}, {}}, {Seconds{150}, 20, 5, 32'000.0, 0.0}, {Seconds{300}, 100, 5, 16'000.0, 0.0}});
    const auto tiles = telemetryTiles(fixture.store());
    ASSERT_EQ(chart(tiles.at(0)).line.size(), 3);
    EXPECT_DOUBLE_EQ(chart(tiles.at(0)).line.at(1).x(), 0.5);
    EXPECT_DOUBLE_EQ(chart(tiles.at(0)).line.at(2).y(), 1.0);
    ASSERT_EQ(chart(tiles.at(4)).line.size(), 2);
    EXPECT_DOUBLE_EQ(chart(tiles.at(4)).line.at(0).y(), 0.5) << "a quiet network is not blown up to full height";
}

}  // namespace kestrune
