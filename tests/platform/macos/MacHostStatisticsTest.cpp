#include "platform/macos/MacHostStatistics.h"

#include <gtest/gtest.h>

#include <net/if.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <limits>

#include "engine/MacTelemetry.h"
#include "engine/TelemetryFormulas.h"
#include "tests/platform/macos/fake_darwin/FakeInterfaces.h"
#include "tests/platform/macos/fake_darwin/FakeMach.h"
#include "tests/platform/macos/fake_darwin/FakeSysctl.h"

namespace kestrune {
namespace {

class MacHostStatisticsTest : public testing::Test {
protected:
    void SetUp() override {
        FakeMach::reset();
        FakeInterfaces::reset();
        FakeSysctl::reset();
    }

    void TearDown() override { EXPECT_EQ(FakeInterfaces::state().lists, 0); }

    static void setBootTime(timeval boot) {
        FakeSysctl::state().byName["kern.boottime"].assign(reinterpret_cast<const char*>(&boot), sizeof boot);
    }

    static std::optional<NetworkCounters> counters() {
        return MacTelemetry::networkCounters(MacHostStatistics().networkInterfaces());
    }

    FakeMach& mach = FakeMach::state();
    FakeInterfaces& interfaces = FakeInterfaces::state();
};

TEST_F(MacHostStatisticsTest, memoryIsTheKernelsPagesByClass) {
    mach.memory.free_count = 1;
    mach.memory.active_count = 2;
    mach.memory.wire_count = 3;
    mach.memory.inactive_count = 4;
    mach.memory.speculative_count = 5;
    mach.memory.compressor_page_count = 4294967295U;
    EXPECT_EQ(MacHostStatistics().memory(), (MemoryPages{1, 2, 3, 4, 5, 4294967295U, 16384}));
    EXPECT_EQ(mach.roomForMemory, 104U);
}

TEST_F(MacHostStatisticsTest, sixteenThousandPagesOfOneKindAre256Mebibytes) {
    mach.memory.free_count = 16384;
    EXPECT_EQ(TelemetryFormulas::vmStat(MacHostStatistics().memory()).free, 256);
}

TEST_F(MacHostStatisticsTest, kernelThatKnowsNoCompressorTellsNoCompressedPages) {
    mach.memory.active_count = 7;
    mach.memory.compressor_page_count = 9;
    mach.memoryWords = 24;
    EXPECT_EQ(MacHostStatistics().memory(), (MemoryPages{0, 7, 0, 0, 0, 0, 16384}));
}

TEST_F(MacHostStatisticsTest, failedCallsTellNothing) {
    mach.memoryFails = true;
    mach.ticksFail = true;
    interfaces.fails = true;
    MacHostStatistics statistics;
    EXPECT_EQ(statistics.memory(), std::nullopt);
    EXPECT_EQ(statistics.cpuTicks(), std::nullopt);
    EXPECT_EQ(statistics.bootTime(), std::nullopt);
    EXPECT_EQ(statistics.networkInterfaces(), std::nullopt);
    EXPECT_EQ(TelemetryFormulas::vmStat(statistics.memory()), VMStat());
}

TEST_F(MacHostStatisticsTest, processorTimeIsReadByState) {
    mach.ticks.cpu_ticks[CPU_STATE_USER] = 10;
    mach.ticks.cpu_ticks[CPU_STATE_SYSTEM] = 20;
    mach.ticks.cpu_ticks[CPU_STATE_IDLE] = 4294967295U;
    mach.ticks.cpu_ticks[CPU_STATE_NICE] = 40;
    EXPECT_EQ(MacHostStatistics().cpuTicks(), (CpuTicks{10, 20, 4294967295.0, 40}));
}

TEST_F(MacHostStatisticsTest, firstReadingOfTheProcessorIsTheAverageSinceBootAndTheNextRightAfterIs0) {
    mach.ticks.cpu_ticks[CPU_STATE_USER] = 20;
    mach.ticks.cpu_ticks[CPU_STATE_SYSTEM] = 4;
    mach.ticks.cpu_ticks[CPU_STATE_NICE] = 1;
    mach.ticks.cpu_ticks[CPU_STATE_IDLE] = 75;
    MacHostStatistics statistics;
    const std::optional<CpuTicks> first = statistics.cpuTicks();
    ASSERT_TRUE(first);
    EXPECT_EQ(TelemetryFormulas::cpuLoadPercentage(std::nullopt, *first), 25);
    const std::optional<CpuTicks> second = statistics.cpuTicks();
    ASSERT_TRUE(second);
    EXPECT_EQ(TelemetryFormulas::cpuLoadPercentage(first, *second), 0);
}

TEST_F(MacHostStatisticsTest, everyRightToTheHostIsGivenBack) {
    {
        MacHostStatistics statistics;
        for (int reading = 0; reading < 3; ++reading) {
            EXPECT_TRUE(statistics.memory());
            EXPECT_TRUE(statistics.cpuTicks());
        }
        EXPECT_EQ(mach.hostRights, 1);
    }
    EXPECT_EQ(mach.hostRights, 0);
}

TEST_F(MacHostStatisticsTest, withoutTheHostsPortThereAreNoFiguresAndNothingIsGivenBack) {
    mach.hasHost = false;
    {
        MacHostStatistics statistics;
        EXPECT_EQ(statistics.memory(), std::nullopt);
        EXPECT_EQ(statistics.cpuTicks(), std::nullopt);
    }
    EXPECT_EQ(mach.hostRights, 0);
}

TEST_F(MacHostStatisticsTest, bootTimeIsInWholeSeconds) {
    setBootTime({1700000000, 999999});
    EXPECT_EQ(MacHostStatistics().bootTime(), 1700000000);
}

TEST_F(MacHostStatisticsTest, bootTimeOfAnotherLengthIsNoBootTime) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{8}, std::size_t{15}, std::size_t{17}}) {
        FakeSysctl::state().byName["kern.boottime"] = std::string(length, '\1');
        EXPECT_EQ(MacHostStatistics().bootTime(), std::nullopt) << length;
    }
}

