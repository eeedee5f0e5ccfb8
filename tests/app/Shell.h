#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/AppDelegate.h"
#include "tests/fakes/FakeDockTile.h"
#include "tests/fakes/FakeStatusItem.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/StoreFixture.h"

namespace kestrune {

/// The application shell on fakes only. The delegate is made at its first use.
class Shell final {
public:
    Shell() {
        world.hostStatistics.memoryPages =
            MemoryPages{.free = 100, .active = 300, .inactive = 0, .pageSize = 1U << 20U};
    }

    AppDelegate& delegate() {
        if (!m_delegate) {
            m_delegate = std::make_unique<AppDelegate>(
                AppDelegateParts{.store = world.store(),
                                 .engine = world.engine,
                                 .alerts = world.alerts,
                                 .mainQueue = world.mainQueue,
                                 .statusItem = statusItem,
                                 .updater = updater,
                                 .dockTile = dockTile,
                                 .downloadHost = "downloads.example",
                                 .activate = [this] { ++activations; },
                                 .showWindow = [this] { pagesShown.push_back(world.store().page.get()); },
                                 .showPorts = [this] { ++portsShown; },
                                 .isWindowVisible = [this] { return windowIsVisible; },
                                 .isAnyWindowOpen = [this] { return windowIsVisible || portsAreOpen; },
                                 .exit = [this] { ++exits; }});
        }
        return *m_delegate;
    }

    /// Lets go of the delegate alone; what it gave to others stays.
    void endDelegate() { m_delegate.reset(); }

    /// A cleanup of one item that has been confirmed and waits for the action queue.
    void startCleanup() {
        world.addCache(DevCleaners::devCandidates[0].title, 900'000'000);
        world.scan();
        world.store().selectRecommended();
        world.store().clean();
        world.mainQueue.runPosted();
        ASSERT_TRUE(world.store().isCleaning.get());
        world.alerts.alerts.clear();
    }

    StoreFixture world;
    FakeStatusItem statusItem;
    FakeUpdater updater;
    FakeDockTile dockTile;
    int activations = 0;
    std::vector<WorkspacePage> pagesShown;
    int portsShown = 0;
    bool windowIsVisible = false;
    bool portsAreOpen = false;
    int exits = 0;

private:
    std::unique_ptr<AppDelegate> m_delegate;
};

}  // namespace kestrune
