#include "engine/TelemetryFormulas.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace kestrune {
namespace {

using namespace TelemetryFormulas;

constexpr std::int64_t gigabyte = 1'000'000'000;

TEST(TelemetryFormulas, percentTruncatesAndIsExactForWholeNumbers) {
    EXPECT_EQ(percent(29, 100), 29);
    EXPECT_EQ(percent(2, 3), 66);
    EXPECT_EQ(percent(0, 0), 0);
    EXPECT_EQ(percent(5, -1), 0);
    EXPECT_EQ(percent(5, std::numeric_limits<double>::quiet_NaN()), 0);
    for (int whole = 1; whole <= 1000; ++whole) {
        for (int part = 0; part <= whole; ++part) {
            ASSERT_EQ(percent(part, whole), part * 100 / whole) << part << " of " << whole;
        }
    }
}

TEST(TelemetryFormulas, pagesBecomeMebibytesClassByClass) {
    MemoryPages pages;
    pages.free = 256;
    pages.active = 512;
    pages.wired = 768;
    pages.inactive = 1024;
    pages.speculative = 1280;
    pages.compressed = 1;
    pages.pageSize = 4096;
    EXPECT_EQ(vmStat(pages), (VMStat{1, 2, 3, 4, 5, 1.0 / 256}));
}

TEST(TelemetryFormulas, unreadableMemoryIsSixZerosAndZeroPercent) {
    EXPECT_EQ(vmStat(std::nullopt), VMStat{});
    EXPECT_EQ(memorySummary(VMStat{}), MemorySummary{});
}

TEST(TelemetryFormulas, inactiveAndSpeculativeCountAsFreeAndCompressedAsUsed) {
    const MemorySummary summary =
        memorySummary({.free = 10, .active = 20, .wired = 30, .inactive = 5, .spec = 1, .compressed = 4});
    EXPECT_DOUBLE_EQ(summary.freeMB, 16);
    EXPECT_DOUBLE_EQ(summary.totalMB, 70);
    EXPECT_EQ(summary.pct, 77);
}

TEST(TelemetryFormulas, firstProcessorSampleGivesTheAverageSinceBoot) {
    EXPECT_EQ(cpuLoadPercentage(std::nullopt, {.user = 10, .system = 5, .idle = 80, .nice = 5}), 20);
}

TEST(TelemetryFormulas, firstProcessorSampleOfAMachineWithoutTicksIsZero) {
    EXPECT_EQ(cpuLoadPercentage(std::nullopt, {}), 0);
    // A total below one tick counts as one tick.
    EXPECT_EQ(cpuLoadPercentage(std::nullopt, {.user = 0.25, .system = 0, .idle = 0.25, .nice = 0}), 25);
}

TEST(TelemetryFormulas, twoEqualProcessorSamplesGiveZero) {
    const CpuTicks ticks{100, 50, 900, 3};
    EXPECT_EQ(cpuLoadPercentage(ticks, ticks), 0);
}

TEST(TelemetryFormulas, laterProcessorSamplesCompareWithThePreviousOne) {
    EXPECT_EQ(cpuLoadPercentage(CpuTicks{100, 50, 900, 3}, {110, 60, 960, 8}), 29);
}

TEST(TelemetryFormulas, processorCountersThatGoBackwardsCountAsZero) {
    EXPECT_EQ(cpuLoadPercentage(CpuTicks{100, 50, 900, 3}, {90, 60, 910, 3}), 50);
    EXPECT_EQ(cpuLoadPercentage(CpuTicks{100, 50, 900, 3}, {110, 50, 800, 3}), 100);
    EXPECT_EQ(cpuLoadPercentage(CpuTicks{100, 50, 900, 3}, {90, 40, 800, 2}), 0);
}

TEST(TelemetryFormulas, diskIsInWholeGigabytesAndPercentOfThose) {
    const DiskSummary summary = diskSummary({500 * gigabyte + 999, 355 * gigabyte});
    EXPECT_EQ(summary, (DiskSummary{145, 500, 29, 355}));
    EXPECT_EQ(diskSummary({3 * gigabyte, gigabyte + 1}), (DiskSummary{1, 3, 33, 1}));
}

TEST(TelemetryFormulas, diskBelowOneGigabyteReportsTotalZeroAndZeroPercent) {
    EXPECT_EQ(diskSummary({999'999'999, 0}), DiskSummary{});
    EXPECT_EQ(diskSummary({gigabyte, 0}), (DiskSummary{1, 1, 100, 0}));
}

TEST(TelemetryFormulas, missingDiskValuesCountAsZero) {
    EXPECT_EQ(diskSummary({std::nullopt, std::nullopt}), DiskSummary{});
    EXPECT_EQ(diskSummary({100 * gigabyte, std::nullopt}), (DiskSummary{100, 100, 100, 0}));
    EXPECT_EQ(diskSummary({std::nullopt, 100 * gigabyte}), (DiskSummary{0, 0, 0, 100}));
}

TEST(TelemetryFormulas, extremeDiskValuesStayDefined) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    EXPECT_GT(diskSummary({most, least}).usedGB, 0);
    EXPECT_EQ(diskSummary({least, most}).usedGB, 0);
}

