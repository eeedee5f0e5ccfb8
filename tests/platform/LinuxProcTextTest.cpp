#include "platform/linux/LinuxProcText.h"

#include <gtest/gtest.h>

#include <random>

namespace kestrune {
namespace {

// Recorded on a laptop with zswap, shortened to the lines that are read and a few that are not.
constexpr std::string_view laptop =
    "MemTotal:       16071024 kB\nMemFree:         1022332 kB\nMemAvailable:    7213288 kB\n"
    "Buffers:          512000 kB\nCached:          6300000 kB\nSwapCached:        12000 kB\n"
    "Active(anon):    4000000 kB\nUnevictable:      300000 kB\nZswap:            200000 kB\nZswapped:         600000 "
    "kB\n"
    "Shmem:            700000 kB\nSReclaimable:     420000 kB\nSUnreclaim:       180000 kB\nKernelStack:       20000 "
    "kB\n"
    "PageTables:        60000 kB\nPercpu:             5000 kB\nHugePages_Total:       0\nHugetlb:               0 kB\n";

std::uint64_t sum(const MemoryPages& pages) {
    return pages.free + pages.active + pages.wired + pages.inactive + pages.speculative + pages.compressed;
}

TEST(LinuxProcText, usedMemoryIsWhatIsNotAvailable) {
    const MemoryPages pages = LinuxProcText::memory(laptop).value();
    EXPECT_EQ(pages.pageSize, 1024U);
    EXPECT_EQ(pages.free, 1'022'332U);
    EXPECT_EQ(pages.free + pages.inactive + pages.speculative, 7'213'288U);
    EXPECT_EQ(pages.compressed, 200'000U);
    EXPECT_EQ(pages.wired, 565'000U);
    EXPECT_EQ(sum(pages), 16'071'024U);
}

TEST(LinuxProcText, availableMemoryBelowFreeMemoryCountsAsTold) {
    const MemoryPages pages =
        LinuxProcText::memory("MemTotal: 24684084 kB\nMemFree: 24469344 kB\nMemAvailable: 24403744 kB\n").value();
    EXPECT_EQ(pages.free, 24'403'744U);
    EXPECT_EQ(pages.inactive, 0U);
    EXPECT_EQ(sum(pages), 24'684'084U);
}

TEST(LinuxProcText, oldKernelsThatDoNotEstimateAvailableMemoryAreHelped) {
    const MemoryPages pages = LinuxProcText::memory(
                                  "MemTotal: 1000 kB\nMemFree: 100 kB\nBuffers: 50 kB\nCached: 300 kB\n"
                                  "Shmem: 40 kB\nSReclaimable: 20 kB\n")
                                  .value();
    EXPECT_EQ(pages.free, 100U);
    EXPECT_EQ(pages.inactive, 330U);
    EXPECT_EQ(sum(pages), 1000U);
}

TEST(LinuxProcText, memoryIsAbsentWithoutItsTwoVitalLines) {
    EXPECT_EQ(LinuxProcText::memory(""), std::nullopt);
    EXPECT_EQ(LinuxProcText::memory("MemTotal: 1000 kB\n"), std::nullopt);
    EXPECT_EQ(LinuxProcText::memory("MemFree: 1000 kB\nMemAvailable: 5 kB\n"), std::nullopt);
    EXPECT_EQ(LinuxProcText::memory("MemTotal: many kB\nMemFree: 1 kB\n"), std::nullopt);
    EXPECT_EQ(LinuxProcText::memory("MemTotal: 99999999999999999999999 kB\nMemFree: 1 kB\n"), std::nullopt);
    EXPECT_EQ(LinuxProcText::memory("no colon\n:\nMemTotal"), std::nullopt);
}

TEST(LinuxProcText, contradictingMemoryFiguresStillAddUp) {
    const MemoryPages pages =
        LinuxProcText::memory("MemTotal: 1000 kB\nMemFree: 5000 kB\nMemAvailable: 7000 kB\nUnevictable: 90 kB\n")
            .value();
    EXPECT_EQ(sum(pages), 1000U);
    EXPECT_EQ(pages.free, 1000U);
}

TEST(LinuxProcText, damagedMemoryTextNeverBreaksTheSum) {
    std::mt19937 random(5);
    for (int i = 0; i < 20'000; ++i) {
        std::string text(laptop);
        for (int change = 0; change < 6; ++change) {
            text[random() % text.size()] = static_cast<char>(random() % 256);
        }
        const std::optional<MemoryPages> pages = LinuxProcText::memory(text);
        if (pages) {
            ASSERT_EQ(sum(*pages) - pages->inactive - pages->free, pages->active + pages->wired + pages->compressed);
        }
    }
}

TEST(LinuxProcText, processorTicksPutWaitingToIdleAndInterruptsToSystem) {
    EXPECT_EQ(LinuxProcText::cpuTicks("cpu  100 20 30 400 50 6 7 8 90 10\ncpu0 1 2 3 4\n"),
              (CpuTicks{100, 51, 450, 20}));
}

TEST(LinuxProcText, processorTicksOfOldKernelsHaveFourFields) {
    EXPECT_EQ(LinuxProcText::cpuTicks("cpu 1 2 3 4"), (CpuTicks{1, 3, 4, 2}));
}

TEST(LinuxProcText, processorTicksThatCannotBeReadAreAbsent) {
    for (const std::string_view text :
         {"", "cpu", "cpu ", "cpu 1 2 3", "cpu0 1 2 3 4 5 6 7 8", "intr 1 2 3 4", "cpu 1 2 three 4 5 6 7 8",
          "cpu 1 2 3 4 x 6 7 8", "cpu 1 -2 3 4 5 6 7 8", "cpu 1 2 3 18446744073709551616 5 6 7 8",
          "cpu 1 2 3 4 99999999999999999999 6 7 8"}) {
        EXPECT_EQ(LinuxProcText::cpuTicks(text), std::nullopt) << text;
    }
}

TEST(LinuxProcText, bootTimeIsFoundBehindTheProcessors) {
    EXPECT_EQ(LinuxProcText::bootTime("cpu  1 2 3 4\nintr 5 6\nctxt 7\nbtime 1795268941\nprocesses 9\n"),
              1'795'268'941);
    EXPECT_EQ(LinuxProcText::bootTime("cpu 1\nbtimes 5\n"), std::nullopt);
    EXPECT_EQ(LinuxProcText::bootTime("btime never\n"), std::nullopt);
    EXPECT_EQ(LinuxProcText::bootTime("btime 18446744073709551615\n"), std::nullopt);
    EXPECT_EQ(LinuxProcText::bootTime(""), std::nullopt);
}

TEST(LinuxProcText, numbersAreWholeDecimalOrHexadecimal) {
    EXPECT_EQ(LinuxProcText::number("18446744073709551615\n"), 18'446'744'073'709'551'615U);
    EXPECT_EQ(LinuxProcText::number("0x1003\n"), 0x1003U);
    EXPECT_EQ(LinuxProcText::number("18446744073709551616\n"), std::nullopt);
    for (const std::string_view text : {"", "\n", "0x", "12 kB", "-1", "1.5", "x"}) {
        EXPECT_EQ(LinuxProcText::number(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace kestrune
