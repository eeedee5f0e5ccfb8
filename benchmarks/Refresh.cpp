// What looking at the machine costs: one whole refresh as the status item does it every five seconds, and each figure
// of it alone. A whole one is meant to stay below 100 µs.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "engine/SystemEngine.h"
#include "platform/linux/DesktopEntryFolders.h"
#include "platform/linux/LinuxHostStatistics.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "platform/linux/LinuxRunningPrograms.h"
#include "platform/linux/LinuxSystemTools.h"
#include "platform/linux/LinuxVolumeInfo.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/FakeRunningApplications.h"
#include "tests/fakes/FakeTrash.h"
#include "tests/fakes/ManualQueues.h"

namespace {

using namespace kestrune;

class Machine final {
public:
    explicit Machine(const std::string& powerRoot = "/sys/class/power_supply") : m_power(powerRoot) {}

    SystemEngine& engine() { return m_engine; }

private:
    LinuxHostStatistics m_host;
    LinuxPowerSources m_power;
    LinuxVolumeInfo m_volumes;
    LinuxProcessRunner m_runner;
    LinuxSystemTools m_tools;
    FakePreferences m_preferences;
    FakeNotificationCenter m_center;
    SystemClock m_clock;
    ManualMainQueue m_mainQueue;
    FakeRunningApplications m_applications;
    FakeTrash m_trash;
    FakeLoginItem m_loginItem;
    SystemEngine m_engine{{m_host, m_power, m_volumes, m_runner, m_tools, m_preferences, m_center, m_clock, m_mainQueue,
                           m_applications, m_trash, m_loginItem, "/root", 1}};
};

// A laptop's power supplies as plain files, for machines that have none.
class Laptop final {
public:
    Laptop() {
        write("AC/type", "Mains");
        write("AC/online", "1");
        write("BAT0/type", "Battery");
        write("BAT0/present", "1");
        write("BAT0/status", "Charging");
        write("BAT0/energy_now", "30000000");
        write("BAT0/energy_full", "60000000");
        write("BAT0/capacity", "50");
    }

    Laptop(const Laptop&) = delete;
    Laptop& operator=(const Laptop&) = delete;

    ~Laptop() {
        std::error_code ignored;
        std::filesystem::remove_all(m_root, ignored);
    }

    [[nodiscard]] std::string root() const { return m_root.string(); }

private:
    void write(const std::string& name, const std::string& value) const {
        const std::filesystem::path path = m_root / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << value << '\n';
    }

    std::filesystem::path m_root =
        std::filesystem::temp_directory_path() / ("kestrune-bench-" + std::to_string(::getpid()));
};

void refresh(SystemEngine& engine) {
    benchmark::DoNotOptimize(engine.getMemorySummary());
    benchmark::DoNotOptimize(engine.getDiskSummary());
    benchmark::DoNotOptimize(engine.getCPULoadPercentage());
    benchmark::DoNotOptimize(engine.networkCounters());
    benchmark::DoNotOptimize(engine.battery());
}

void wholeRefresh(benchmark::State& state) {
    Machine machine;
    for ([[maybe_unused]] auto _ : state) {
        refresh(machine.engine());
    }
}

void wholeRefreshOnALaptop(benchmark::State& state) {
    const Laptop laptop;
    Machine machine(laptop.root());
    for ([[maybe_unused]] auto _ : state) {
        refresh(machine.engine());
    }
}

template <auto Figure>
void figure(benchmark::State& state) {
    Machine machine;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize((machine.engine().*Figure)());
    }
}

void batteryOnALaptop(benchmark::State& state) {
    const Laptop laptop;
    Machine machine(laptop.root());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(machine.engine().battery());
    }
}

void runningPrograms(benchmark::State& state) {
    LinuxRunningPrograms applications("/proc", DesktopEntryFolders::standard("/root"));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(applications.names());
    }
}

void runTool(benchmark::State& state) {
    LinuxProcessRunner runner;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(runner.run("/bin/true", {}));
    }
}

BENCHMARK(wholeRefresh)->Unit(benchmark::kMicrosecond);
BENCHMARK(wholeRefreshOnALaptop)->Unit(benchmark::kMicrosecond);
BENCHMARK(figure<&SystemEngine::getMemorySummary>)->Name("memory")->Unit(benchmark::kMicrosecond);
BENCHMARK(figure<&SystemEngine::getDiskSummary>)->Name("disk")->Unit(benchmark::kMicrosecond);
BENCHMARK(figure<&SystemEngine::getCPULoadPercentage>)->Name("processor")->Unit(benchmark::kMicrosecond);
BENCHMARK(figure<&SystemEngine::networkCounters>)->Name("network")->Unit(benchmark::kMicrosecond);
BENCHMARK(figure<&SystemEngine::battery>)->Name("battery")->Unit(benchmark::kMicrosecond);
BENCHMARK(batteryOnALaptop)->Unit(benchmark::kMicrosecond);
BENCHMARK(figure<&SystemEngine::getUptimeString>)->Name("uptime")->Unit(benchmark::kMicrosecond);
BENCHMARK(runningPrograms)->Unit(benchmark::kMicrosecond);
BENCHMARK(runTool)->Unit(benchmark::kMicrosecond);

}  // namespace
