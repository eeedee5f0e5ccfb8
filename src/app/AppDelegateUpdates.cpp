#include "app/AppDelegate.h"
#include "base/Localized.h"

namespace kestrune {

namespace {

constexpr std::chrono::milliseconds recheckDelay{500};

// Says that an update waits where it lasts: in the dock.
const std::string updateBadge = "↑";

}  // namespace

void AppDelegate::startUpdater() {
    if (!m_parts.updater.isConfigured()) {
        m_parts.store.updateStatus.set(noUpdatesText());
        return;
    }
    m_parts.updater.start(*this);
    m_parts.store.checkUpdates = [self = std::weak_ptr<AppDelegate*>(m_self)] {
        if (const auto delegate = self.lock()) {
            (*delegate)->checkUpdates();
        }
    };
}

std::string AppDelegate::noUpdatesText() const {
    return localized("This build doesn’t look for updates. Get new versions from %1.", {m_parts.downloadHost});
}

void AppDelegate::checkUpdates() {
    if (!m_parts.updater.isConfigured()) {
        m_parts.store.updateStatus.set(noUpdatesText());
        open(WorkspacePage::settings);
        return;
    }
    m_parts.dockTile.setActivationPolicy(DockTile::ActivationPolicy::regular);
    m_parts.activate();
    m_parts.store.updateStatus.set(localized("Checking for updates…"));
    m_parts.updater.checkForUpdates();
}

void AppDelegate::setUpdateAvailable(const UpdateItem& item) {
    m_parts.store.updateAvailable.set(true);
    m_parts.store.updateStatus.set(localized("Version %1 is available", {item.displayVersion}));
}

void AppDelegate::clearUpdate() {
    // What is withdrawn must not come forward half a second later.
    m_recheck.reset();
    m_parts.store.updateAvailable.set(false);
    m_parts.dockTile.setBadgeLabel({});
}

void AppDelegate::didFindValidUpdate(const UpdateItem& item) {
    setUpdateAvailable(item);
    refresh();
}

void AppDelegate::willHandleShowingUpdate(const UpdateItem& item, bool userInitiated) {
    setUpdateAvailable(item);
    m_parts.dockTile.setActivationPolicy(DockTile::ActivationPolicy::regular);
    m_parts.dockTile.setBadgeLabel(updateBadge);
    if (userInitiated) {
        m_recheck.reset();
        m_parts.activate();
    } else {
        m_recheck = m_parts.mainQueue.after(recheckDelay, [this] {
            m_parts.activate();
            m_parts.updater.checkForUpdates();
        });
        m_parts.engine.notify(localized("Kestrune update available"),
                              localized("Open Kestrune's menu and choose Update Available to install version %1.",
                                        {item.displayVersion}));
    }
    refresh();
}

void AppDelegate::userDidMake(UpdateChoice choice, const UpdateItem& item) {
    if (choice != UpdateChoice::skip) {
        return;
    }
    clearUpdate();
    m_parts.store.updateStatus.set(
        localized("Skipped version %1. You can check again manually.", {item.displayVersion}));
    refresh();
}

void AppDelegate::didNotFindUpdate() {
    clearUpdate();
    m_parts.store.updateStatus.set(localized("No compatible update found. Last checked just now."));
    refresh();
}

void AppDelegate::didAbortWithError(const UpdaterError& error) {
    switch (error.code) {
        case UpdaterError::noUpdate:
            return;
        case UpdaterError::cancelled:
            m_parts.store.updateStatus.set(localized("Stopped. You can check again manually."));
            return;
        default:
            m_parts.store.updateStatus.set(localized("Update couldn't finish: %1 Retry or download from %2.",
                                                     {error.description, m_parts.downloadHost}));
    }
}

bool AppDelegate::shouldInstallUpdate() {
    return applicationShouldTerminate();
}

}  // namespace kestrune
