#include "base/SerialQueue.h"

#include <utility>

namespace kestrune {

ThreadSerialQueue::ThreadSerialQueue(std::string label) : m_label(std::move(label)) {
}

ThreadSerialQueue::~ThreadSerialQueue() {
    {
        const std::lock_guard guard(m_lock);
        m_ending = true;
    }
    m_wake.notify_one();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void ThreadSerialQueue::enqueue(Job job) {
    {
        const std::lock_guard guard(m_lock);
        m_jobs.push_back(std::move(job));
        if (!m_thread.joinable()) {
            m_thread = std::thread([this] { run(); });
        }
    }
    m_wake.notify_one();
}

void ThreadSerialQueue::run() {
    std::unique_lock guard(m_lock);
    while (true) {
        m_wake.wait(guard, [this] { return m_ending || !m_jobs.empty(); });
        if (m_jobs.empty()) {
            return;
        }
        const Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        guard.unlock();
        job();
        guard.lock();
    }
}

}  // namespace kestrune
