#include "base/ByteCount.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrune {

TEST(ByteCount, nothingIsZeroKB) {
    EXPECT_EQ(formatByteCount(0), "Zero KB");
}

TEST(ByteCount, smallCountsAreWholeBytes) {
    EXPECT_EQ(formatByteCount(1), "1 byte");
    EXPECT_EQ(formatByteCount(999), "999 bytes");
}

TEST(ByteCount, unitsAreDecimal) {
    EXPECT_EQ(formatByteCount(1000), "1 KB");
    EXPECT_EQ(formatByteCount(12'345), "12 KB");
    EXPECT_EQ(formatByteCount(1'500'000), "1.5 MB");
    EXPECT_EQ(formatByteCount(348'000'000), "348 MB");
    EXPECT_EQ(formatByteCount(18'420'000'000), "18.42 GB");
}

TEST(ByteCount, whatRoundsUpToAThousandMovesToTheNextUnit) {
    EXPECT_EQ(formatByteCount(999'499), "999 KB");
    EXPECT_EQ(formatByteCount(999'500), "1 MB");
    EXPECT_EQ(formatByteCount(999'950'000), "1 GB");
}

TEST(ByteCount, trailingZerosAreDropped) {
    EXPECT_EQ(formatByteCount(2'000'000), "2 MB");
    EXPECT_EQ(formatByteCount(18'400'000'000), "18.4 GB");
    EXPECT_EQ(formatByteCount(10'000'000'000), "10 GB");
}

TEST(ByteCount, theExtremesOfTheTypeAreShown) {
    EXPECT_EQ(formatByteCount(std::numeric_limits<std::int64_t>::max()), "9.22 EB");
    EXPECT_EQ(formatByteCount(std::numeric_limits<std::int64_t>::min()), "-9.22 EB");
    EXPECT_EQ(formatByteCount(-1500), "-2 KB");
}

}  // namespace kestrune
