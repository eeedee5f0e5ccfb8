#include <utility>

#include "base/Localized.h"
#include "base/Text.h"
#include "explorer/DiskExplorer.h"
#include "explorer/NewestProgress.h"
#include "workspace/ExplorerListing.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

void WorkspaceStore::chooseExplorerFolder() {
    if (isExploring.get()) {
        return;
    }
    // A scan may have begun before the panel was closed; explore() looks again.
    if (const auto chosen = m_parts.folderChooser.chooseFolder(
            localized("Choose a folder to inspect. Disk Explorer only reads files."), home())) {
        explore(*chosen);
    }
}

void WorkspaceStore::explore(const std::string& folder) {
    if (isExploring.get() || !folder.starts_with('/')) {
        return;
    }
    std::string root = standardizedPath(folder);
    m_explorerCancellation->reset();
    explorerRoot.set(root);
    explorerResult.set({});
    isExploring.set(true);
    DiskExplorerRequest request;
    request.folderLimit = ExplorerListing::rowsAtMost;
    request.cancelled = [cancellation = m_explorerCancellation] { return cancellation->isCancelled(); };
    request.progress = [this, newest = std::make_shared<NewestProgress>()](const DiskExplorerProgress& step) {
        if (newest->put(step)) {
            onMain([this, newest] { explorerProgress.set(newest->take()); });
        }
    };
    m_explorerQueue->enqueue([this, root = std::move(root), request = std::move(request)] {
        auto result = DiskExplorer::scan(m_parts.directoryWalker, m_parts.clock, root, request);
        onMain([this, root, result = std::move(result)]() mutable { finishExploring(root, std::move(result)); });
    });
}

void WorkspaceStore::finishExploring(const std::string& root, DiskExplorerResult result) {
    m_explorerHistory.visit(root, result);
    explorerResult.set(std::move(result));
    isExploring.set(false);
    explorerProgress.set(std::nullopt);
}

void WorkspaceStore::stopExploring() {
    m_explorerCancellation->cancel();
}

void WorkspaceStore::rescanExplorer() {
    if (const auto root = explorerRoot.get()) {
        explore(*root);
    }
}

void WorkspaceStore::exploreParent() {
    if (const auto root = explorerRoot.get()) {
        explore(ExplorerListing::parentOf(*root));
    }
}

void WorkspaceStore::goBackInExplorer() {
    if (canGoBackInExplorer()) {
        showVisit(m_explorerHistory.goBack());
    }
}

void WorkspaceStore::goForwardInExplorer() {
    if (canGoForwardInExplorer()) {
        showVisit(m_explorerHistory.goForward());
    }
}

bool WorkspaceStore::canGoBackInExplorer() const {
    return !isExploring.get() && m_explorerHistory.canGoBack();
}

bool WorkspaceStore::canGoForwardInExplorer() const {
    return !isExploring.get() && m_explorerHistory.canGoForward();
}

const DiskExplorerResult* WorkspaceStore::rememberedResult(const std::string& folder) const {
    const auto* visit = m_explorerHistory.find(folder);
    return visit == nullptr ? nullptr : &visit->result;
}

void WorkspaceStore::showVisit(const ExplorerHistory::Visit& visit) {
    explorerRoot.set(visit.folder);
    explorerResult.set(visit.result);
}

}  // namespace kestrune
