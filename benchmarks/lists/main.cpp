// How long the main thread is away when ten thousand servers appear, change and are scrolled through, on the Running
// Apps page and in the port window. Run it with QT_QPA_PLATFORM=offscreen or on a desktop.

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <functional>

#include "tests/fakes/StoreFixture.h"
#include "tests/ui/RunningItems.h"
#include "ui/PortReviewWindow.h"
#include "ui/RunningAppsPage.h"
#include "ui/ScrollArea.h"
#include "ui/Theme.h"

namespace {

using namespace kestrune;

constexpr int rows = 10'000;
constexpr int listings = 12;
constexpr int scrollSteps = 500;

/// Runs steps, each with the painting it causes, and keeps the longest.
class Away final {
public:
    void run(const std::function<void()>& step) {
        QElapsedTimer timer;
        timer.start();
        step();
        QApplication::processEvents();
        m_longest = std::max(m_longest, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }

    [[nodiscard]] double milliseconds() const { return m_longest; }

private:
    double m_longest = 0;
};

void measure(const char* title, QWidget& window, StoreFixture& fixture) {
    window.show();
    QApplication::processEvents();
    Away listing;
    std::vector<RunningItem> items = manyProcesses(rows);
    for (int i = 0; i < listings; ++i) {
        std::rotate(items.begin(), items.begin() + 777, items.end());
        listing.run([&] { fixture.store().running.set(items); });
    }
    Away scrolling;
    QScrollBar* bar = window.findChild<ScrollArea*>()->verticalScrollBar();
    for (int step = 0; step <= scrollSteps; ++step) {
        scrolling.run([&] { bar->setValue(bar->maximum() / scrollSteps * step); });
    }
    std::printf("%-14s %d rows: a listing keeps the main thread %.1f ms at most, a step of scrolling %.1f ms\n", title,
                rows, listing.milliseconds(), scrolling.milliseconds());
}

}  // namespace

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    Theme::start();
    StoreFixture fixture;
    fixture.store().processesListed.set(true);
    {
        RunningAppsPage page(fixture.store());
        page.resize(840, 720);
        measure("Running Apps", page, fixture);
    }
    fixture.store().running.set({});
    PortReviewWindow window(fixture.store());
    measure("port window", window, fixture);
    return 0;
}
