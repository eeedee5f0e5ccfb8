// Clears cached memory the way the program does and prints what the user would be told.

#include <cstdio>
#include <string>

#include "engine/SystemEngine.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "platform/linux/LinuxSystemTools.h"
#include "tests/fakes/FakeHostStatistics.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakePowerSources.h"
#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/FakeRunningApplications.h"
#include "tests/fakes/FakeTrash.h"
#include "tests/fakes/FakeVolumeInfo.h"
#include "tests/fakes/ManualQueues.h"

namespace {

// What cannot matter here is faked; the tools and the way they are run are the program's own.
struct Engine {
    kestrune::FakeHostStatistics host;
    kestrune::FakePowerSources power;
    kestrune::FakeVolumeInfo volumes;
    kestrune::LinuxProcessRunner runner;
    kestrune::LinuxSystemTools tools;
    kestrune::FakePreferences preferences;
    kestrune::FakeNotificationCenter center;
    kestrune::ManualClock clock;
    kestrune::ManualMainQueue mainQueue;
    kestrune::FakeRunningApplications applications;
    kestrune::FakeTrash trash;
    kestrune::FakeLoginItem loginItem;
    kestrune::SystemEngine engine{{host, power, volumes, runner, tools, preferences, center, clock, mainQueue,
                                   applications, trash, loginItem, "/", 1}};
};

}  // namespace

int main() {
    Engine parts;
    // Whoever asks polkit needs this process to be known to an agent first.
    if (std::getchar() == EOF) {
        return 1;
    }
    parts.engine.purgeMemory();
    parts.mainQueue.runPosted();
    for (const auto& delivered : parts.center.delivered) {
        static_cast<void>(std::puts(delivered.body.c_str()));
    }
    return 0;
}
