#include <utility>

#include "engine/AppClosing.h"
#include "engine/SystemEngine.h"
#include "engine/TopProcesses.h"

namespace kestrune {

namespace {

const std::string alwaysKeepKey = "alwaysKeepApps";

}  // namespace

bool SystemEngine::isProtected(const std::string& nameOrPath) const {
    return AppProtection::isProtected(nameOrPath, *keptNames());
}

std::vector<std::string> SystemEngine::alwaysKeepApps() const {
    return m_parts.preferences.texts(alwaysKeepKey).value_or(Preferences::Texts{});
}

std::shared_ptr<const AppProtection::NameSet> SystemEngine::keptNames() const {
    const std::scoped_lock guard(m_keptLock);
    // Asked first: what changes between the two is read at the next call.
    const std::uint64_t revision = m_parts.preferences.revision();
    if (!m_kept || m_keptRevision != revision) {
        const std::vector<std::string> names = alwaysKeepApps();
        m_kept = std::make_shared<const AppProtection::NameSet>(names.begin(), names.end());
        m_keptRevision = revision;
    }
    return m_kept;
}

bool SystemEngine::setAlwaysKeepApps(const std::vector<std::string>& names) {
    return m_parts.preferences.setTexts(alwaysKeepKey, names);
}

bool SystemEngine::isThisProgram(const RunningApplication& application) const {
    return application.processIdentifier == m_parts.processIdentifier;
}

void SystemEngine::trackAppActivation(const RunningApplication& application) {
    if (!isThisProgram(application)) {
        m_lastExternalActivePid = application.processIdentifier;
        m_lastExternalActiveStartTime = application.startTime;
    }
}

std::optional<RunningApplication> SystemEngine::currentExternalApp() {
    if (auto frontmost = m_parts.runningApplications.frontmostApplication(); frontmost && !isThisProgram(*frontmost)) {
        return frontmost;
    }
    return lastExternalApp();
}

std::optional<RunningApplication> SystemEngine::lastExternalApp() {
    if (m_lastExternalActivePid < 1) {
        return std::nullopt;
    }
    auto found = m_parts.runningApplications.application(m_lastExternalActivePid);
    return found && AppClosing::isSameProcess(*found, m_lastExternalActiveStartTime) ? std::move(found) : std::nullopt;
}

std::vector<TopProcess> SystemEngine::getTopProcesses(std::size_t limit) {
    std::vector<TopProcess> processes = TopProcesses::parse(run(m_parts.systemTools.topProcesses()).output);
    if (processes.size() > limit) {
        processes.resize(limit);
    }
    return processes;
}

}  // namespace kestrune
