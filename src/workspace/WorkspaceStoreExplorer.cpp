#include <utility>

#include "explorer/DiskExplorer.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

void WorkspaceStore::chooseExplorerFolder() {
    if (isExploring.get()) {
        return;
    }
    const auto chosen = m_parts.folderChooser.chooseFolder(
        "Choose a folder to inspect. Disk Explorer only reads files.", m_parts.cleaners.home());
    if (chosen) {
        explore(*chosen);
    }
}

void WorkspaceStore::explore(const std::string& folder) {
    if (isExploring.get()) {
        return;
    }
    explorerRoot.set(folder);
    explorerResult.set({});
    explorerProgress.set(std::nullopt);
    isExploring.set(true);
    m_explorerCancellation->reset();
    DiskExplorerRequest request;
    request.folderLimit = 200;
    request.cancelled = [cancellation = m_explorerCancellation] { return cancellation->isCancelled(); };
    m_explorerQueue->enqueue([this, folder, request = std::move(request)] {
        auto result = DiskExplorer::scan(m_parts.directoryWalker, m_parts.clock, folder, request);
        onMain([this, folder, result = std::move(result)]() mutable { finishExploring(folder, std::move(result)); });
    });
}

void WorkspaceStore::finishExploring(const std::string& folder, DiskExplorerResult result) {
    m_explorerHistory.visit(folder, result);
    explorerProgress.set(std::nullopt);
    explorerResult.set(std::move(result));
    isExploring.set(false);
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
}

void WorkspaceStore::goBackInExplorer() {
    if (!isExploring.get() && canGoBackInExplorer()) {
        showVisit(m_explorerHistory.goBack());
    }
}

void WorkspaceStore::goForwardInExplorer() {
    if (!isExploring.get() && canGoForwardInExplorer()) {
        showVisit(m_explorerHistory.goForward());
    }
}

bool WorkspaceStore::canGoBackInExplorer() const {
    return m_explorerHistory.canGoBack();
}

bool WorkspaceStore::canGoForwardInExplorer() const {
    return m_explorerHistory.canGoForward();
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
