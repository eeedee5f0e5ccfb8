#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune {

/// How a command ended and what it wrote.
struct ProcessResult {
    std::int32_t status =
        -1;              ///< exit status; the signal's number when a signal ended it; -1 when it could not be started
    std::string output;  ///< standard output and standard error together, as raw bytes

    bool operator==(const ProcessResult&) const = default;
};

/// When a command that does not end by itself is made to, counted from its start.
struct ProcessLimits {
    double terminateAfterSeconds = 60;  ///< SIGTERM
    double killAfterSeconds = 62;       ///< SIGKILL
    double abandonAfterSeconds = 65;    ///< the caller stops reading, whoever still holds the pipe
};

/// Starts external tools. No shell stands between: the executable gets the argument vector as it is.
class ProcessRunner {
public:
    ProcessRunner() = default;
    ProcessRunner(const ProcessRunner&) = delete;
    ProcessRunner& operator=(const ProcessRunner&) = delete;
    virtual ~ProcessRunner() = default;

    /// Runs executable (an absolute path) with arguments (without the program name) and waits for its end. The child
    /// inherits the environment, the working folder and standard input, and nothing else: descriptors 0, 1 and 2 only,
    /// default signal dispositions and an empty signal mask. Blocks up to limits.abandonAfterSeconds; any thread but
    /// the main one.
    [[nodiscard]] virtual ProcessResult run(const std::string& executable, const std::vector<std::string>& arguments,
                                            const ProcessLimits& limits = {}) = 0;
};

}  // namespace kestrune
