// What the picture of a folder costs: the layout of ten thousand tiles, which is meant to stay below 5 ms, and the rows
// and tiles of a folder with ten thousand children.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "explorer/DiskExplorerResult.h"
#include "ui/TreemapLayout.h"
#include "workspace/ExplorerListing.h"
#include "workspace/ExplorerTiles.h"

namespace {

using namespace kestrune;

constexpr int count = 10'000;
constexpr std::int64_t largest = std::int64_t{1} << 40;

/// Sizes as folders have them: few large ones and a long tail, largest first.
std::int64_t bytesOf(int rank) {
    return largest / (rank + 1);
}

DiskExplorerResult manyChildren() {
    DiskExplorerResult result;
    for (int i = 0; i < count; ++i) {
        result.folders.push_back({"/home/anna/folder-" + std::to_string(i * 7919 % count), bytesOf(i), i % 3 != 0});
    }
    return result;
}

void layout(benchmark::State& state) {
    std::vector<double> weights;
    weights.reserve(count);
    for (int i = 0; i < count; ++i) {
        weights.push_back(static_cast<double>(bytesOf(i)));
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(squarified(weights, {0, 0, 800, 320}));
    }
}

void layoutOfEqualTiles(benchmark::State& state) {
    const std::vector<double> weights(count, 1.0);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(squarified(weights, {0, 0, 800, 320}));
    }
}

void rows(benchmark::State& state) {
    const DiskExplorerResult result = manyChildren();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ExplorerListing::folderRows(result));
    }
}

void tiles(benchmark::State& state) {
    const DiskExplorerResult result = manyChildren();
    const std::vector<ExplorerRow> listed = ExplorerListing::folderRows(result);
    for ([[maybe_unused]] auto _ : state) {
        // Every folder is remembered, with as many children as it can have.
        benchmark::DoNotOptimize(explorerTiles(listed, result, [&](const std::string&) { return &result; }));
    }
}

BENCHMARK(layout)->Unit(benchmark::kMillisecond);
BENCHMARK(layoutOfEqualTiles)->Unit(benchmark::kMillisecond);
BENCHMARK(rows)->Unit(benchmark::kMillisecond);
BENCHMARK(tiles)->Unit(benchmark::kMillisecond);

}  // namespace
