// Lists processes with tools that hang, flood, ignore the request to end, or leave their pipe to somebody else, all at
// the same time. Exit status 0 when every snapshot came in time and held what it could.
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "base/Clock.h"
#include "platform/ToolProcessListing.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "tests/fakes/FakeSystemTools.h"

namespace {

using namespace kestrune;

constexpr double longestSnapshot = 65.5;

ToolCommand script(const std::string& text) {
    return {"/bin/sh", {"-c", text}};
}

// The helpers end by themselves a little after the last snapshot does.
const ToolCommand hanging{"/bin/sleep", {"75"}};
const ToolCommand ignoring = script("trap '' TERM; exec /bin/sleep 75");
const ToolCommand leavingItsPipe = script("/bin/sleep 75 & exit 0");
const ToolCommand ignoringAndLeavingItsPipe = script("trap '' TERM; /bin/sleep 75 & exec /bin/sleep 75");
const ToolCommand floodOfLines = script("/usr/bin/yes n127.0.0.1:8080 | /usr/bin/head -c 1073741824");
const ToolCommand floodWithoutLines{"/usr/bin/head", {"-c", "1073741824", "/dev/zero"}};
const ToolCommand onePort{"/usr/bin/printf", {"p4711\\nn*:3000\\n"}};
const ToolCommand oneProcess{"/usr/bin/printf", {"4711 1 0.0 node\\n"}};

struct Scenario {
    std::string name;
    ToolCommand ports;
    ToolCommand processes;
    std::size_t expectedListeners = 0;
    std::size_t expectedProcesses = 0;
};

const std::vector<Scenario> scenarios{
    {"both hang", hanging, hanging, 0, 0},
    {"both write a gibibyte", floodOfLines, floodWithoutLines, 0, 0},
    {"both ignore the request to end", ignoring, ignoring, 0, 0},
    {"both leave their pipe to another", leavingItsPipe, leavingItsPipe, 0, 0},
    {"both do all of it", ignoringAndLeavingItsPipe, ignoringAndLeavingItsPipe, 0, 0},
    {"the port tool alone does all of it", ignoringAndLeavingItsPipe, oneProcess, 0, 1},
    {"the process tool alone does all of it", onePort, ignoringAndLeavingItsPipe, 1, 0},
    {"nobody does", onePort, oneProcess, 1, 1},
};

struct Outcome {
    double seconds = 0;
    ProcessSnapshot snapshot;
};

Outcome snapshotOf(const Scenario& scenario, ProcessRunner& runner) {
    FakeSystemTools tools;
    tools.listeningSocketsCommand = scenario.ports;
    tools.userProcessesCommand = scenario.processes;
    const SystemClock clock;
    ToolProcessListing listing(runner, tools, clock);
    const auto start = std::chrono::steady_clock::now();
    ProcessSnapshot snapshot = listing.snapshot();
    return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), std::move(snapshot)};
}

}  // namespace

int main() {
    LinuxProcessRunner runner;
    std::vector<Outcome> outcomes(scenarios.size());
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < scenarios.size(); ++i) {
        threads.emplace_back([&, i] { outcomes[i] = snapshotOf(scenarios[i], runner); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    bool isGood = true;
    for (std::size_t i = 0; i < scenarios.size(); ++i) {
        const Outcome& outcome = outcomes[i];
        const bool isComplete = outcome.snapshot.listeners.size() == scenarios[i].expectedListeners &&
                                outcome.snapshot.processes.size() == scenarios[i].expectedProcesses;
        const bool isInTime = outcome.seconds <= longestSnapshot;
        std::cout << scenarios[i].name << ": " << outcome.seconds << " s" << (isInTime ? "" : ", too late")
                  << (isComplete ? "" : ", not what could be told") << '\n';
        isGood = isGood && isComplete && isInTime;
    }
    return isGood ? EXIT_SUCCESS : EXIT_FAILURE;
}
