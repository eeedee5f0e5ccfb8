#include "platform/linux/LinuxMemoryPressure.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <filesystem>

#include "platform/linux/PressureLevel.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

constexpr PressureLevels normal{true, false, false};
constexpr PressureLevels warning{false, true, false};
constexpr PressureLevels critical{false, false, true};

std::string pressureText(const std::string& some, const std::string& full) {
    return "some avg10=" + some + " avg60=0.00 avg300=0.00 total=0\nfull avg10=" + full +
           " avg60=0.00 avg300=0.00 total=0\n";
}

TEST(PressureLevel, readsBothLines) {
    EXPECT_EQ(
        parsePressure("some avg10=12.34 avg60=1.00 avg300=0.20 total=99\nfull avg10=3.50 avg60=0 avg300=0 total=1\n"),
        (PressureReading{12.34, 3.5}));
    EXPECT_EQ(parsePressure("some avg10=1.00 avg60=0"), (PressureReading{1, 0}));
}

TEST(PressureLevel, textThatIsNoPressureReadsAsNothing) {
    for (const std::string_view text :
         {"", "some", "some avg10=", "some avg10=x", "full avg10=1.00", "somewhat avg10=1.0"}) {
        EXPECT_EQ(parsePressure(text), std::nullopt) << text;
    }
}

TEST(PressureLevel, levelsRiseWithTheShareOfTimeSpentWaiting) {
    EXPECT_EQ(pressureLevels({0, 0}, false), normal);
    EXPECT_EQ(pressureLevels({9.99, 9.99}, false), normal);
    EXPECT_EQ(pressureLevels({10, 0}, false), warning);
    EXPECT_EQ(pressureLevels({99, 9.99}, false), warning);
    EXPECT_EQ(pressureLevels({99, 10}, false), critical);
}

TEST(PressureLevel, firedTriggerIsAtLeastAWarning) {
    EXPECT_EQ(pressureLevels({0, 0}, true), warning);
    EXPECT_EQ(pressureLevels({50, 50}, true), critical);
}

class LinuxMemoryPressureTest : public testing::Test {
protected:
    void waitForLevels(std::size_t count) {
        const auto start = std::chrono::steady_clock::now();
        while (told.size() < count && std::chrono::steady_clock::now() - start < std::chrono::seconds(15)) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
    }

    void start(LinuxMemoryPressure& source) {
        source.start([this](PressureLevels levels) { told.push_back(levels); });
    }

    int argumentCount = 0;
    QCoreApplication application{argumentCount, nullptr};
    TemporaryFolder folder;
    std::vector<PressureLevels> told;
    const LinuxMemoryPressure::Intervals quick{std::chrono::milliseconds(2), std::chrono::milliseconds(2)};
};

TEST_F(LinuxMemoryPressureTest, nothingIsToldWhereTheSystemDoesNotReportPressure) {
    LinuxMemoryPressure source("/does/not/exist", quick);
    start(source);
    EXPECT_TRUE(told.empty());
    EXPECT_FALSE(source.isTriggered());
}

TEST_F(LinuxMemoryPressureTest, firstLevelIsToldAtStart) {
    LinuxMemoryPressure source(folder.write("memory", pressureText("0.00", "0.00")), quick);
    start(source);
    EXPECT_EQ(told, std::vector<PressureLevels>{normal});
}

TEST_F(LinuxMemoryPressureTest, withoutATriggerTheLevelIsLookedAtAgainAndToldOnChangeOnly) {
    const std::string path = folder.write("memory", pressureText("0.00", "0.00"));
    LinuxMemoryPressure source(path, quick);
    start(source);
    EXPECT_FALSE(source.isTriggered());
    // The source keeps its file open, so the text changes in place.
    static_cast<void>(folder.write("memory", pressureText("20.00", "1.00")));
    waitForLevels(2);
    static_cast<void>(folder.write("memory", pressureText("20.00", "11.00")));
    waitForLevels(3);
    static_cast<void>(folder.write("memory", pressureText("00.00", "0.00")));
    waitForLevels(4);
    EXPECT_EQ(told, (std::vector<PressureLevels>{normal, warning, critical, normal}));
}

TEST_F(LinuxMemoryPressureTest, ordinaryFileIsNeverWrittenTo) {
    const std::string text = pressureText("0.00", "0.00");
    const std::string path = folder.write("memory", text);
    LinuxMemoryPressure source(path, quick);
    start(source);
    EXPECT_EQ(TemporaryFolder::contentOf(path), text);
}

TEST_F(LinuxMemoryPressureTest, theSystemsOwnFileTellsALevelExactlyWhereItExists) {
    LinuxMemoryPressure source;
    start(source);
    EXPECT_EQ(told.size(), parsePressure(TemporaryFolder::contentOf("/proc/pressure/memory")) ? 1U : 0U);
}

}  // namespace
}  // namespace kestrune
