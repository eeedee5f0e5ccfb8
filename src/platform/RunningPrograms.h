#pragma once

#include <string>
#include <vector>

namespace kestrune {

/// What of this user runs, by name: applications, command-line tools and servers alike.
class RunningPrograms {
public:
    RunningPrograms() = default;
    RunningPrograms(const RunningPrograms&) = delete;
    RunningPrograms& operator=(const RunningPrograms&) = delete;
    virtual ~RunningPrograms() = default;

    /// Each name once: as the desktop shows it ("IntelliJ IDEA"), else the program's own. None is empty. Main thread.
    [[nodiscard]] virtual std::vector<std::string> names() = 0;
};

}  // namespace kestrune
