#include <algorithm>
#include <array>
#include <string_view>

#include "base/Localized.h"
#include "base/Text.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/WorkspaceStoreCleanup.h"

namespace kestrune {

namespace {

/// An application, in lower case, that holds the files of targets with keyword in their title open.
struct Blocker {
    std::string_view keyword;
    std::string_view application;
};

constexpr std::array<Blocker, 7> blockerTable{{
    {"xcode", "xcode"},
    {"xcode", "simulator"},
    {"ollama", "ollama"},
    {"lm studio", "lm studio"},
    {"comfyui", "comfyui"},
    {"gradle", "android studio"},
    {"gradle", "intellij idea"},
}};

bool holdsOpen(const std::string& lowerCasedName, const CleanTarget& target) {
    const std::string title = lowerCased(target.title);
    return std::any_of(blockerTable.begin(), blockerTable.end(), [&](const Blocker& blocker) {
        return lowerCasedName == blocker.application && title.find(blocker.keyword) != std::string::npos;
    });
}

Alert confirmation(const std::vector<CleanTarget>& chosen) {
    Alert alert;
    alert.style = AlertStyle::warning;
    alert.symbol = "trash";
    alert.messageText =
        localizedCount("Move %1 item to Trash?", "Move %1 items to Trash?", static_cast<std::int64_t>(chosen.size()));
    for (const auto& target : chosen) {
        alert.items.push_back({target.title, target.sizeFormatted(), target.subtitle});
    }
    alert.text = localized(
        "Close the tools using these files first. Builds may need to rebuild caches; models may require another "
        "download. Space is recovered only after Trash is emptied. You can restore eligible items from Finder's "
        "Trash.");
    alert.buttons = {localized("Move to Trash"), localized("Cancel")};
    return alert;
}

Alert nothingToClean(bool saved) {
    Alert alert;
    alert.messageText = saved ? localized("No saved items to clean") : localized("No build caches found");
    alert.text = saved
                     ? localized(
                           "Choose folders in Storage and click Save for Next Time. Folders you excluded or that no "
                           "longer exist are left out.")
                     : localized("No build caches found in the places we check. Try the other categories in Storage.");
    return alert;
}

std::string summaryOf(std::size_t movedItems, std::size_t failedItems, bool stopped) {
    const std::string moved = std::to_string(movedItems);
    const std::string failed = std::to_string(failedItems);
    if (stopped) {
        return localized("Moved %1 items to Trash. %2 failed. Cleanup stopped; remaining items were kept.",
                         {moved, failed});
    }
    return failedItems == 0 ? localized("Moved %1 items to Trash. 0 failed.", {moved})
                            : localized("Moved %1 items to Trash. %2 failed.", {moved, failed});
}

}  // namespace

std::vector<std::string> WorkspaceStore::cleanupBlockers(const std::vector<CleanTarget>& targets,
                                                         const std::vector<std::string>& runningNames) {
    std::set<std::string> names;
    for (const auto& name : runningNames) {
        const std::string lowerCasedName = lowerCased(name);
        if (std::any_of(targets.begin(), targets.end(),
                        [&](const CleanTarget& target) { return holdsOpen(lowerCasedName, target); })) {
            names.insert(name);
        }
    }
    return {names.begin(), names.end()};
}

void WorkspaceStore::quickClean(bool saved) {
    scan([this, saved] { cleanChosen(saved); });
}

void WorkspaceStore::cleanChosen(bool saved) {
    if (m_confirming) {
        m_waitingReview = saved;
        return;
    }
    if (saved) {
        restoreSelection();
    } else {
        selectRecommended();
    }
    if (selected().empty()) {
        ask(nothingToClean(saved));
    } else {
        clean();
    }
}

void WorkspaceStore::useSavedFolders() {
    if (isBusy()) {
        return;
    }
    const bool saved = !savedSelection().empty();
    if (saved) {
        restoreSelection();
    }
    if (!saved || selected().empty()) {
        ask(nothingToClean(true));
    }
}

void WorkspaceStore::clean() {
    if (isBusy() || selected().empty()) {
        return;
    }
    if (lastScanWasStopped()) {
        message.set(localized("Finish a new scan before cleaning."));
        return;
    }
    const auto chosen = DevCleaners::nonOverlapping(selected());
    if (refuseForRunningTools(chosen)) {
        return;
    }
    const auto cleanup = std::make_shared<Cleanup>();
    for (const auto& target : chosen) {
        // Where nothing lay when the user was asked, nothing that came later may move either: no item has identity 0.
        cleanup->items.push_back({target, m_parts.cleaners.identity(target).value_or(FileIdentity{})});
    }
    if (ask(confirmation(chosen)) == 0) {
        startCleanup(cleanup);
    }
}

bool WorkspaceStore::refuseForRunningTools(const std::vector<CleanTarget>& chosen) {
    const auto blockers = cleanupBlockers(chosen, m_parts.runningPrograms.names());
    if (blockers.empty()) {
        return false;
    }
    const std::string sentence =
        localized("Close these apps before cleaning their files: %1", {joined(blockers, ", ")});
    message.set(sentence);
    Alert alert;
    alert.symbol = "exclamationmark.triangle";
    alert.messageText = localized("Close the tools using these caches first");
    alert.text = sentence;
    ask(alert);
    return true;
}

void WorkspaceStore::startCleanup(const std::shared_ptr<Cleanup>& cleanup) {
    // While the question was open an item may have been excluded or deselected, and a tool may have been started.
    const auto stillSelected = selected();
    std::erase_if(cleanup->items, [&](const Cleanup::Item& item) {
        return std::none_of(stillSelected.begin(), stillSelected.end(),
                            [&](const CleanTarget& target) { return target.id() == item.target.id(); });
    });
    std::vector<CleanTarget> chosen;
    for (const auto& item : cleanup->items) {
        chosen.push_back(item.target);
    }
    if (chosen.empty() || refuseForRunningTools(chosen)) {
        return;
    }
    m_cancellation->reset();
    m_cleanup = cleanup;
    isCleaning.set(true);
    failures.set({});
    cleanNext(cleanup);
}

void WorkspaceStore::cleanNext(const std::shared_ptr<Cleanup>& cleanup) {
    const std::size_t total = cleanup->items.size();
    cleanup->stopped = cleanup->handled < total && m_cancellation->isCancelled();
    if (cleanup->stopped || cleanup->handled == total) {
        finishCleanup(*cleanup);
        return;
    }
    const Cleanup::Item& item = cleanup->items[cleanup->handled];
    progress.set(localized("Moving %1 of %2 · %3",
                           {std::to_string(cleanup->handled + 1), std::to_string(total), item.target.title}));
    operationProgress.set({static_cast<int>(cleanup->handled), static_cast<int>(total), item.target.title});
    m_queue->enqueue([this, cleanup, item, cancellation = m_cancellation] {
        if (!cancellation->isCancelled()) {
            cleanup->outcome = m_parts.cleaners.cleanReviewedTarget(item.target, item.expected);
        }
        onMain([this, cleanup] {
            if (cleanup->outcome) {
                record(takeOutcome(*cleanup));
            }
            cleanNext(cleanup);
        });
    });
}

ActivityEntry WorkspaceStore::takeOutcome(Cleanup& cleanup) const {
    const CleanTarget& target = cleanup.items[cleanup.handled].target;
    const auto outcome = *std::exchange(cleanup.outcome, std::nullopt);
    ++cleanup.handled;
    ActivityEntry entry{makeActivityId(), now(), {}, {}, std::nullopt, !outcome.ok()};
    if (outcome.ok()) {
        cleanup.moved.insert(target.id());
        entry.title = localized("Moved %1 to Trash", {target.title});
        entry.detail = localized("%1 estimated. Empty Trash in Finder when you're ready to reclaim space.",
                                 {target.sizeFormatted()});
        entry.trashPath = outcome.value();
    } else {
        cleanup.failures[target.id()] = outcome.error().localizedDescription;
        entry.title = localized("Couldn't move %1", {target.title});
        entry.detail = outcome.error().localizedDescription;
    }
    return entry;
}

void WorkspaceStore::finishCleanup(const Cleanup& cleanup) {
    auto left = targets.get();
    std::erase_if(left, [&](const CleanTarget& target) { return cleanup.moved.contains(target.id()); });
    auto stillSelected = selection.get();
    std::erase_if(stillSelected, [&](const std::string& id) { return cleanup.moved.contains(id); });
    const std::string summary = summaryOf(cleanup.moved.size(), cleanup.failures.size(), cleanup.stopped);
    targets.set(std::move(left));
    selection.set(std::move(stillSelected));
    failures.set(cleanup.failures);
    message.set(summary);
    progress.set("");
    operationProgress.set({});
    m_cleanup.reset();
    isCleaning.set(false);
    disk.set(m_parts.engine.getDiskSummary());
    m_parts.engine.notify(localized("Kestrune cleanup results"), summary);
}

}  // namespace kestrune
