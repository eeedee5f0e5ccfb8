#include "base/Localized.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

void WorkspaceStore::refreshSettings() {
    launchesAtLogin.set(m_parts.engine.isLaunchAtLoginEnabled());
    reducedMotion.set(m_parts.engine.reduceFX());
    m_parts.engine.queryNotificationPermission([this, alive = std::weak_ptr<bool>(m_alive)](bool allowed) {
        if (!alive.expired()) {
            notificationsAllowed.set(allowed);
        }
    });
}

void WorkspaceStore::toggleLaunchAtLogin() {
    m_parts.engine.toggleLaunchAtLogin();
    refreshSettings();
}

void WorkspaceStore::setReducedMotion(bool on) {
    reducedMotion.set(on);
    noteSaved(m_parts.engine.setReduceFX(on));
}

void WorkspaceStore::enableNotifications() {
    m_parts.engine.requestNotificationPermission();
    refreshSettings();
}

void WorkspaceStore::openHelp() {
    openPage(m_parts.helpPages.help, localized("The help page couldn't be opened."));
}

void WorkspaceStore::openUpdateHelp() {
    openPage(m_parts.helpPages.updateHelp, localized("The update help couldn't be opened."));
}

void WorkspaceStore::openReleaseNotes() {
    openPage(m_parts.helpPages.releaseNotes, localized("The release notes couldn't be opened."));
}

void WorkspaceStore::openPage(const std::string& address, const std::string& failure) {
    if (m_parts.linkOpener.open(address)) {
        return;
    }
    const bool isOnTheWeb = address.starts_with("https://");
    message.set(failure + " " +
                (isOnTheWeb ? localized("Choose a default web browser, or open %1 yourself.", {address})
                            : localized("Choose a default web browser, then try again.")));
}

}  // namespace kestrune
