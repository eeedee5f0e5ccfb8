#include "base/Localized.h"
#include "workspace/ActivityLog.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/WorkspaceStoreCleanup.h"

namespace kestrune {

void WorkspaceStore::record(const ActivityEntry& entry) {
    history.set(ActivityLog::withEntry(history.get(), entry));
    m_queue->enqueue([this, entries = history.get()] {
        if (!ActivityLog::save(m_parts.fileStore, home(), entries)) {
            onMain([this] { message.set(localized("Activity is visible for this session, but couldn't be saved.")); });
        }
    });
}

void WorkspaceStore::enqueueRecorded(std::function<ActivityEntry()> work,
                                     std::function<void(const ActivityEntry&)> onRecorded) {
    const auto outcome = std::make_shared<std::optional<ActivityEntry>>();
    m_outcomes.push_back(outcome);
    m_queue->enqueue([this, outcome, work = std::move(work), onRecorded = std::move(onRecorded)] {
        *outcome = work();
        onMain([this, outcome, onRecorded] {
            std::erase(m_outcomes, outcome);
            record(**outcome);
            onRecorded(**outcome);
        });
    });
}

void WorkspaceStore::saveUnrecorded() {
    auto entries = history.get();
    if (m_cleanup && m_cleanup->outcome) {
        entries = ActivityLog::withEntry(entries, takeOutcome(*m_cleanup));
    }
    for (const Outcome& outcome : m_outcomes) {
        if (*outcome) {
            entries = ActivityLog::withEntry(entries, **outcome);
        }
    }
    if (entries != history.get()) {
        // At the end of the store there is nobody left to tell when this fails.
        static_cast<void>(ActivityLog::save(m_parts.fileStore, home(), entries));
    }
}

void WorkspaceStore::showInTrash(const ActivityEntry& entry) {
    if (!entry.trashPath) {
        return;
    }
    if (!m_parts.fileQueries.kind(*entry.trashPath)) {
        message.set(
            localized("This item is no longer at its recorded Trash location. It may have been restored or emptied."));
        return;
    }
    reveal(*entry.trashPath);
}

void WorkspaceStore::reveal(const std::string& path) {
    m_parts.fileViewer.reveal(path);
}

}  // namespace kestrune
