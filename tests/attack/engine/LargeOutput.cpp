#include <sys/resource.h>

#include <chrono>
#include <cstdint>
#include <iostream>

#include "engine/SystemEngine.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "tests/fakes/FakeHostStatistics.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakePowerSources.h"
#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/FakeRunningApplications.h"
#include "tests/fakes/FakeSystemTools.h"
#include "tests/fakes/FakeTrash.h"
#include "tests/fakes/FakeVolumeInfo.h"
#include "tests/fakes/ManualQueues.h"

// Runs a tool that writes a little more than 1 GiB and holds the peak of this process's memory to 2.5 times the output:
// the text may be copied while its buffer grows, but nowhere on its way to the caller.
int main() {
    using namespace kestrune;
    constexpr std::int64_t size = (std::int64_t{1} << 30) + 4096;
    FakeHostStatistics host;
    FakePowerSources power;
    FakeVolumeInfo volumes;
    LinuxProcessRunner runner;
    FakeSystemTools tools;
    FakePreferences preferences;
    FakeNotificationCenter center;
    const ManualClock clock;
    ManualMainQueue mainQueue;
    FakeRunningApplications applications;
    FakeTrash trash;
    FakeLoginItem loginItem;
    SystemEngine engine({host, power, volumes, runner, tools, preferences, center, clock, mainQueue, applications,
                         trash, loginItem, "/home/anna", 4711});

    const auto start = std::chrono::steady_clock::now();
    const SystemEngine::CommandResult result =
        engine.runProc("/usr/bin/head", {"-c", std::to_string(size), "/dev/zero"});
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

    rusage usage{};
    if (::getrusage(RUSAGE_SELF, &usage) != 0) {
        return 1;
    }
    const double ratio = static_cast<double>(usage.ru_maxrss) * 1024 / static_cast<double>(size);
    std::cout << "status " << result.status << ", " << result.output.size() << " bytes in " << elapsed.count()
              << " s, peak memory " << ratio << " times the output\n";
    return result.status == 0 && static_cast<std::int64_t>(result.output.size()) == size && ratio <= 2.5 ? 0 : 1;
}
