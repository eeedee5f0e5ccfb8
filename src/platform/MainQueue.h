#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace kestrune {

/// Keeps a timer running for as long as it lives. Main thread.
class Timer {
public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;
};

/// The main thread's own queue.
class MainQueue {
public:
    using Job = std::function<void()>;

    MainQueue() = default;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;
    virtual ~MainQueue() = default;

    /// Runs job on the main thread, after what was posted before. Any thread.
    virtual void post(Job job) = 0;

    /// Runs job once after delay, unless the timer is gone by then. Main thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay, Job job) = 0;

    /// Runs job every interval, the first time one interval from now, until the timer is gone. Main thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Job job) = 0;
};

}  // namespace kestrune
