#include "engine/SystemEngine.h"

namespace kestrune {

void SystemEngine::ensureLaunchAtLoginOnFirstLaunch() {
}

bool SystemEngine::isLaunchAtLoginEnabled() const {
    return m_parts.loginItem.isRegistered();
}

void SystemEngine::toggleLaunchAtLogin() {
    toggleLegacyLaunchAtLogin();
}

void SystemEngine::toggleLegacyLaunchAtLogin() {
}

void SystemEngine::queryNotificationPermission(std::function<void(bool allowed)> answer) {
    answer(m_parts.notificationCenter.hasIdentity());
}

}  // namespace kestrune
