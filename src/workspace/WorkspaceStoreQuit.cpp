#include <algorithm>
#include <array>

#include "base/Localized.h"
#include "base/Text.h"
#include "workspace/ReadableText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

ProcessReference referenceTo(const RunningItem& item) {
    return {item.id, item.executable, item.startTime};
}

std::string nameOf(const RunningItem& item) {
    return ReadableText::name(ReadableText::processName(item.name, item.executable, item.id));
}

// 0, 1 and negative numbers name no single process of the user's.
bool isAddressable(const RunningItem& item) {
    return item.id >= 2;
}

std::string listenersSentence(const RunningItem& item) {
    if (item.listeners.empty()) {
        return {};
    }
    return "\n\n" +
           localized("Listening on: %1. This stops the entire process, including its other work and connections.",
                     {joined(item.listeners, ", ")});
}

/// What tells this process from others of its name; nothing where the system does not say.
std::string detailLines(const RunningItem& item, const std::optional<ProcessDetails>& details,
                        const std::string& home) {
    if (!details) {
        return {};
    }
    std::vector<std::string> lines{localized("PID %1", {std::to_string(item.id)})};
    if (!details->workingDirectory.empty()) {
        lines.push_back(localized("Working folder: %1", {ReadableText::path(details->workingDirectory, home)}));
    }
    if (details->secondsRunning) {
        lines.push_back(localized("Running for %1", {ReadableText::duration(*details->secondsRunning)}));
    }
    return "\n\n" + joined(lines, "\n");
}

Alert quitQuestion(const RunningItem& item, bool force) {
    Alert alert;
    alert.style = force || !item.app ? AlertStyle::warning : AlertStyle::informational;
    alert.symbol = !item.app ? "stop.circle" : force ? "exclamationmark.triangle" : "power";
    alert.messageText = force ? localized("Force quit %1?", {nameOf(item)}) : localized("Quit %1?", {nameOf(item)});
    alert.text =
        force ? localized("Unsaved work can be lost. Use this only when the app won't quit normally.")
              : localized(
                    "Save your work first. Kestrune will request a normal quit and won't force the app to close. "
                    "Developer processes receive a termination request.");
    alert.text += listenersSentence(item);
    alert.buttons = {force ? localized("Force Quit") : localized("Quit"), localized("Cancel")};
    return alert;
}

/// The name an application goes by in a list of several.
std::string listedName(const RunningApplication& application) {
    for (const auto& name : {application.localizedName, application.bundleIdentifier}) {
        if (ReadableText::hasVisible(name)) {
            return ReadableText::name(name);
        }
    }
    return localized("PID %1", {std::to_string(application.processIdentifier)});
}

Alert nothingToQuit() {
    Alert alert;
    alert.messageText = localized("No other apps to quit");
    alert.text = localized("Kestrune, protected apps and background agents are kept running.");
    return alert;
}

Alert quitOthersQuestion(const std::vector<RunningApplication>& applications) {
    std::vector<std::string> names;
    std::transform(applications.begin(), applications.end(), std::back_inserter(names), listedName);
    Alert alert;
    alert.symbol = "power";
    alert.messageText = localized("Quit %1 other apps?", {std::to_string(applications.size())});
    alert.text =
        joined(names, ", ") + "\n\n" +
        localized(
            "Save your work first. Kestrune requests normal quits; apps may show their own save dialogs. "
            "Protected apps and background agents stay running. Unresponsive apps are never forced to close by "
            "this action.");
    alert.buttons = {localized("Quit Apps"), localized("Cancel")};
    return alert;
}

Alert purgeQuestion() {
    Alert alert;
    alert.symbol = "memorychip";
    alert.messageText = localized("Clear cached memory?");
    alert.text = localized(
        "macOS may ask for an administrator password. This does not close apps or delete files. macOS will refill "
        "useful caches as needed, so the benefit may be temporary.");
    alert.buttons = {localized("Continue"), localized("Cancel")};
    return alert;
}

}  // namespace

void WorkspaceStore::quitApp(const RunningItem& row, bool force) {
    // row may lie in a list that is replaced while the question is open.
    const RunningItem item = row;
    if (m_confirming || item.id == m_parts.engine.processIdentifier() || isProtected(item)) {
        return;
    }
    Alert question = quitQuestion(item, force);
    if (isAddressable(item)) {
        question.text += detailLines(item, m_parts.processControl.details(referenceTo(item)), home());
    }
    if (ask(question) != 0 || isProtected(item)) {
        return;
    }
    if (item.app) {
        quitApplication(item, force);
    } else {
        stopProcess(item);
    }
}

