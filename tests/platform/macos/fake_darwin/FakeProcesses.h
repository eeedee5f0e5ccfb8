#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace kestrune {

/// A process as the stand-ins for sysctl and libproc tell of it.
struct FakeProcess {
    std::int64_t startSeconds = 0;
    std::int32_t startMicroseconds = 0;
    std::uint32_t user = 501;
    std::string executable{};        ///< empty: not shown
    std::string workingDirectory{};  ///< empty: not shown
    bool isZombie = false;
};

/// The processes that run. One for all tests: reset before each.
class FakeProcesses final {
public:
    static void reset();
    static void set(std::int32_t pid, FakeProcess process);
    static void remove(std::int32_t pid);

    /// Calls then once, after the next question for an executable was answered.
    static void afterNextExecutable(std::function<void()> then);
};

}  // namespace kestrune
