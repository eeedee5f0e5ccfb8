#include <algorithm>
#include <map>

#include "base/Localized.h"
#include "base/Text.h"
#include "engine/AppClosing.h"
#include "engine/AppProtection.h"
#include "engine/SystemEngine.h"

namespace kestrune {

namespace {

const std::string programName = "Kestrune";

}  // namespace

std::vector<RunningApplication> SystemEngine::closingCandidates() {
    std::vector<RunningApplication> candidates = m_parts.runningApplications.runningApplications();
    const std::shared_ptr<const AppProtection::NameSet> kept = keptNames();
    std::erase_if(candidates, [&](const RunningApplication& application) {
        return application.activationPolicy != ActivationPolicy::regular || isThisProgram(application) ||
               AppProtection::sparesApplication(application.localizedName, *kept) ||
               AppProtection::isProtected(application.executable, *kept);
    });
    return candidates;
}

void SystemEngine::killHeavyApps() {
    std::vector<std::string> closed;
    for (const RunningApplication& application : closingCandidates()) {
        if (application.processIdentifier >= 1 && AppClosing::isHeavy(application) &&
            m_parts.runningApplications.terminate(application)) {
            closed.push_back(application.localizedName);
        }
    }
    notify(programName,
           closed.empty() ? localized("No heavy apps running") : localized("Killed: %1", {joined(closed, ", ")}));
}

void SystemEngine::killDevServers() {
    notify(programName, localized("Review individual developer processes in Running Apps before stopping them."));
}

std::optional<RunningApplication> SystemEngine::appToKeep() {
    std::optional<RunningApplication> app = currentExternalApp();
    const bool isUsable = app && !isThisProgram(*app) && !m_parts.runningApplications.isTerminated(*app);
    return isUsable ? std::move(app) : std::nullopt;
}

void SystemEngine::keepFrontmostKillRest() {
    const std::optional<RunningApplication> kept = appToKeep();
    if (!kept) {
        notify(programName, localized("Not sure which app to keep · click into the app you are using, then try again"));
        return;
    }
    std::map<std::int32_t, RunningApplication> closing;
    for (const RunningApplication& application : closingCandidates()) {
        if (application.processIdentifier >= 1 && application.processIdentifier != kept->processIdentifier &&
            !application.localizedName.empty()) {
            closing.emplace(application.processIdentifier, application);
        }
    }
    std::vector<std::string> names;
    for (const auto& [processIdentifier, application] : closing) {
        names.push_back(application.localizedName);
        const auto found = m_parts.runningApplications.application(processIdentifier);
        if (found && AppClosing::isSameProcess(*found, application.startTime)) {
            // It is named whether it accepts or not: the message says what was asked.
            static_cast<void>(m_parts.runningApplications.terminate(application));
        }
    }
    const std::string keptName = kept->localizedName.empty() ? localized("frontmost app") : kept->localizedName;
    std::sort(names.begin(), names.end());
    notify(programName, names.empty() ? localized("No other apps to close · kept %1", {keptName})
                                      : localized("Kept %1 · closed: %2", {keptName, joined(names, ", ")}));
}

void SystemEngine::killEverything() {
    for (const RunningApplication& application : closingCandidates()) {
        static_cast<void>(m_parts.runningApplications.terminate(application));
    }
}

void SystemEngine::autoFreeMemory() {
    notify(programName, localized("Memory usage is %1%. Review Running Apps before choosing what to close.",
                                  {std::to_string(getMemorySummary().pct)}));
}

void SystemEngine::deepClean() {
    notify(programName, localized("Open Storage to review and move selected caches to Trash."));
}

}  // namespace kestrune
