#include <algorithm>
#include <iterator>

#include "base/Localized.h"
#include "base/Text.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

std::string stoppedNote() {
    return localized("Scan stopped. Results are incomplete; rescan before cleanup.");
}

// What the scan that just ended could not look into. The action queue's thread, like the scan.
std::vector<std::string> notesOf(const DevCleaners& cleaners) {
    std::vector<std::string> notes;
    for (const auto& path : cleaners.scanIssues()) {
        notes.push_back(
            localized("Some files couldn't be inspected in %1. Size may be incomplete.", {lastPathComponent(path)}));
    }
    for (const auto& title : cleaners.unreadableTitles()) {
        notes.push_back(localized("Couldn't inspect %1. Check access in System Settings.", {title}));
    }
    return notes;
}

}  // namespace

void WorkspaceStore::scan(Action onFinished) {
    if (isBusy()) {
        return;
    }
    m_cancellation->reset();
    isScanning.set(true);
    message.set(std::nullopt);
    scanNotes.set({});
    failures.set({});
    m_queue->enqueue([this, cancellation = m_cancellation, onFinished = std::move(onFinished)] {
        const auto showProgress = [this](int done, int total, std::string_view title) {
            onMain([this, step = OperationProgress{done, total, std::string(title)}] { operationProgress.set(step); });
        };
        auto found = m_parts.cleaners.scanAllTargets([&] { return cancellation->isCancelled(); }, showProgress);
        onMain([this, onFinished, found = std::move(found), notes = notesOf(m_parts.cleaners)] {
            publishScan(found, notes);
            if (onFinished) {
                onFinished();
            }
        });
    });
}

void WorkspaceStore::publishScan(std::vector<CleanTarget> found, std::vector<std::string> notes) {
    std::set<std::string> stillSelected;
    for (const auto& target : found) {
        if (selection.get().contains(target.id())) {
            stillSelected.insert(target.id());
        }
    }
    if (m_cancellation->isCancelled()) {
        notes.push_back(stoppedNote());
    }
    targets.set(std::move(found));
    selection.set(std::move(stillSelected));
    scanNotes.set(std::move(notes));
    operationProgress.set({});
    isScanning.set(false);
    lastScan.set(now());
    disk.set(m_parts.engine.getDiskSummary());
}

bool WorkspaceStore::lastScanWasStopped() const {
    const std::vector<std::string>& notes = scanNotes.get();
    return std::find(notes.begin(), notes.end(), stoppedNote()) != notes.end();
}

void WorkspaceStore::cancelCleanup() {
    m_cancellation->cancel();
}

}  // namespace kestrune