TEST_F(MacHostStatisticsTest, onlyLinksAreInterfaces) {
    interfaces.entries = {{"en0", IFF_UP, AF_LINK, {{10, 20}}},
                          {"en0", IFF_UP, AF_INET, {{30, 40}}},
                          {"en0", IFF_UP, AF_INET6, {}},
                          {"en0", IFF_UP, {}, {{50, 60}}}};
    EXPECT_EQ(MacHostStatistics().networkInterfaces(),
              (std::vector<NetworkInterface>{{"en0", true, true, InterfaceBytes{10, 20}}}));
}

TEST_F(MacHostStatisticsTest, onlyInterfacesWhoseNamesBeginWithEnCount) {
    interfaces.entries = {{"lo0", IFF_UP, AF_LINK, {{1, 1}}},     {"utun3", IFF_UP, AF_LINK, {{2, 2}}},
                          {"bridge0", IFF_UP, AF_LINK, {{4, 4}}}, {"awdl0", IFF_UP, AF_LINK, {{8, 8}}},
                          {"en0", IFF_UP, AF_LINK, {{100, 10}}},  {"en12", IFF_UP, AF_LINK, {{200, 20}}},
                          {"Xen0", IFF_UP, AF_LINK, {{16, 16}}},  {"e", IFF_UP, AF_LINK, {{32, 32}}}};
    EXPECT_EQ(counters(), (NetworkCounters{300, 30}));
}

TEST_F(MacHostStatisticsTest, interfaceThatIsDownOrTellsNoBytesDoesNotCount) {
    interfaces.entries = {{"en0", IFF_UP, AF_LINK, {}}, {"en1", 0, AF_LINK, {{5, 5}}}};
    const std::optional<std::vector<NetworkInterface>> told = MacHostStatistics().networkInterfaces();
    EXPECT_EQ(told, (std::vector<NetworkInterface>{{"en0", true, true, std::nullopt},
                                                   {"en1", true, false, InterfaceBytes{5, 5}}}));
    EXPECT_EQ(MacTelemetry::networkCounters(told), std::nullopt);
}

TEST_F(MacHostStatisticsTest, emptyListOfInterfacesIsNoList) {
    EXPECT_EQ(MacHostStatistics().networkInterfaces(), std::nullopt);
}

TEST_F(MacHostStatisticsTest, sumsOfFullCountersGoBeyond32Bits) {
    constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    interfaces.entries = {{"en0", IFF_UP, AF_LINK, {{most, most}}}, {"en1", IFF_UP, AF_LINK, {{most, 1}}}};
    EXPECT_EQ(counters(), (NetworkCounters{8589934590U, 4294967296U}));
}

TEST_F(MacHostStatisticsTest, ratesAcrossAWrapOfOneInterfaceAreAbsentForThatSample) {
    interfaces.entries = {{"en0", IFF_UP, AF_LINK, {{4294967000U, 5000}}}, {"en1", IFF_UP, AF_LINK, {{1000, 0}}}};
    const std::optional<NetworkCounters> before = counters();
    interfaces.entries[0].counters = {204, 6000};
    interfaces.entries[1].counters = {2000, 0};
    const std::optional<NetworkCounters> wrapped = counters();
    interfaces.entries[0].counters = {1204, 7000};
    const std::optional<NetworkCounters> after = counters();
    ASSERT_TRUE(before && wrapped && after);
    EXPECT_EQ(MacTelemetry::rates(*before, *wrapped, 5), std::nullopt);
    EXPECT_EQ(MacTelemetry::rates(*wrapped, *after, 5), (NetworkRates{200, 200}));
}

}  // namespace
}  // namespace kestrune
