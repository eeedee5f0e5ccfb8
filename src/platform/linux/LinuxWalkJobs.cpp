#include "platform/linux/LinuxWalkJobs.h"

#include <system_error>
#include <utility>

namespace kestrune {

LinuxWalkJobs::~LinuxWalkJobs() {
    for (std::thread& thread : m_threads) {
        thread.join();
    }
}

void LinuxWalkJobs::allowWorkers(std::size_t workers) {
    m_wanted.fetch_add(static_cast<int>(workers), std::memory_order_relaxed);
}

bool LinuxWalkJobs::claim() {
    int wanted = m_wanted.load(std::memory_order_relaxed);
    while (wanted > 0) {
        if (m_wanted.compare_exchange_weak(wanted, wanted - 1, std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

void LinuxWalkJobs::disclaim() {
    m_wanted.fetch_add(1, std::memory_order_relaxed);
}

void LinuxWalkJobs::give(LinuxWalkJob job) {
    const std::scoped_lock guard(m_lock);
    if (m_ended) {
        return;
    }
    if (m_waiting.size() < m_idle) {
        m_waiting.push_back(std::move(job));
        m_changed.notify_one();
    } else {
        startWorker(std::move(job));
    }
}

void LinuxWalkJobs::startWorker(LinuxWalkJob job) {
    const auto first = std::make_shared<LinuxWalkJob>(std::move(job));
    try {
        m_threads.emplace_back([this, worker = m_threads.size() + 1, first] { m_work(worker, std::move(*first)); });
    } catch (const std::system_error&) {
        m_waiting.push_back(std::move(*first));  // no thread to spare: whoever is done first takes it
    }
}

std::optional<LinuxWalkJob> LinuxWalkJobs::take() {
    std::unique_lock guard(m_lock);
    ++m_idle;
    m_wanted.fetch_add(1, std::memory_order_relaxed);
    if (m_waiting.empty() && m_idle == m_threads.size() + 1) {
        m_ended = true;
        m_changed.notify_all();
    }
    m_changed.wait(guard, [this] { return m_ended || !m_waiting.empty(); });
    --m_idle;
    if (m_ended) {
        return std::nullopt;
    }
    LinuxWalkJob job = std::move(m_waiting.front());
    m_waiting.pop_front();
    return job;
}

void LinuxWalkJobs::end() {
    std::deque<LinuxWalkJob> dropped;
    const std::scoped_lock guard(m_lock);
    m_ended = true;
    dropped.swap(m_waiting);
    m_changed.notify_all();
}

}  // namespace kestrune
