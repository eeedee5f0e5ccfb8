#include <algorithm>
#include <iterator>

#include "base/Localized.h"
#include "workspace/PreferenceKeys.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

std::vector<CleanTarget> filtered(const std::vector<CleanTarget>& targets,
                                  const std::function<bool(const CleanTarget&)>& isKept) {
    std::vector<CleanTarget> kept;
    std::copy_if(targets.begin(), targets.end(), std::back_inserter(kept), isKept);
    return kept;
}

std::int64_t bytesOf(const std::vector<CleanTarget>& targets) {
    std::int64_t sum = 0;
    for (const auto& target : targets) {
        sum += target.sizeBytes;
    }
    return sum;
}

std::vector<std::string> asTexts(const std::set<std::string>& ids) {
    return {ids.begin(), ids.end()};
}

}  // namespace

std::vector<CleanTarget> WorkspaceStore::visibleTargets() const {
    return filtered(targets.get(), [this](const auto& target) { return !excluded.get().contains(target.path); });
}

std::vector<CleanTarget> WorkspaceStore::selected() const {
    return filtered(visibleTargets(), [this](const auto& target) { return selection.get().contains(target.id()); });
}

std::int64_t WorkspaceStore::selectedBytes() const {
    return bytesOf(selected());
}

std::vector<CleanTarget> WorkspaceStore::recommended() const {
    return filtered(visibleTargets(), [](const auto& target) {
        return !target.requiresReview() && target.category == CleanCategory::buildCaches;
    });
}

std::int64_t WorkspaceStore::recommendedBytes() const {
    return bytesOf(recommended());
}

void WorkspaceStore::setSelected(const std::string& id, bool on) {
    auto ids = selection.get();
    if (on) {
        ids.insert(id);
    } else {
        ids.erase(id);
    }
    selection.set(std::move(ids));
}

void WorkspaceStore::selectRecommended() {
    std::set<std::string> ids;
    for (const auto& target : recommended()) {
        ids.insert(target.id());
    }
    selection.set(std::move(ids));
}

void WorkspaceStore::clearSelection() {
    selection.set({});
}

void WorkspaceStore::toggleExclusion(const CleanTarget& target) {
    auto paths = excluded.get();
    const std::string id = target.id();
    if (paths.erase(target.path) == 0) {
        paths.insert(target.path);
        setSelected(id, false);
    }
    excluded.set(paths);
    noteSaved(m_parts.preferences.setTexts(PreferenceKeys::exclusions, asTexts(paths)));
}

void WorkspaceStore::saveSelection() {
    const bool saved = m_parts.preferences.setTexts(PreferenceKeys::savedSelection, asTexts(selection.get()));
    message.set(localized(
        "Folders saved. Choose Use Saved Folders after a scan, or Clean the Same Folders Again from the menu."));
    noteSaved(saved);
}

void WorkspaceStore::restoreSelection() {
    const auto saved = savedSelection();
    std::set<std::string> ids;
    for (const auto& target : visibleTargets()) {
        if (std::find(saved.begin(), saved.end(), target.id()) != saved.end()) {
            ids.insert(target.id());
        }
    }
    selection.set(std::move(ids));
}

std::vector<std::string> WorkspaceStore::savedSelection() const {
    return m_parts.preferences.texts(PreferenceKeys::savedSelection).value_or(Preferences::Texts{});
}

}  // namespace kestrune
