#pragma once

#include <chrono>

namespace kestrune {

using Seconds = std::chrono::duration<double>;
using WallTime = std::chrono::sys_time<Seconds>;

/// The two times of day the program knows. Any thread.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Wall-clock time; may jump when the user or the network sets the clock.
    [[nodiscard]] virtual WallTime now() const = 0;

    /// Time since some fixed moment at or after boot; never goes backwards.
    [[nodiscard]] virtual Seconds uptime() const = 0;
};

class SystemClock final : public Clock {
public:
    [[nodiscard]] WallTime now() const override;
    [[nodiscard]] Seconds uptime() const override;
};

}  // namespace kestrune
