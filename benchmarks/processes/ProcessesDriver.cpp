// Takes snapshots of the processes and ports with the program's listing, one for each line on standard input, and
// prints for each "MICROSECONDS PROCESSES OWNERS ENDPOINTS", the first being processor time: what
// benchmarks/processes.py compares with the tools.
#include <sys/resource.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "platform/linux/LinuxProcessListing.h"

namespace {

std::int64_t processorMicroseconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    constexpr std::int64_t million = 1'000'000;
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * million + usage.ru_utime.tv_usec + usage.ru_stime.tv_usec;
}

}  // namespace

int main() {
    kestrune::LinuxProcessListing listing;
    std::string line;
    while (std::getline(std::cin, line)) {
        const std::int64_t before = processorMicroseconds();
        const kestrune::ProcessSnapshot snapshot = listing.snapshot();
        const std::int64_t used = processorMicroseconds() - before;
        std::size_t endpoints = 0;
        for (const auto& [pid, texts] : snapshot.listeners) {
            endpoints += texts.size();
        }
        std::cout << used << ' ' << snapshot.processes.size() << ' ' << snapshot.listeners.size() << ' ' << endpoints
                  << std::endl;
    }
    return EXIT_SUCCESS;
}
