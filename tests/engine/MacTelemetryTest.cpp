#include "engine/MacTelemetry.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrune {
namespace {

NetworkInterface adapter(std::uint64_t received, std::uint64_t sent) {
    return {"en0", true, true, InterfaceBytes{received, sent}};
}

PowerSource source(std::optional<std::int64_t> current, std::optional<std::int64_t> most,
                   std::optional<std::string> state = "AC Power") {
    return {current, most, std::move(state)};
}

TEST(MacTelemetry, sumsEveryPhysicalInterfaceThatIsUp) {
    EXPECT_EQ(MacTelemetry::networkCounters({{adapter(1, 2), adapter(10, 20)}}), (NetworkCounters{11, 22}));
}

TEST(MacTelemetry, interfacesThatAreDownVirtualOrWithoutCountersDoNotCount) {
    NetworkInterface down = adapter(1, 1);
    down.isUp = false;
    NetworkInterface tunnel = adapter(1, 1);
    tunnel.isEthernetOrWiFi = false;
    NetworkInterface silent = adapter(1, 1);
    silent.bytes.reset();
    EXPECT_EQ(MacTelemetry::networkCounters({{down, tunnel, silent}}), std::nullopt);
    EXPECT_EQ(MacTelemetry::networkCounters({{down, adapter(5, 6), tunnel, silent}}), (NetworkCounters{5, 6}));
}

TEST(MacTelemetry, countersAreAbsentWithoutAListOrAnyInterface) {
    EXPECT_EQ(MacTelemetry::networkCounters(std::nullopt), std::nullopt);
    EXPECT_EQ(MacTelemetry::networkCounters(std::vector<NetworkInterface>{}), std::nullopt);
}

TEST(MacTelemetry, anIdleInterfaceIsZeroAndNotAbsent) {
    EXPECT_EQ(MacTelemetry::networkCounters({{adapter(0, 0)}}), NetworkCounters{});
}

TEST(MacTelemetry, ratesAreDifferencesPerSecond) {
    EXPECT_EQ(MacTelemetry::rates({1000, 500}, {6000, 750}, 2.5), (NetworkRates{2000, 100}));
    EXPECT_EQ(MacTelemetry::rates({7, 7}, {7, 7}, 1), NetworkRates{});
}

TEST(MacTelemetry, ratesAreAbsentForOneSampleAcrossACounterWrap) {
    const NetworkCounters before{0xFFFF'FFF0, 100};
    const NetworkCounters wrapped{0x10, 200};
    EXPECT_EQ(MacTelemetry::rates(before, wrapped, 5), std::nullopt);
    EXPECT_EQ(MacTelemetry::rates({100, 0xFFFF'FFF0}, {200, 0x10}, 5), std::nullopt);
    EXPECT_EQ(MacTelemetry::rates(wrapped, {0x15, 205}, 5), (NetworkRates{1, 1}));
}

TEST(MacTelemetry, ratesAreAbsentWhenNoTimePassed) {
    EXPECT_EQ(MacTelemetry::rates({1, 1}, {2, 2}, 0), std::nullopt);
    EXPECT_EQ(MacTelemetry::rates({1, 1}, {2, 2}, -1), std::nullopt);
    EXPECT_EQ(MacTelemetry::rates({1, 1}, {2, 2}, std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST(MacTelemetry, machineWithoutABatteryHasNoReading) {
    EXPECT_EQ(MacTelemetry::battery({}), std::nullopt);
}

TEST(MacTelemetry, powerSourceWithMaxCapacityZeroIsSkipped) {
    EXPECT_EQ(MacTelemetry::battery({source(50, 0)}), std::nullopt);
    EXPECT_EQ(MacTelemetry::battery({source(50, 0), source(1, 2)}), (BatteryReading{50, "On power adapter"}));
}

TEST(MacTelemetry, powerSourceWithoutACapacityIsSkipped) {
    EXPECT_EQ(MacTelemetry::battery({source(std::nullopt, 100), source(50, std::nullopt), source(7, 100)}),
              (BatteryReading{7, "On power adapter"}));
}

TEST(MacTelemetry, firstUsableBatteryWins) {
    EXPECT_EQ(MacTelemetry::battery({source(80, 100), source(20, 100)})->percent, 80);
}

TEST(MacTelemetry, batteryPercentIsTruncatedAndClamped) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(MacTelemetry::battery({source(2, 3)})->percent, 66);
    EXPECT_EQ(MacTelemetry::battery({source(29, 100)})->percent, 29);
    EXPECT_EQ(MacTelemetry::battery({source(105, 100)})->percent, 100);
    EXPECT_EQ(MacTelemetry::battery({source(-5, 100)})->percent, 0);
    EXPECT_EQ(MacTelemetry::battery({source(most, 1)})->percent, 100);
    EXPECT_EQ(MacTelemetry::battery({source(-most, 1)})->percent, 0);
}

TEST(MacTelemetry, everyStateButAcPowerReadsAsOnBattery) {
    EXPECT_EQ(MacTelemetry::battery({source(1, 1, "AC Power")})->source, "On power adapter");
    EXPECT_EQ(MacTelemetry::battery({source(1, 1, "Battery Power")})->source, "On battery");
    EXPECT_EQ(MacTelemetry::battery({source(1, 1, "ac power")})->source, "On battery");
    EXPECT_EQ(MacTelemetry::battery({source(1, 1, std::nullopt)})->source, "On battery");
}

}  // namespace
}  // namespace kestrune
