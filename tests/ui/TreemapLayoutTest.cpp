#include "ui/TreemapLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace kestrune {

namespace {

constexpr TreemapRectangle picture{10, 20, 776, 200};

double areaOf(const TreemapRectangle& one) {
    return one.width * one.height;
}

double overlapOf(const TreemapRectangle& one, const TreemapRectangle& other) {
    const double width = std::min(one.x + one.width, other.x + other.width) - std::max(one.x, other.x);
    const double height = std::min(one.y + one.height, other.y + other.height) - std::max(one.y, other.y);
    return std::max(0.0, width) * std::max(0.0, height);
}

double aspectOf(const TreemapRectangle& one) {
    return std::max(one.width / one.height, one.height / one.width);
}

void expectDivided(const std::vector<double>& weights, const TreemapRectangle& area) {
    const auto parts = squarified(weights, area);
    ASSERT_EQ(parts.size(), weights.size());
    const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
    const double rounding = 1e-9 * areaOf(area);
    double covered = 0;
    double overlap = 0;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const TreemapRectangle& part = parts[index];
        EXPECT_NEAR(areaOf(part), areaOf(area) * weights[index] / total, rounding) << index;
        EXPECT_GE(part.x, area.x);
        EXPECT_GE(part.y, area.y);
        EXPECT_LE(part.x + part.width, area.x + area.width + 1e-9 * area.width);
        EXPECT_LE(part.y + part.height, area.y + area.height + 1e-9 * area.height);
        covered += areaOf(part);
        for (std::size_t other = 0; other < index; ++other) {
            overlap += overlapOf(part, parts[other]);
        }
    }
    EXPECT_NEAR(covered, areaOf(area), rounding);
    EXPECT_LE(overlap, rounding);
}

}  // namespace

TEST(TreemapLayout, partsCoverTheAreaByTheirSharesWithoutOverlap) {
    std::mt19937 random(20240917);
    for (int round = 0; round < 200; ++round) {
        std::vector<double> weights(1 + random() % 60);
        const auto steepness = static_cast<double>(random() % 5);
        for (double& weight : weights) {
            weight = std::pow(static_cast<double>(1 + random() % 1000), steepness);
        }
        if (round % 4 != 0) {
            std::sort(weights.rbegin(), weights.rend());
        }
        const auto side = [&random] { return 1 + static_cast<double>(random() % 2000); };
        expectDivided(weights, {side(), side(), side(), side()});
    }
}

TEST(TreemapLayout, thePublishedExampleComesOut) {
    const auto parts = squarified({6, 6, 4, 3, 2, 2, 1}, {0, 0, 6, 4});
    const auto near = [&](std::size_t index, const TreemapRectangle& wanted) {
        EXPECT_NEAR(parts[index].x, wanted.x, 1e-9) << index;
        EXPECT_NEAR(parts[index].y, wanted.y, 1e-9) << index;
        EXPECT_NEAR(parts[index].width, wanted.width, 1e-9) << index;
        EXPECT_NEAR(parts[index].height, wanted.height, 1e-9) << index;
    };
    near(0, {0, 0, 3, 2});
    near(1, {0, 2, 3, 2});
    near(2, {3, 0, 12.0 / 7, 7.0 / 3});
    near(3, {3 + 12.0 / 7, 0, 9.0 / 7, 7.0 / 3});
    near(4, {3, 7.0 / 3, 1.2, 5.0 / 3});
}

TEST(TreemapLayout, theLargestPartLiesAtTheTopLeft) {
    const auto parts = squarified({5, 3, 1, 1}, picture);
    EXPECT_DOUBLE_EQ(parts[0].x, picture.x);
    EXPECT_DOUBLE_EQ(parts[0].y, picture.y);
}

TEST(TreemapLayout, partsAreCloseToSquares) {
    for (const TreemapRectangle& part : squarified(std::vector<double>(13, 1), picture)) {
        EXPECT_LE(aspectOf(part), 3);
    }
    for (const TreemapRectangle& part : squarified(std::vector<double>(5000, 1), picture)) {
        EXPECT_LE(aspectOf(part), 3);
    }
}

TEST(TreemapLayout, onePartTakesAll) {
    EXPECT_EQ(squarified({42}, picture), std::vector<TreemapRectangle>{picture});
}

TEST(TreemapLayout, nothingIsDividedAmongNothing) {
    EXPECT_TRUE(squarified({}, picture).empty());
}

TEST(TreemapLayout, weightsThatAreNoneAreEmptyAndTakeNothingFromTheOthers) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double none = std::numeric_limits<double>::quiet_NaN();
    const auto parts = squarified({none, 2, 0, -5, infinity, 1, -infinity}, picture);
    for (const std::size_t empty : {0U, 2U, 3U, 4U, 6U}) {
        EXPECT_EQ(parts[empty], TreemapRectangle()) << empty;
    }
    EXPECT_NEAR(areaOf(parts[1]), areaOf(picture) * 2 / 3, 1e-6);
    EXPECT_NEAR(areaOf(parts[5]), areaOf(picture) / 3, 1e-6);
}

TEST(TreemapLayout, hugeWeightsDoNotOverflow) {
    const double huge = std::numeric_limits<double>::max();
    for (const TreemapRectangle& part : squarified({huge, huge, huge, huge}, picture)) {
        EXPECT_NEAR(areaOf(part), areaOf(picture) / 4, 1e-6);
    }
}

TEST(TreemapLayout, weightsFarSmallerThanTheRestStayWithinTheArea) {
    std::vector<double> weights(1000, std::numeric_limits<double>::denorm_min());
    weights.front() = std::numeric_limits<double>::max();
    for (const double least : {std::numeric_limits<double>::denorm_min(), 1e-30, 1e-12}) {
        std::fill(weights.begin() + 1, weights.end(), least * (least < 1e-100 ? 1 : weights.front()));
        const auto parts = squarified(weights, picture);
        EXPECT_NEAR(areaOf(parts.front()), areaOf(picture), 1e-3);
        for (const TreemapRectangle& part : parts) {
            EXPECT_TRUE(std::isfinite(part.x + part.y + part.width + part.height));
            EXPECT_GE(part.width, 0);
            EXPECT_GE(part.height, 0);
            EXPECT_LE(part.x + part.width, picture.x + picture.width + 1e-6);
        }
    }
}

TEST(TreemapLayout, tinyAreasAreDividedToo) {
    expectDivided({3, 2, 1}, {0, 0, 1e-6, 1e-7});
    expectDivided({3, 2, 1}, {0, 0, 0.5, 4000});
}

TEST(TreemapLayout, anAreaThatIsNoneHasEmptyParts) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const TreemapRectangle& area : {TreemapRectangle{0, 0, 0, 10}, TreemapRectangle{0, 0, 10, -1},
                                         TreemapRectangle{0, 0, none, 10}, TreemapRectangle{none, 0, 10, 10}}) {
        EXPECT_EQ(squarified({2, 1}, area), std::vector<TreemapRectangle>(2));
    }
}

TEST(TreemapLayout, tenThousandPartsCoverTheArea) {
    std::vector<double> weights(10'000);
    std::iota(weights.rbegin(), weights.rend(), 1.0);
    double covered = 0;
    for (const TreemapRectangle& part : squarified(weights, picture)) {
        covered += areaOf(part);
    }
    EXPECT_NEAR(covered, areaOf(picture), 1e-3);
}

}  // namespace kestrune
