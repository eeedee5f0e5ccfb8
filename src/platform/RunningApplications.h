#pragma once

#include <string>
#include <vector>

namespace kestrune {

/// An application or tool of this user that runs now.
struct RunningApplication {
    std::string localizedName;  ///< as the desktop shows it ("IntelliJ IDEA"), else the program's name; never empty

    bool operator==(const RunningApplication&) const = default;
};

class RunningApplications {
public:
    RunningApplications() = default;
    RunningApplications(const RunningApplications&) = delete;
    RunningApplications& operator=(const RunningApplications&) = delete;
    virtual ~RunningApplications() = default;

    /// Everything of this user that runs. Main thread.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() = 0;
};

}  // namespace kestrune
