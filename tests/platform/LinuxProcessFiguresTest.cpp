#include "platform/linux/LinuxProcessFigures.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrune {
namespace {

using namespace LinuxProcessFigures;

// A line of "stat" with this name, as a kernel of the 6 series writes it for a process of one's own.
std::string statLine(const std::string& name, const std::string& code, const std::string& arguments) {
    return "4711 (" + name +
           ") S 1 4711 4711 0 -1 4194560 110 0 0 0 7 3 0 0 20 0 1 0 1343987 2990080 450 18446744073709551615 " + code +
           " 140724872411600 0 0 0 0 4096 134234626 1 0 0 17 1 0 0 0 0 0 94370391768048 94370391790760 "
           "94371198382080 " +
           arguments + " 140724872413161 0\n";
}

const std::string sleeping = statLine("sleep", "94370391748608 94370391763369", "140724872412937 140724872412950");

TEST(LinuxProcessFigures, uptimeIsToldInTicksAsPsRoundsIt) {
    EXPECT_EQ(ticksSinceBoot("13440.66 20000.11\n", 100), 1'344'066U);
    EXPECT_EQ(ticksSinceBoot("0.00 0.00\n", 100), 0U);
    EXPECT_EQ(ticksSinceBoot("12.50 0.00\n", 250), 3125U);
    // 1.13 · 100 is a little less than 113 in floating point.
    EXPECT_EQ(ticksSinceBoot("1.13 0.00\n", 100), 112U);
}

TEST(LinuxProcessFigures, uptimeThatIsNoneIsNotTold) {
    EXPECT_EQ(ticksSinceBoot("", 100), std::nullopt);
    EXPECT_EQ(ticksSinceBoot("12", 100), std::nullopt);
    EXPECT_EQ(ticksSinceBoot("12.", 100), std::nullopt);
    EXPECT_EQ(ticksSinceBoot("12.x5 1", 100), std::nullopt);
    EXPECT_EQ(ticksSinceBoot("99999999999999999999.00 1", 100), std::nullopt);
}

TEST(LinuxProcessFigures, residentPagesAreTheSecondNumber) {
    EXPECT_EQ(residentPages("4748 3259 1102 1 0 2428 0\n"), 3259);
    EXPECT_EQ(residentPages("0 0 0 0 0 0 0\n"), 0);
    EXPECT_EQ(residentPages("4748 3259"), 3259);
    EXPECT_EQ(residentPages("4748"), std::nullopt);
    EXPECT_EQ(residentPages(""), std::nullopt);
    EXPECT_EQ(residentPages("4748 99999999999999999999 1"), std::nullopt);
}

TEST(LinuxProcessFigures, imageMarkStaysWhileTheSameImageRuns) {
    EXPECT_NE(imageMark(sleeping), 0U);
    const std::string later = std::string(sleeping).replace(sleeping.find(" 7 3 "), 5, " 99 55 ");
    EXPECT_EQ(imageMark(later), imageMark(sleeping));
    const std::string renamed =
        statLine("new ) name", "94370391748608 94370391763369", "140724872412937 140724872412950");
    EXPECT_EQ(imageMark(renamed), imageMark(sleeping));
}

TEST(LinuxProcessFigures, imageMarkChangesWithTheImage) {
    EXPECT_NE(imageMark(statLine("sleep", "94370391748609 94370391763369", "140724872412937 140724872412950")),
              imageMark(sleeping));
    EXPECT_NE(imageMark(statLine("sleep", "94370391748608 94370391763369", "140724872412937 140724872412951")),
              imageMark(sleeping));
}

TEST(LinuxProcessFigures, imageThatIsNotShownHasNoMark) {
    EXPECT_EQ(
        imageMark("1 (systemd) S 0 1 1 0 -1 4194560 1 1 1 1 1 1 1 1 20 0 1 0 3 1 1 1 1 1 0 0 0 0 0 0 0 0 17 1 0 0 0 "
                  "0 0 0 0 0 0 0 0 0 0\n"),
        0U);
    EXPECT_EQ(imageMark(""), 0U);
    EXPECT_EQ(imageMark("4711 (cut off"), 0U);
    EXPECT_EQ(imageMark("4711 (cut off)"), 0U);
    EXPECT_EQ(imageMark("4711 (cut off) S 1 4711"), 0U);
}

// What ps printed for processes of these ages.
TEST(LinuxProcessFigures, processorShareIsWhatPsPrinted) {
    EXPECT_EQ(processorShare(123, 1'344'203, 1'344'380, 100), "69.4");
    EXPECT_EQ(processorShare(3, 1'344'381, 1'344'435, 100), "5.5");
    EXPECT_EQ(processorShare(54, 1'344'067, 1'344'203, 100), "39.7");
    EXPECT_EQ(processorShare(0, 1'344'067, 1'344'203, 100), "0.0");
}

TEST(LinuxProcessFigures, processorShareOfSeveralProcessorsHasNoDecimal) {
    EXPECT_EQ(processorShare(999, 0, 1000, 100), "99.9");
    EXPECT_EQ(processorShare(1000, 0, 1000, 100), "100");
    EXPECT_EQ(processorShare(3999, 0, 1000, 100), "399");
}

TEST(LinuxProcessFigures, processThatWasJustStartedHasNoShare) {
    EXPECT_EQ(processorShare(5, 1000, 1000, 100), "0.0");
    EXPECT_EQ(processorShare(5, 1001, 1000, 100), "0.0");
    EXPECT_EQ(processorShare(5, 0, 1000, 0), "0.0");
}

TEST(LinuxProcessFigures, hugeCountersDoNotOverflow) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(processorShare(most, 0, 1, 1), std::to_string(most / 1000 * 1000 / 10));
}

// ps takes 29 ticks to 0.29 seconds and back, which is 28 ticks.
TEST(LinuxProcessFigures, ageIsRoundedAsPsDoes) {
    EXPECT_EQ(processorShare(28, 0, 29, 100), "100");
}

}  // namespace
}  // namespace kestrune
