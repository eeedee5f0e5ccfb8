// What parsing costs on a crowded machine: the figures of 50,000 processes and a table of 10,000 listening sockets are
// meant to stay below 200 ms together.

#include <benchmark/benchmark.h>

#include <string>

#include "platform/linux/LinuxListeningSocket.h"
#include "platform/linux/LinuxProcessFigures.h"
#include "platform/linux/LinuxProcessIdentity.h"

namespace {

using namespace kestrune;

void fiftyThousandProcesses(benchmark::State& state) {
    constexpr int processes = 50'000;
    const std::string stat =
        "4711 (a) S 1 (b) S 1 4711 4711 0 -1 4194560 110 0 0 0 7 3 0 0 20 0 1 0 1343987 2990080 450 "
        "18446744073709551615 94370391748608 94370391763369 140724872411600 0 0 0 0 4096 134234626 1 0 0 17 1 0 0 0 0 "
        "0 "
        "94370391768048 94370391790760 94371198382080 140724872412937 140724872412950 140724872412970 140724872413161 "
        "0\n";
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < processes; ++i) {
            benchmark::DoNotOptimize(LinuxProcessIdentity::parseStat(stat));
            benchmark::DoNotOptimize(LinuxProcessFigures::imageMark(stat));
            benchmark::DoNotOptimize(LinuxProcessFigures::residentPages("4748 3259 1102 1 0 2428 0\n"));
            benchmark::DoNotOptimize(LinuxProcessFigures::processorShare(54, 1'344'067, 1'344'203, 100));
        }
    }
}

void tenThousandListeners(benchmark::State& state) {
    constexpr int listeners = 10'000;
    std::string table;
    for (int i = 0; i < listeners; ++i) {
        table +=
            "   0: 00000000000000000000000001000000:C9B9 00000000000000000000000000000000:0000 0A 00000000:00000000 "
            "00:00000000 00000000     0        0 1155382 1 0000000009b89fe8 100 0 0 10 0\n";
    }
    for ([[maybe_unused]] auto _ : state) {
        for (const LinuxListeningSocket& socket : parseSocketTable(table, true)) {
            benchmark::DoNotOptimize(endpointText(socket));
        }
    }
}

BENCHMARK(fiftyThousandProcesses)->Unit(benchmark::kMillisecond);
BENCHMARK(tenThousandListeners)->Unit(benchmark::kMillisecond);

}  // namespace
