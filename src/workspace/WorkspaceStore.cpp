#include "workspace/WorkspaceStore.h"

#include "base/Localized.h"
#include "workspace/ActivityLog.h"
#include "workspace/PreferenceKeys.h"
#include "workspace/WorkspaceStoreCleanup.h"

namespace kestrune {

namespace {

std::set<std::string> asSet(const std::vector<std::string>& texts) {
    return {texts.begin(), texts.end()};
}

}  // namespace

WorkspaceStore::WorkspaceStore(WorkspaceStoreParts parts)
    : m_parts(std::move(parts)),
      m_cancellation(std::make_shared<OperationCancellation>()),
      m_explorerCancellation(std::make_shared<OperationCancellation>()),
      m_alive(std::make_shared<bool>(true)),
      m_explorerQueue(m_parts.makeQueue("com.torvandelsyn.kestrune.explorer")),
      m_queue(m_parts.makeQueue("com.torvandelsyn.kestrune.actions")) {
    disk.set(m_parts.engine.getDiskSummary());
    reminders.set(m_parts.preferences.boolean(PreferenceKeys::scanReminders).value_or(false));
    lastReminder.set(m_parts.preferences.date(PreferenceKeys::lastScanReminder));
    excluded.set(asSet(m_parts.preferences.texts(PreferenceKeys::exclusions).value_or(Preferences::Texts{})));
    protectedApps.set(asSet(m_parts.engine.alwaysKeepApps()));
    reducedMotion.set(m_parts.engine.reduceFX());
    history.set(ActivityLog::load(m_parts.fileStore, home()));
}

WorkspaceStore::~WorkspaceStore() {
    m_cancellation->cancel();
    m_explorerCancellation->cancel();
    m_explorerQueue.reset();
    m_queue.reset();
    saveUnrecorded();
}

const std::string& WorkspaceStore::home() const {
    return m_parts.cleaners.home();
}

WallTime WorkspaceStore::now() const {
    return m_parts.clock.now();
}

bool WorkspaceStore::isBusy() const {
    return isScanning.get() || isCleaning.get() || m_confirming;
}

std::size_t WorkspaceStore::ask(const Alert& alert) {
    m_confirming = true;
    const std::size_t answer = m_parts.alerts.present(alert);
    m_confirming = false;
    if (const auto saved = std::exchange(m_waitingReview, std::nullopt)) {
        // After the caller has acted on the answer.
        onMain([this, saved = *saved] { cleanChosen(saved); });
    }
    return answer;
}

void WorkspaceStore::noteSaved(bool saved) {
    if (!saved) {
        message.set(localized("This setting works for this session, but couldn't be saved."));
    }
}

void WorkspaceStore::onMain(Action job) {
    m_parts.mainQueue.post([alive = std::weak_ptr<bool>(m_alive), job = std::move(job)] {
        if (!alive.expired()) {
            job();
        }
    });
}

}  // namespace kestrune
