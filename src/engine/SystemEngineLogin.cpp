#include <utility>

#include "base/Localized.h"
#include "engine/SystemEngine.h"

namespace kestrune {

namespace {

const std::string onByDefaultKey = "kestrune_login_default_2_1";

const std::string title = "Kestrune";

bool isAllowed(NotificationAuthorization status) {
    switch (status) {
        case NotificationAuthorization::authorized:
        case NotificationAuthorization::provisional:
        case NotificationAuthorization::ephemeral:
            return true;
        case NotificationAuthorization::notDetermined:
        case NotificationAuthorization::denied:
            return false;
    }
    return false;
}

}  // namespace

void SystemEngine::ensureLaunchAtLoginOnFirstLaunch() {
    if (m_parts.preferences.boolean(onByDefaultKey).value_or(false)) {
        return;
    }
    m_parts.preferences.setBoolean(onByDefaultKey, true);
    if (!isLaunchAtLoginEnabled()) {
        toggleLaunchAtLogin();
    }
}

bool SystemEngine::isLaunchAtLoginEnabled() const {
    return m_parts.loginItem.isRegistered() || m_parts.loginItem.isAgentInstalled();
}

void SystemEngine::toggleLaunchAtLogin() {
    const bool isRegistered = m_parts.loginItem.isRegistered();
    // An agent that stands alone is what starts the program: turning it off is meant, not a second way of starting.
    const bool onlyTheAgent = !isRegistered && m_parts.loginItem.isAgentInstalled();
    if (onlyTheAgent || !m_parts.loginItem.setRegistered(!isRegistered)) {
        toggleLegacyLaunchAtLogin();
        return;
    }
    if (isRegistered && m_parts.loginItem.isAgentInstalled()) {
        m_parts.loginItem.setAgentInstalled(false);
    }
    notify(title, isRegistered ? localized("Start at Login: OFF") : localized("Start at Login: ON"));
}

void SystemEngine::toggleLegacyLaunchAtLogin() {
    if (m_parts.loginItem.isAgentInstalled()) {
        m_parts.loginItem.setAgentInstalled(false);
        notify(title, localized("Start at Login: OFF"));
    } else if (m_parts.loginItem.setAgentInstalled(true)) {
        notify(title, localized("Start at Login: ON"));
    }
}

void SystemEngine::queryNotificationPermission(std::function<void(bool allowed)> answer) {
    if (!m_parts.notificationCenter.hasIdentity()) {
        answer(false);
        return;
    }
    m_parts.notificationCenter.queryAuthorization(
        [alive = std::weak_ptr<Alive>(m_alive), answer = std::move(answer)](NotificationAuthorization status) {
            if (!alive.expired()) {
                answer(isAllowed(status));
            }
        });
}

}  // namespace kestrune
