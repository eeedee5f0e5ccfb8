#pragma once

#include <algorithm>
#include <chrono>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "platform/MainQueue.h"

namespace kestrune {

/// A serial queue whose jobs run when the test says so, on the test's thread.
class ManualSerialQueue final : public SerialQueue {
public:
    explicit ManualSerialQueue(std::string queueLabel = {}) : label(std::move(queueLabel)) {}

    void enqueue(Job job) override { m_jobs.push_back(std::move(job)); }

    /// Runs the oldest job; false when there is none.
    bool runOne() {
        if (m_jobs.empty()) {
            return false;
        }
        const Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        job();
        return true;
    }

    void runAll() {
        while (runOne()) {
        }
    }

    [[nodiscard]] std::size_t waiting() const { return m_jobs.size(); }

    const std::string label;

private:
    std::deque<Job> m_jobs;
};

/// Time that stands still until the test moves it.
class ManualClock final : public Clock {
public:
    [[nodiscard]] WallTime now() const override { return wall; }

    [[nodiscard]] Seconds uptime() const override { return up; }

    void advance(Seconds by) {
        wall += by;
        up += by;
    }

    WallTime wall{Seconds{1'800'000'000}};
    Seconds up{1000};
};

/// A main queue without an event loop: posted jobs and due timers run when the test says so.
class ManualMainQueue final : public MainQueue {
public:
    void post(Job job) override { m_jobs.push_back(std::move(job)); }

    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::milliseconds delay, Job job) override {
        return schedule(delay, std::move(job), false);
    }

    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Job job) override {
        return schedule(interval, std::move(job), true);
    }

    /// Runs what was posted, and what that posts in turn.
    void runPosted() {
        while (!m_jobs.empty()) {
            const Job job = std::move(m_jobs.front());
            m_jobs.pop_front();
            job();
        }
    }

    /// Lets this much time pass for the timers, running each as often as it falls due.
    void advance(std::chrono::milliseconds by) {
        const auto end = m_time + by;
        while (true) {
            std::erase_if(m_timers, [](const auto& timer) { return timer.expired(); });
            std::shared_ptr<Entry> next;
            for (const auto& known : m_timers) {
                const auto timer = known.lock();
                if (timer && timer->due <= end && (!next || timer->due < next->due)) {
                    next = timer;
                }
            }
            if (!next) {
                break;
            }
            m_time = next->due;
            next->due = next->repeats ? next->due + next->interval : std::chrono::milliseconds::max();
            next->job();
            runPosted();
        }
        m_time = end;
    }

    [[nodiscard]] std::size_t timers() const {
        return static_cast<std::size_t>(
            std::count_if(m_timers.begin(), m_timers.end(), [](const auto& timer) { return !timer.expired(); }));
    }

private:
    struct Entry {
        std::chrono::milliseconds due;
        std::chrono::milliseconds interval;
        bool repeats;
        Job job;
    };

    class Handle final : public Timer {
    public:
        explicit Handle(std::shared_ptr<Entry> entry) : m_entry(std::move(entry)) {}

    private:
        std::shared_ptr<Entry> m_entry;
    };

    std::unique_ptr<Timer> schedule(std::chrono::milliseconds interval, Job job, bool repeats) {
        auto entry = std::make_shared<Entry>(Entry{m_time + interval, interval, repeats, std::move(job)});
        m_timers.push_back(entry);
        return std::make_unique<Handle>(std::move(entry));
    }

    std::deque<Job> m_jobs;
    std::vector<std::weak_ptr<Entry>> m_timers;
    std::chrono::milliseconds m_time{0};
};

}  // namespace kestrune
