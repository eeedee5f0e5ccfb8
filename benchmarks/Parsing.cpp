// What it costs to read the tools' output on a machine far busier than any desktop: 50,000 processes and 10,000
// listening processes with three endpoints each. Both together are meant to stay below 200 ms.

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

#include "platform/ProcessText.h"

namespace {

using namespace kestrune;

constexpr int processCount = 50'000;
constexpr int listenerCount = 10'000;

std::string processListing() {
    std::string listing;
    for (int i = 0; i < processCount; ++i) {
        listing += "  " + std::to_string(i + 2) + "  " + std::to_string(i * 37 % 4'000'000) + "  " +
                   std::to_string(i % 100) + "." + std::to_string(i % 10) + " /Applications/Some Application " +
                   std::to_string(i % 400) +
                   ".app/Contents/Frameworks/Some Helper (Renderer).app/Contents/MacOS/Some Helper (Renderer)\n";
    }
    return listing;
}

std::string portListing() {
    std::string listing;
    for (int i = 0; i < listenerCount; ++i) {
        // The tool does not go by number, and tells a socket once for each of its two address families.
        const std::string port = std::to_string(1024 + i * 7919 % 60'000);
        listing.append("p").append(std::to_string(2 + i * 7919 % 50'000)).append("\n");
        for (const std::string_view socket : {"f21\nn*:", "f22\nn*:", "f23\nn127.0.0.1:", "f24\nn[::1]:"}) {
            listing.append(socket).append(port).append("\n");
        }
    }
    return listing;
}

void count(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void processes(benchmark::State& state) {
    const std::string listing = processListing();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ProcessText::processes(listing));
    }
    count(state, listing);
}

void listeningPorts(benchmark::State& state) {
    const std::string listing = portListing();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ProcessText::listeningPorts(listing));
    }
    count(state, listing);
}

void both(benchmark::State& state) {
    const std::string portText = portListing();
    const std::string processText = processListing();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ProcessText::listeningPorts(portText));
        benchmark::DoNotOptimize(ProcessText::processes(processText));
    }
    count(state, portText + processText);
}

void owner(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ProcessText::owner("  501 /Applications/LM Studio.app/Contents/MacOS/LM Studio\n"));
    }
}

BENCHMARK(processes)->Unit(benchmark::kMillisecond);
BENCHMARK(listeningPorts)->Unit(benchmark::kMillisecond);
BENCHMARK(both)->Unit(benchmark::kMillisecond);
BENCHMARK(owner)->Unit(benchmark::kNanosecond);

}  // namespace
