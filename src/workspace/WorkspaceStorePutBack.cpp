#include "workspace/WorkspaceStore.h"

namespace kestrune {

void WorkspaceStore::putBack(const ActivityEntry& entry) {
    if (entry.trashPath && !m_parts.trash.planPutBack(home(), *entry.trashPath).ok()) {
        showInTrash(entry);
    }
}

}  // namespace kestrune
