#include <algorithm>

#include "base/Localized.h"
#include "engine/AppProtection.h"
#include "workspace/ReadableText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

bool WorkspaceStore::isProtected(const RunningItem& item) const {
    const auto& names = protectedApps.get();
    if (m_parts.engine.isProtected(item.name) || m_parts.engine.isProtected(item.executable) ||
        names.contains(item.name)) {
        return true;
    }
    const std::vector<std::string> programNames = programNamesOf(item);
    return std::any_of(programNames.begin(), programNames.end(),
                       [&names](const std::string& name) { return names.contains(name); });
}

std::vector<std::string> WorkspaceStore::programNamesOf(const RunningItem& item) const {
    return item.app ? std::vector<std::string>{} : m_parts.runningApplications.namesOfProgram(item.executable);
}

bool WorkspaceStore::isKept(const RunningItem& item, const std::vector<std::string>& programNames) const {
    const auto names = m_parts.engine.keptNames();
    const auto& kept = *names;
    return AppProtection::sparesApplication(item.name, kept) || AppProtection::isProtected(item.executable, kept) ||
           std::any_of(programNames.begin(), programNames.end(),
                       [&kept](const std::string& name) { return kept.contains(name); });
}

bool WorkspaceStore::canQuitApplication(const std::string& name, std::int32_t pid, bool regular,
                                        std::int32_t ownPID) const {
    return regular && pid >= 1 && pid != ownPID && !m_parts.engine.isProtected(name) &&
           !protectedApps.get().contains(name);
}

void WorkspaceStore::toggleProtection(const RunningItem& item) {
    auto names = protectedApps.get();
    if (names.erase(item.name) == 0) {
        names.insert(item.name);
    }
    setProtectedApps(std::move(names));
}

void WorkspaceStore::removeProtection(const std::string& name) {
    auto names = protectedApps.get();
    if (names.erase(name) > 0) {
        setProtectedApps(std::move(names));
    }
}

void WorkspaceStore::protectCurrentApp() {
    const auto application = m_parts.engine.currentExternalApp();
    if (!application || application->localizedName.empty()) {
        return;
    }
    auto names = protectedApps.get();
    names.insert(application->localizedName);
    setProtectedApps(std::move(names));
    m_parts.engine.notify("Kestrune", localized("Protected %1. Kestrune will keep it running.",
                                                {ReadableText::name(application->localizedName)}));
}

void WorkspaceStore::setProtectedApps(std::set<std::string> names) {
    const std::vector<std::string> kept(names.begin(), names.end());
    protectedApps.set(std::move(names));
    noteSaved(m_parts.engine.setAlwaysKeepApps(kept));
}

bool WorkspaceStore::tellsFrontmost() {
    return m_parts.runningApplications.tellsFrontmost();
}

}  // namespace kestrune