void WorkspaceStore::quitApplication(const RunningItem& item, bool force) {
    auto& applications = m_parts.runningApplications;
    if (applications.isTerminated(*item.app)) {
        refreshProcesses();
        return;
    }
    const bool accepted = force ? applications.forceTerminate(*item.app) : applications.terminate(*item.app);
    record({makeActivityId(), now(),
            force ? localized("Force quit requested: %1", {nameOf(item)})
                  : localized("Quit requested: %1", {nameOf(item)}),
            accepted ? localized("The app received the request. Refresh to see whether it has exited.")
                     : localized("The request was declined. Save your work and try quitting the app yourself."),
            std::nullopt, !accepted});
    refreshProcessesSoon();
}

void WorkspaceStore::stopProcess(const RunningItem& item) {
    const auto stop = [this, item, programNames = programNamesOf(item)] {
        // The user may have protected it while this waited behind other work.
        const bool sent = isAddressable(item) && !isKept(item, programNames) &&
                          m_parts.processControl.requestTermination(referenceTo(item));
        return ActivityEntry{makeActivityId(),
                             now(),
                             localized("Stop requested: %1", {nameOf(item)}),
                             sent ? localized("Sent a termination request to PID %1.", {std::to_string(item.id)})
                                  : localized("Process changed or couldn't be stopped. Rescan before retrying."),
                             std::nullopt,
                             !sent};
    };
    enqueueRecorded(stop, [this](const ActivityEntry& entry) {
        refreshProcesses();
        if (!entry.failed) {
            refreshProcessesSoon();
        }
    });
}

void WorkspaceStore::quitOtherApps() {
    if (m_confirming) {
        return;
    }
    const auto applications = quittableApplications();
    if (applications.empty()) {
        ask(nothingToQuit());
        return;
    }
    if (ask(quitOthersQuestion(applications)) != 0) {
        return;
    }
    std::size_t accepted = 0;
    for (const auto& application : applications) {
        if (mayQuit(application) && !m_parts.runningApplications.isTerminated(application) &&
            m_parts.runningApplications.terminate(application)) {
            ++accepted;
        }
    }
    record({makeActivityId(), now(), localized("Quit Other Apps requested"),
            localized("%1 of %2 apps accepted a quit request. This is not a count of confirmed exits; check Running "
                      "Apps for the "
                      "current state.",
                      {std::to_string(accepted), std::to_string(applications.size())}),
            std::nullopt, false});
    const std::string summary =
        localized("Quit requests sent to %1 apps. Protected apps were kept running.", {std::to_string(accepted)});
    message.set(summary);
    m_parts.engine.notify("Kestrune", summary);
    refreshProcessesSoon();
}

std::vector<RunningApplication> WorkspaceStore::quittableApplications() {
    auto applications = m_parts.runningApplications.runningApplications();
    std::erase_if(applications, [this](const RunningApplication& application) { return !mayQuit(application); });
    return applications;
}

bool WorkspaceStore::mayQuit(const RunningApplication& application) const {
    const std::string& executable = application.executable;
    return canQuitApplication(
               application.localizedName.empty() ? lastPathComponent(executable) : application.localizedName,
               application.processIdentifier, application.activationPolicy == ActivationPolicy::regular,
               m_parts.engine.processIdentifier()) &&
           !m_parts.engine.isProtected(executable);
}

void WorkspaceStore::purgeMemoryWithReview() {
    if (isPurging.get() || isCleaning.get() || m_confirming || ask(purgeQuestion()) != 0) {
        return;
    }
    isPurging.set(true);
    const auto purge = [this] {
        const ToolCommand tool = m_parts.systemTools.purgeMemory();
        const bool cleared = m_parts.engine.runPrivileged(tool.executable, tool.arguments);
        return ActivityEntry{
            makeActivityId(),
            now(),
            cleared ? localized("Inactive memory cleared") : localized("Memory action didn't complete"),
            cleared ? localized("macOS completed the purge command; memory will be reused as needed.")
                    : localized("Authorization was cancelled or the command failed."),
            std::nullopt,
            !cleared};
    };
    enqueueRecorded(purge, [this](const ActivityEntry& entry) {
        isPurging.set(false);
        const std::string summary =
            entry.failed ? localized("Memory action cancelled or unavailable.") : localized("Memory action completed.");
        message.set(summary);
        m_parts.engine.notify("Kestrune", summary);
    });
}

}  // namespace kestrune
