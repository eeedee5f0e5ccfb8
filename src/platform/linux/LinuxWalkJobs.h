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
#include <thread>
#include <utility>
#include <vector>

#include "platform/WalkChildren.h"
#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// A part of a walk that one worker does alone unless it hands some of it on.
struct LinuxWalkJob {
    enum class Kind {
        list,  ///< list the folder
        look,  ///< look at some of its entries: names holds LinuxWalkNames
        enter  ///< visit some of its sub-folders, which were looked at: names holds them, each closed by a NUL
    };

    Kind kind = Kind::list;
    LinuxFileDescriptor folder;
    std::size_t depth = 0;             ///< of the folder below the root of the walk
    std::string path;                  ///< of the folder below the root, "" for the root
    std::shared_ptr<WalkChild> child;  ///< the root's child that the folder belongs to; none for the root itself
    std::string names;
};

/// Where the workers of a walk meet: who runs out of work waits here, and who has plenty sees that and gives some away.
/// Nothing is taken from a worker that does not offer it, so each walks without a lock. At most one job waits for each
/// idle worker, which bounds the descriptors in waiting jobs. The first worker brings its own job; the others start
/// when there is one for them. Any thread.
class LinuxWalkJobs final {
public:
    /// What each further worker runs on its thread, given its number, from 1 on, and its first job.
    using Work = std::function<void(std::size_t worker, LinuxWalkJob job)>;

    explicit LinuxWalkJobs(Work work) : m_work(std::move(work)) {}

    LinuxWalkJobs(const LinuxWalkJobs&) = delete;
    LinuxWalkJobs& operator=(const LinuxWalkJobs&) = delete;

    /// Joins the further workers, which must have been ended.
    ~LinuxWalkJobs();

    /// Lets so many further workers start as there is work for them.
    void allowWorkers(std::size_t workers);

    /// Whether a job would find a worker. Costs nothing; may be out of date.
    [[nodiscard]] bool areWanted() const { return m_wanted.load(std::memory_order_relaxed) > 0; }

    /// Reserves the place for one job, which give() fills or disclaim() frees. False: nobody wants one.
    [[nodiscard]] bool claim();
    void disclaim();
    void give(LinuxWalkJob job);

    /// For a worker whose job is done: waits for the next. Nothing: all is done, or the walk was ended.
    [[nodiscard]] std::optional<LinuxWalkJob> take();

    /// Ends the walk early: what waits is dropped.
    void end();

private:
    void startWorker(LinuxWalkJob job);

    const Work m_work;
    std::atomic<int> m_wanted{0};  ///< idle workers and those that may start, less the jobs claimed for them
    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<LinuxWalkJob> m_waiting;
    std::vector<std::thread> m_threads;
    std::size_t m_idle = 0;
    bool m_ended = false;
};

}  // namespace kestrune
