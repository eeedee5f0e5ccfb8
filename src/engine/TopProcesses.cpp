#include "engine/TopProcesses.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/Text.h"
#include "engine/FiniteNumber.h"

namespace kestrune::TopProcesses {

std::vector<TopProcess> parse(std::string_view output) {
    const std::vector<std::string> lines = split(output, '\n');
    std::vector<TopProcess> processes;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        std::vector<std::string> pieces = splitAtWhiteSpace(lines[i]);
        if (pieces.size() < 2) {
            continue;
        }
        if (const std::optional<double> mem = finiteNumber(pieces[0])) {
            processes.push_back({*mem, std::move(pieces[1])});
        }
    }
    std::stable_sort(processes.begin(), processes.end(),
                     [](const TopProcess& a, const TopProcess& b) { return a.mem > b.mem; });
    return processes;
}

}  // namespace kestrune::TopProcesses
