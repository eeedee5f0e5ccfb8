#include "app/QtMainQueue.h"

#include <QTimer>

#include <utility>

namespace kestrune {

namespace {

class QtTimer final : public Timer {
public:
    QtTimer(std::chrono::milliseconds interval, bool repeats, MainQueue::Job job) {
        m_timer.setSingleShot(!repeats);
        m_timer.setTimerType(interval < std::chrono::seconds{2} ? Qt::CoarseTimer : Qt::VeryCoarseTimer);
        // The job is copied before it runs, because it may destroy this timer.
        QObject::connect(&m_timer, &QTimer::timeout, [job = std::move(job)] { MainQueue::Job{job}(); });
        m_timer.start(interval);
    }

private:
    QTimer m_timer;
};

}  // namespace

void QtMainQueue::post(Job job) {
    QMetaObject::invokeMethod(&m_context, std::move(job), Qt::QueuedConnection);
}

std::unique_ptr<Timer> QtMainQueue::after(std::chrono::milliseconds delay, Job job) {
    return std::make_unique<QtTimer>(delay, false, std::move(job));
}

std::unique_ptr<Timer> QtMainQueue::every(std::chrono::milliseconds interval, Job job) {
    return std::make_unique<QtTimer>(interval, true, std::move(job));
}

}  // namespace kestrune
