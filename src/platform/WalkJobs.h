#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/WalkChildren.h"

namespace kestrune {

/// A part of a walk that one worker does alone unless it hands some of it on. Folder owns an open folder.
template <class Folder>
struct WalkJob {
    enum class Kind {
        list,  ///< list the folder
        look,  ///< look at some of its entries, which were listed: names holds them
        enter  ///< visit some of its sub-folders, which were looked at: names holds them, each closed by a NUL
    };

    Kind kind = Kind::list;
    Folder folder;
    std::size_t depth = 0;             ///< of the folder below the root of the walk
    std::string path;                  ///< of the folder below the root, "" for the root
    std::shared_ptr<WalkChild> child;  ///< the root's child that the folder belongs to; none for the root itself
    std::string names;
};

/// Where the workers of a walk meet: who runs out of work waits here, and who has plenty sees that and gives some away.
/// Nothing is taken from a worker that does not offer it, so each walks without a lock. At most one job waits for each
/// idle worker, which bounds the descriptors in waiting jobs. The first worker brings its own job; the others start
/// when there is one for them. Any thread.
template <class Folder>
class WalkJobs final {
public:
    using Job = WalkJob<Folder>;

    /// What each further worker runs on its thread, given its number, from 1 on, and its first job.
    using Work = std::function<void(std::size_t worker, Job job)>;

    explicit WalkJobs(Work work) : m_work(std::move(work)) {}

    WalkJobs(const WalkJobs&) = delete;
    WalkJobs& operator=(const WalkJobs&) = delete;

    /// Joins the further workers, which must have been ended.
    ~WalkJobs() {
        for (std::thread& thread : m_threads) {
            thread.join();
        }
    }

    /// Lets so many further workers start as there is work for them.
    void allowWorkers(std::size_t workers) { m_wanted.fetch_add(static_cast<int>(workers), std::memory_order_relaxed); }

    /// Whether a job would find a worker. Costs nothing; may be out of date.
    [[nodiscard]] bool areWanted() const { return m_wanted.load(std::memory_order_relaxed) > 0; }

    /// Reserves the place for one job, which give() fills or disclaim() frees. False: nobody wants one.
    [[nodiscard]] bool claim() {
        int wanted = m_wanted.load(std::memory_order_relaxed);
        while (wanted > 0) {
            if (m_wanted.compare_exchange_weak(wanted, wanted - 1, std::memory_order_relaxed)) {
                return true;
            }
        }
        return false;
    }

    void disclaim() { m_wanted.fetch_add(1, std::memory_order_relaxed); }

    void give(Job job) {
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

    /// For a worker whose job is done: waits for the next. Nothing: all is done, or the walk was ended.
    [[nodiscard]] std::optional<Job> take() {
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
        Job job = std::move(m_waiting.front());
        m_waiting.pop_front();
        return job;
    }

    /// Ends the walk early: what waits is dropped.
    void end() {
        std::deque<Job> dropped;
        const std::scoped_lock guard(m_lock);
        m_ended = true;
        dropped.swap(m_waiting);
        m_changed.notify_all();
    }

private:
    void startWorker(Job job) {
        const auto first = std::make_shared<Job>(std::move(job));
        try {
            m_threads.emplace_back([this, worker = m_threads.size() + 1, first] { m_work(worker, std::move(*first)); });
        } catch (const std::system_error&) {
            m_waiting.push_back(std::move(*first));  // no thread to spare: whoever is done first takes it
        }
    }

    const Work m_work;
    std::atomic<int> m_wanted{0};  ///< idle workers and those that may start, less the jobs claimed for them
    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<Job> m_waiting;
    std::vector<std::thread> m_threads;
    std::size_t m_idle = 0;
    bool m_ended = false;
};

}  // namespace kestrune
