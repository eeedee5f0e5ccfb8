// Whether the window stays smooth while a folder is measured: explorer_driver FOLDER opens the workspace window on the
// Disk Explorer, scans FOLDER with the program's walker, queues and threads, without a limit, and prints for how long
// the main thread was away and how far ticks at 60 a second lay apart, beside the same window without a scan.

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/QtMainQueue.h"
#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "platform/linux/LinuxDirectoryWalker.h"
#include "tests/fakes/StoreFixture.h"
#include "ui/Theme.h"
#include "ui/WorkspaceWindow.h"

namespace {

using namespace kestrune;

constexpr auto idleTime = std::chrono::seconds{3};
constexpr int scans = 3;
constexpr double share = 0.95;

/// The program's walker, without the limit on entries that the Disk Explorer sets.
class UnlimitedWalker final : public DirectoryWalker {
public:
    [[nodiscard]] TreeWalk walk(const WalkRequest& request) override {
        WalkRequest whole = request;
        whole.entryLimit = -1;
        whole.timeIsUp = {};
        return m_walker.walk(whole);
    }

private:
    LinuxDirectoryWalker m_walker;
};

/// A store that walks and waits as the program's does; everything else of the system is made up.
class ScanningStore final {
public:
    ScanningStore()
        : m_store({m_parts.engine,
                   m_parts.cleaners,
                   m_parts.preferences,
                   m_parts.fileStore,
                   m_parts.fileQueries,
                   m_parts.fileViewer,
                   m_walker,
                   m_parts.folderChooser,
                   m_parts.applications,
                   m_parts.programs,
                   m_parts.processes,
                   m_parts.processControl,
                   m_parts.systemTools,
                   m_parts.memoryPressure,
                   m_parts.alerts,
                   m_parts.trash,
                   m_parts.linkOpener,
                   m_mainQueue,
                   m_clock,
                   [](const std::string& label) { return std::make_unique<ThreadSerialQueue>(label); },
                   {}}) {}

    WorkspaceStore& store() { return m_store; }

private:
    StoreFixture m_parts;
    UnlimitedWalker m_walker;
    QtMainQueue m_mainQueue;
    SystemClock m_clock;
    WorkspaceStore m_store;
};

/// Keeps the longest time that the main thread spent on one event, and on all that it led to.
class TimedApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        if (m_busy) {
            return QApplication::notify(receiver, event);
        }
        m_busy = true;
        QElapsedTimer timer;
        timer.start();
        const bool handled = QApplication::notify(receiver, event);
        m_longest = std::max(m_longest, static_cast<double>(timer.nsecsElapsed()) / 1e6);
        m_busy = false;
        return handled;
    }

    /// Milliseconds since this was last asked.
    double takeLongest() { return std::exchange(m_longest, 0.0); }

private:
    bool m_busy = false;
    double m_longest = 0;
};

/// Ticks at 60 a second while it lives.
class Watch final : public QObject {
public:
    explicit Watch(TimedApplication& application) : m_application(application) {
        connect(&m_ticks, &QTimer::timeout, this, [this] {
            m_gaps.push_back(milliseconds(m_sinceTick));
            m_sinceTick.start();
        });
        m_ticks.setTimerType(Qt::PreciseTimer);
        static_cast<void>(m_application.takeLongest());
        m_sinceTick.start();
        m_ticks.start(std::chrono::milliseconds{16});
    }

    void report(const char* title) {
        std::sort(m_gaps.begin(), m_gaps.end());
        const auto place = static_cast<std::size_t>(share * static_cast<double>(m_gaps.size() - 1));
        std::printf("%-34s main thread away %6.1f ms at most; ticks %5.1f ms apart (95 of 100), %6.1f at most, %zu\n",
                    title, m_application.takeLongest(), m_gaps[place], m_gaps.back(), m_gaps.size());
    }

private:
    static double milliseconds(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) / 1e6; }

    TimedApplication& m_application;
    QTimer m_ticks;
    QElapsedTimer m_sinceTick;
    std::vector<double> m_gaps;
};

/// Runs the event loop for a while.
void rest(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

void scan(TimedApplication& application, WorkspaceStore& store, const std::string& folder) {
    int steps = 0;
    QEventLoop loop;
    const Subscription progress = store.explorerProgress.observe([&] { ++steps; });
    const Subscription ended = store.isExploring.observe([&] {
        if (!store.isExploring.get()) {
            loop.quit();
        }
    });
    QElapsedTimer time;
    Watch watch(application);
    time.start();
    store.explore(folder);
    loop.exec();
    const double seconds = static_cast<double>(time.elapsed()) / 1000;
    rest(std::chrono::milliseconds{500});  // what is shown of the result is painted
    watch.report(("scan of " + std::to_string(store.explorerResult.get().inspectedFiles) + " entries").c_str());
    std::printf("  in %.1f s, %d steps of progress\n", seconds, steps);
}

}  // namespace

int main(int count, char** arguments) {
    TimedApplication application(count, arguments);
    if (count != 2) {
        static_cast<void>(std::fputs("usage: explorer_driver /FOLDER\n", stderr));
        return EXIT_FAILURE;
    }
    Theme::start();
    ScanningStore scanning;
    WorkspaceStore& store = scanning.store();
    store.page.set(WorkspacePage::explorer);
    WorkspaceWindow window(store, {[] { return std::nullopt; }, [](const std::vector<double>&) {}});
    window.present();
    rest(std::chrono::seconds{1});
    {
        Watch watch(application);
        rest(idleTime);
        watch.report("no scan");
    }
    for (int i = 0; i < scans; ++i) {
        scan(application, store, arguments[1]);
    }
    return EXIT_SUCCESS;
}
