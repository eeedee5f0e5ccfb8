#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace kestrune {

/// Runs jobs one at a time, in the order they were enqueued, off the main thread.
class SerialQueue {
public:
    using Job = std::function<void()>;

    SerialQueue() = default;
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;
    virtual ~SerialQueue() = default;

    /// Any thread. The job must not throw.
    virtual void enqueue(Job job) = 0;
};

/// A SerialQueue on a thread of its own, started by the first job. The destructor runs every job enqueued so far to
/// its end and joins the thread.
class ThreadSerialQueue final : public SerialQueue {
public:
    explicit ThreadSerialQueue(std::string label);
    ~ThreadSerialQueue() override;

    void enqueue(Job job) override;

    [[nodiscard]] const std::string& label() const { return m_label; }

private:
    void run();

    const std::string m_label;
    std::mutex m_lock;
    std::condition_variable m_wake;
    std::deque<Job> m_jobs;
    bool m_ending = false;
    std::thread m_thread;
};

}  // namespace kestrune
