// What a day in the tray leaves behind: every figure read from this machine as often as in 24 hours, in seconds.
#include <gtest/gtest.h>

#include <QDBusConnection>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/AppDelegate.h"
#include "app/StatusItemWithPopup.h"
#include "platform/linux/LinuxHostStatistics.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "platform/linux/LinuxStatusItem.h"
#include "platform/linux/LinuxSystemTools.h"
#include "platform/linux/LinuxVolumeInfo.h"
#include "tests/fakes/FakeDockTile.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

constexpr std::chrono::seconds beat{5};
constexpr int beatsOfADay = 17'280;
constexpr int beatsOfAnHour = 720;

std::size_t openDescriptors() {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator()));
}

/// Of this process, in bytes.
std::int64_t residentMemory() {
    std::int64_t total = 0;
    std::int64_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * 4096;
}

/// The shell with the machine's own figures, a tray without a panel, and a day that passes as fast as it can.
class Day final {
public:
    Day() {
        m_world.preferences.setBoolean("kestrune_login_default_2_1", true);
        m_statusItem.start({[](MenuAction) {}, [] {}, [] {}, [] {}});
        m_delegate.applicationDidFinishLaunching();
        settle();
    }

    void pass(int beats) {
        for (int i = 0; i < beats; ++i) {
            m_world.clock.advance(beat);
            m_world.mainQueue.advance(beat);
            settle();
        }
    }

    [[nodiscard]] const WorkspaceStore& store() const { return m_store; }

private:
    void settle() {
        do {
            m_world.mainQueue.runPosted();
        } while (m_queues.at(0)->runOne() || m_queues.at(1)->runOne());
    }

    StoreFixture m_world;
    LinuxHostStatistics m_host;
    LinuxPowerSources m_power;
    LinuxVolumeInfo m_volumes;
    LinuxProcessRunner m_runner;
    LinuxSystemTools m_tools;
    SystemEngine m_engine{{m_host, m_power, m_volumes, m_runner, m_tools, m_world.preferences,
                           m_world.notificationCenter, m_world.clock, m_world.mainQueue, m_world.applications,
                           m_world.trash, m_world.loginItem, m_world.home, StoreFixture::ownProcess}};
    std::vector<ManualSerialQueue*> m_queues;  ///< owned by the store
    WorkspaceStore m_store{m_world.partsWith(m_engine, [this](const std::string& label) {
        auto queue = std::make_unique<ManualSerialQueue>(label);
        m_queues.push_back(queue.get());
        return queue;
    })};
    LinuxStatusItem m_tray{QDBusConnection(QStringLiteral("no such connection"))};
    StatusItemWithPopup m_statusItem{m_tray};
    FakeUpdater m_updater;
    FakeDockTile m_dockTile;
    AppDelegate m_delegate{{.store = m_store,
                            .engine = m_engine,
                            .alerts = m_world.alerts,
                            .mainQueue = m_world.mainQueue,
                            .statusItem = m_statusItem,
                            .updater = m_updater,
                            .dockTile = m_dockTile,
                            .downloadHost = {},
                            .activate = [] {},
                            .showWindow = [] {},
                            .showPorts = [] {},
                            .isWindowVisible = [] { return false; },
                            .isAnyWindowOpen = [] { return false; },
                            .exit = [] {}}};
};

}  // namespace

TEST(DayOfRefreshes, descriptorsStayAsTheyAreAndMemoryHardlyGrows) {
    constexpr std::int64_t mebibyte = 1 << 20;
    Day day;
    day.pass(beatsOfAnHour);
    const std::size_t descriptors = openDescriptors();
    const std::int64_t memory = residentMemory();
    const WallTime before = day.store().now();
    day.pass(beatsOfADay);
    EXPECT_EQ(day.store().now() - before, Seconds(86'400));
    EXPECT_EQ(openDescriptors(), descriptors);
    const std::int64_t growth = residentMemory() - memory;
    RecordProperty("growthInKibibytes", static_cast<int>(growth / 1024));
    EXPECT_LT(growth, 5 * mebibyte);
    EXPECT_GT(day.store().memoryPercent.get(), 0) << "nothing was read";
    EXPECT_GT(day.store().disk.get().totalGB, 0);
    EXPECT_FALSE(day.store().telemetryHistory.get().empty());
}

}  // namespace kestrune
