#include "workspace/ActivityLog.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

void WorkspaceStore::record(const ActivityEntry& entry) {
    history.set(ActivityLog::withEntry(history.get(), entry));
    m_queue->enqueue([this, entries = history.get()] {
        if (!ActivityLog::save(m_parts.fileStore, home(), entries)) {
            onMain([this] { message.set("Activity is visible for this session, but couldn't be saved."); });
        }
    });
}

void WorkspaceStore::showInTrash(const ActivityEntry& entry) {
    if (!entry.trashPath) {
        return;
    }
    if (!m_parts.fileQueries.kind(*entry.trashPath)) {
        message.set("This item is no longer at its recorded Trash location. It may have been restored or emptied.");
        return;
    }
    reveal(*entry.trashPath);
}

void WorkspaceStore::reveal(const std::string& path) {
    m_parts.fileViewer.reveal(path);
}

}  // namespace kestrune
