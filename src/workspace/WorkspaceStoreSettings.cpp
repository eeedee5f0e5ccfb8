#include "workspace/WorkspaceStore.h"

namespace kestrune {

void WorkspaceStore::refreshSettings() {
    launchesAtLogin.set(m_parts.engine.isLaunchAtLoginEnabled());
}

void WorkspaceStore::toggleLaunchAtLogin() {
    m_parts.engine.toggleLaunchAtLogin();
    refreshSettings();
}

void WorkspaceStore::setReducedMotion(bool on) {
    reducedMotion.set(on);
}

void WorkspaceStore::enableNotifications() {
    m_parts.engine.requestNotificationPermission();
}

void WorkspaceStore::openHelp() {
    openPage(m_parts.helpPages.help);
}

void WorkspaceStore::openUpdateHelp() {
    openPage(m_parts.helpPages.updateHelp);
}

void WorkspaceStore::openReleaseNotes() {
    openPage(m_parts.helpPages.releaseNotes);
}

void WorkspaceStore::openPage(const std::string& address) {
    static_cast<void>(m_parts.linkOpener.open(address));
}

}  // namespace kestrune
