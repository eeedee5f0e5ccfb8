#include "app/AppDelegate.h"

#include <utility>

#include "base/Localized.h"

namespace kestrune {

namespace {

constexpr std::chrono::seconds refreshInterval{5};

constexpr double gibibytesPerMebibyte = 0.0009765625;

}  // namespace

AppDelegate::AppDelegate(AppDelegateParts parts) : m_parts(std::move(parts)) {
}

void AppDelegate::applicationDidFinishLaunching() {
    m_parts.dockTile.setActivationPolicy(DockTile::ActivationPolicy::accessory);
    m_parts.engine.ensureLaunchAtLoginOnFirstLaunch();
    startUpdater();
    m_parts.store.startMonitoring();
    refresh();
    m_timer = m_parts.mainQueue.every(refreshInterval, [this] { refresh(); });
}

void AppDelegate::refresh() {
    WorkspaceStore& store = m_parts.store;
    const MemorySummary memory = m_parts.engine.getMemorySummary();
    const DiskSummary disk = m_parts.engine.getDiskSummary();
    m_menu.refresh({.memoryPercent = memory.pct,
                    .freeDiskGB = disk.freeGB,
                    .message = store.message.get(),
                    .isScanning = store.isScanning.get(),
                    .isCleaning = store.isCleaning.get(),
                    .reminders = store.reminders.get(),
                    .updateAvailable = store.updateAvailable.get()});
    m_parts.statusItem.update(m_menu.content());

    store.memoryPercent.set(memory.pct);
    store.availableMemoryGB.set(memory.freeMB * gibibytesPerMebibyte);
    store.disk.set(disk);
    store.refreshTelemetry();
    if (m_parts.isWindowVisible() && showsProcesses(store.page.get())) {
        store.refreshProcesses();
    }
}

void AppDelegate::menuWillOpen() {
    refresh();
}

void AppDelegate::perform(MenuAction action) {
    switch (action) {
        case MenuAction::openOverview:
            return open(WorkspacePage::overview);
        case MenuAction::openStorage:
            return open(WorkspacePage::storage);
        case MenuAction::openExplorer:
            return open(WorkspacePage::explorer);
        case MenuAction::openAI:
            return open(WorkspacePage::ai);
        case MenuAction::openApps:
            return open(WorkspacePage::apps);
        case MenuAction::openAutomation:
            return open(WorkspacePage::automation);
        case MenuAction::openActivity:
            return open(WorkspacePage::activity);
        case MenuAction::openSettings:
            return open(WorkspacePage::settings);
        case MenuAction::openPorts:
            m_parts.dockTile.setActivationPolicy(DockTile::ActivationPolicy::regular);
            return m_parts.showPorts();
        case MenuAction::quickClean:
            return m_parts.store.quickClean(false);
        case MenuAction::cleanSaved:
            return cleanSaved();
        case MenuAction::protectCurrent:
            return protectCurrent();
        case MenuAction::quitOtherApps:
            return m_parts.store.quitOtherApps();
        case MenuAction::clearMemory:
            return m_parts.store.purgeMemoryWithReview();
        case MenuAction::toggleDaily:
            m_parts.store.setReminders(!m_parts.store.reminders.get());
            return refresh();
        case MenuAction::checkUpdates:
            return checkUpdates();
        case MenuAction::quit:
            terminate();
            return;
        default:
            // The editing commands belong to the focused text field.
            return;
    }
}

void AppDelegate::showWindow() {
    m_parts.dockTile.setActivationPolicy(DockTile::ActivationPolicy::regular);
    m_parts.showWindow();
}

void AppDelegate::open(WorkspacePage page) {
    m_parts.store.page.set(page);
    showWindow();
}

void AppDelegate::cleanSaved() {
    if (m_parts.store.savedSelection().empty()) {
        open(WorkspacePage::storage);
        m_parts.store.message.set(localized(
            "Choose folders in Storage, then click Save for Next Time. You can review those same folders from the "
            "menu next time."));
        return;
    }
    m_parts.store.quickClean(true);
}

void AppDelegate::protectCurrent() {
    if (m_parts.store.tellsFrontmost()) {
        m_parts.store.protectCurrentApp();
    } else {
        // The page says why nothing was protected and offers every app there is.
        open(WorkspacePage::apps);
    }
}

bool AppDelegate::isActing() const {
    return m_parts.store.isCleaning.get() || m_parts.store.isPurging.get();
}

bool AppDelegate::applicationShouldTerminate() {
    if (!isActing()) {
        return true;
    }
    if (!m_guardIsShown) {
        Alert alert;
        alert.messageText = localized("An action is still running");
        alert.text = localized(
            "Wait for the current action to finish before quitting or installing an update. You can stop cleanup "
            "after its current item.");
        m_guardIsShown = true;
        static_cast<void>(m_parts.alerts.present(alert));
        m_guardIsShown = false;
    }
    return false;
}

bool AppDelegate::terminate() {
    if (!applicationShouldTerminate()) {
        return false;
    }
    m_parts.exit();
    return true;
}

void AppDelegate::terminateAfterCurrentItem() {
    if (isActing()) {
        m_parts.store.cancelCleanup();
        // The fields change one after the other inside the store, so the look at both waits for the queue.
        const auto look = [this] { m_parts.mainQueue.post([this] { exitWhenIdle(); }); };
        m_exitSubscriptions.clear();
        m_exitSubscriptions.push_back(m_parts.store.isCleaning.observe(look));
        m_exitSubscriptions.push_back(m_parts.store.isPurging.observe(look));
    }
    exitWhenIdle();
}

void AppDelegate::exitWhenIdle() {
    if (!isActing()) {
        m_parts.exit();
    }
}

bool AppDelegate::sessionWillEnd(bool mayAsk) {
    if (mayAsk) {
        return applicationShouldTerminate();
    }
    terminateAfterCurrentItem();
    return true;
}

void AppDelegate::applicationShouldHandleReopen() {
    showWindow();
}

void AppDelegate::windowWillClose() {
    if (!m_parts.store.updateAvailable.get()) {
        m_parts.dockTile.setActivationPolicy(DockTile::ActivationPolicy::accessory);
    }
    endWithoutWindows();
}

void AppDelegate::endWithoutWindows() {
    const bool somethingIsLeft = m_parts.statusItem.isShown() || m_parts.isAnyWindowOpen();
    if (!somethingIsLeft && !terminate()) {
        showWindow();
    }
}

}  // namespace kestrune
