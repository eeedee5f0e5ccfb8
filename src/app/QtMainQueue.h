#pragma once

#include <QObject>

#include "platform/MainQueue.h"

namespace kestrune {

/// The main thread's queue on Qt's event loop. Build it on the main thread; jobs that have not run when it goes away
/// are dropped.
class QtMainQueue final : public MainQueue {
public:
    void post(Job job) override;

    /// Delays of two seconds and more may be a second off, so that the processor wakes once for many timers.
    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::milliseconds delay, Job job) override;
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Job job) override;

private:
    QObject m_context;
};

}  // namespace kestrune