TEST(TelemetryFormulas, dfFallbackDividesKilobyteBlocksByAMillion) {
    constexpr std::string_view output =
        "Filesystem     1K-blocks     Used Available Use% Mounted on\n"
        "/dev/root       51290592 15387177  33272236  32% /\n";
    EXPECT_EQ(diskSummaryFromDf(output), (DiskSummary{15, 51, 29, 33}));
}

TEST(TelemetryFormulas, dfPercentComesFromUntruncatedBlocks) {
    // In whole gigabytes it would be 0 of 1.
    EXPECT_EQ(diskSummaryFromDf("h\n/dev/a 1999999 999999 1000000 50% /\n"), (DiskSummary{0, 1, 49, 1}));
    EXPECT_EQ(diskSummaryFromDf("h\n/dev/a 999999 999998 1 99% /\n"), DiskSummary{});
}

TEST(TelemetryFormulas, dfOutputThatDoesNotLookRightIsZeros) {
    for (const std::string_view output :
         {"", "only one line", "header\n", "header\n/dev/a 1 2", "header\n/dev/a x 2000000 3000000",
          "header\n/dev/a 5000000 2x 3000000", "header\n/dev/a 5000000 2000000 -", "header\n/dev/a nan 2000000 3000000",
          "header\n/dev/a inf 2000000 3000000", "header\n\n/dev/a 5000000 2000000 3000000"}) {
        EXPECT_EQ(diskSummaryFromDf(output), DiskSummary{}) << output;
    }
}

TEST(TelemetryFormulas, dfNumbersBeyondEveryDiskStayDefined) {
    EXPECT_GT(diskSummaryFromDf("h\n/dev/a 1e300 1e300 1e300 1% /\n").totalGB, 0);
    EXPECT_EQ(diskSummaryFromDf("h\n/dev/a 2e6 2.5e6 -3e6 1% /\n"), (DiskSummary{2, 2, 125, -3}));
}

TEST(TelemetryFormulas, uptimeNamesDaysOnlyFromTheFirstFullDay) {
    EXPECT_EQ(uptimeText(0), "0h 0m");
    EXPECT_EQ(uptimeText(59), "0h 0m");
    EXPECT_EQ(uptimeText(300), "0h 5m");
    EXPECT_EQ(uptimeText(86'399), "23h 59m");
    EXPECT_EQ(uptimeText(86'400), "1d 0h 0m");
    EXPECT_EQ(uptimeText(3 * 86'400 + 4 * 3600 + 12 * 60 + 59), "3d 4h 12m");
    EXPECT_EQ(uptimeText(12 * 86'400 + 180), "12d 0h 3m");
    EXPECT_EQ(uptimeText(-5), "0h 0m");
}

TEST(TelemetryFormulas, randomProcessorSamplesStayBetweenZeroAndAHundred) {
    std::mt19937_64 random(20240607);
    std::uniform_real_distribution<double> ticks(0, 1e15);
    const auto sample = [&] { return CpuTicks{ticks(random), ticks(random), ticks(random), ticks(random)}; };
    for (int i = 0; i < 100'000; ++i) {
        const CpuTicks previous = sample();
        const CpuTicks current = sample();
        const int load = cpuLoadPercentage(previous, current);
        ASSERT_GE(load, 0);
        ASSERT_LE(load, 100);
    }
}

}  // namespace
}  // namespace kestrune
