// Walks one folder the way the program does and prints what it found as one line of JSON: what benchmarks/walk.py
// compares with other programs.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/Clock.h"
#include "base/WholeNumber.h"
#include "benchmarks/walk/Report.h"
#include "explorer/DiskExplorer.h"
#include "platform/linux/LinuxDirectoryWalker.h"

namespace {

using namespace kestrune;
using std::chrono::steady_clock;

/// This process's largest resident memory so far, in KiB.
std::int64_t peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            std::int64_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes;
        }
    }
    return 0;
}

std::vector<ReportedItem> reported(const std::vector<DiskExplorerItem>& items, const std::string& root) {
    std::vector<ReportedItem> reported;
    std::transform(items.begin(), items.end(), std::back_inserter(reported), [&](const DiskExplorerItem& item) {
        return ReportedItem{item.path.substr(root.size() + 1), item.bytes};
    });
    return reported;
}

/// What the storage page's measurement finds.
Report measure(const std::string& folder) {
    LinuxDirectoryWalker walker;
    const TreeSize size = walker.measure(folder, [] { return false; });
    Report report;
    report.add("entries", size.entries);
    report.add("bytes", size.allocatedBytes);
    report.add("unreadable", size.unreadable);
    return report;
}

/// Sets a flag once its time has come, unless the scan is over before.
class Canceller final {
public:
    explicit Canceller(std::chrono::milliseconds delay)
        : m_thread([this, delay] {
              const auto due = steady_clock::now() + delay;
              while (!m_ended && steady_clock::now() < due) {
                  std::this_thread::sleep_for(std::chrono::milliseconds{1});
              }
              m_asked = steady_clock::now();
              m_cancelled = true;
          }) {}

    Canceller(const Canceller&) = delete;
    Canceller& operator=(const Canceller&) = delete;

    ~Canceller() { m_thread.join(); }

    [[nodiscard]] bool isCancelled() const { return m_cancelled; }

    /// Microseconds since the flag was set; nothing when the scan was over before.
    std::optional<std::int64_t> answered() {
        const auto now = steady_clock::now();
        m_ended = true;
        if (!m_cancelled) {
            return std::nullopt;
        }
        return std::chrono::duration_cast<std::chrono::microseconds>(now - m_asked).count();
    }

private:
    std::atomic<bool> m_cancelled{false};
    std::atomic<bool> m_ended{false};
    steady_clock::time_point m_asked;  ///< before m_cancelled is true
    std::thread m_thread;
};

struct Options {
    std::string mode;
    std::string folder;
    bool progress = false;
    std::optional<std::int64_t> cancelAfter;  ///< milliseconds
};

/// The program's own request, as the store makes it, or the same without limits.
DiskExplorerRequest requestFor(const Options& options) {
    DiskExplorerRequest request;
    request.folderLimit = childrenNamed;
    if (options.mode == "--scan-all") {
        request.fileLimit = -1;
        request.timeLimit = Seconds{1e6};
    }
    return request;
}

Report scan(const Options& options) {
    LinuxDirectoryWalker walker;
    const SystemClock clock;
    std::int64_t calls = 0;
    std::optional<Canceller> canceller;
    DiskExplorerRequest request = requestFor(options);
    request.cancelled = [] { return false; };
    if (options.progress) {
        request.progress = [&calls](const DiskExplorerProgress&) { ++calls; };
    }
    if (options.cancelAfter) {
        canceller.emplace(std::chrono::milliseconds{*options.cancelAfter});
        request.cancelled = [&canceller] { return canceller->isCancelled(); };
    }
    const DiskExplorerResult result = DiskExplorer::scan(walker, clock, options.folder, request);
    const auto answered = canceller ? canceller->answered() : std::nullopt;
    Report report;
    report.add("entries", result.inspectedFiles);
    report.add("files", result.regularFiles);
    report.add("skipped", result.skippedLocations);
    report.add("bytes", result.measuredBytes());
    report.add("otherChildren", result.otherItems);
    report.add("otherBytes", result.otherBytes);
    report.add("stopped", result.stopped);
    report.add("limitReached", result.limitReached);
    report.add("children", reported(result.folders, options.folder));
    report.add("largestFiles", reported(result.largestFiles, options.folder));
    report.add("progressCalls", calls);
    if (answered) {
        report.add("cancelMicroseconds", *answered);
    }
    return report;
}

std::optional<Options> optionsOf(const std::vector<std::string>& words) {
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--measure" || word == "--scan" || word == "--scan-all" || word == "--idle") {
            options.mode = word;
        } else if (word == "--progress") {
            options.progress = true;
        } else if (word == "--cancel-after" && i + 1 < words.size()) {
            options.cancelAfter = wholeNumber<std::int64_t>(words[++i]);
        } else {
            options.folder = word;
        }
    }
    const bool complete = !options.mode.empty() && (options.mode == "--idle" || options.folder.starts_with('/'));
    return complete ? std::optional(options) : std::nullopt;
}

}  // namespace

int main(int count, char** arguments) {
    const auto options = optionsOf({arguments + 1, arguments + count});
    if (!options) {
        std::cerr << "usage: walk_driver --measure|--scan|--scan-all|--idle [--progress] [--cancel-after MS] /FOLDER\n";
        return EXIT_FAILURE;
    }
    Report report = options->mode == "--idle"      ? Report{}
                    : options->mode == "--measure" ? measure(options->folder)
                                                   : scan(*options);
    report.add("peakKiB", peakMemory());
    std::cout << report.line() << '\n';
    return EXIT_SUCCESS;
}
