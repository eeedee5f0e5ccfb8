#include "base/Localized.h"
#include "base/Text.h"
#include "workspace/ReadableText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

/// What happened and what to do next.
std::string sentence(const PutBackError& error, const std::string& home) {
    const std::string path = ReadableText::path(error.path, home);
    switch (error.failure) {
        case PutBackFailure::missing:
            return localized(
                "This item is no longer at its recorded Trash location. It may have been restored or emptied.");
        case PutBackFailure::noRecord:
            return localized(
                "The Trash doesn't say where this item came from. Open the Trash and move the item yourself.");
        case PutBackFailure::inTheWay:
            return localized("Something else is at %1 now. Rename or move it first, then try again.", {path});
        case PutBackFailure::noFolder:
            return localized("The folder %1 is gone or leads elsewhere now. Make it again, then try again.", {path});
        case PutBackFailure::changed:
            return localized(
                "This item is protected or has changed, so it wasn't put back. Open the Trash to inspect it.");
        case PutBackFailure::otherDisk:
            return localized("The folder %1 is on another disk now. Move the item with your file manager instead.",
                             {path});
        case PutBackFailure::system:
            return error.message;
    }
    return {};
}

Alert question(const std::string& name, const std::string& path) {
    Alert alert;
    alert.symbol = "arrow.uturn.backward";
    alert.messageText = localized("Put back %1?", {name});
    alert.items.push_back({name, {}, ReadableText::visible(path)});
    alert.text =
        localized("Moves the item from the Trash to the place it came from. Nothing that is there now is replaced.");
    alert.buttons = {localized("Put Back"), localized("Cancel")};
    return alert;
}

}  // namespace

std::string WorkspaceStore::nameOfPlace(const std::string& path) const {
    for (const auto& list : {DevCleaners::aiCandidates, DevCleaners::devCandidates, DevCleaners::sysCandidates}) {
        for (const CatalogEntry& entry : list) {
            if (m_parts.cleaners.path(entry) == path) {
                return std::string(entry.title);
            }
        }
    }
    return ReadableText::name(lastPathComponent(path));
}

void WorkspaceStore::putBack(const ActivityEntry& entry) {
    if (!entry.trashPath || m_confirming) {
        return;
    }
    if (isBusy() || isPurging.get() || m_puttingBack) {
        message.set(localized("Wait until the current scan or action has finished, then try again."));
        return;
    }
    const auto plan = m_parts.trash.planPutBack(home(), *entry.trashPath);
    if (!plan.ok()) {
        message.set(sentence(plan.error(), home()));
        return;
    }
    const std::string name = nameOfPlace(plan.value().originalPath);
    if (ask(question(name, plan.value().originalPath)) != 0) {
        return;
    }
    m_puttingBack = true;
    const auto move = [this, name, confirmed = plan.value()] {
        const auto moved = m_parts.trash.putBack(home(), confirmed);
        if (!moved.ok()) {
            return ActivityEntry{
                makeActivityId(), now(), localized("Couldn't put back %1", {name}), sentence(moved.error(), home()),
                std::nullopt,     true};
        }
        const std::string place = ReadableText::path(moved.value(), home());
        return ActivityEntry{
            makeActivityId(), now(), localized("Put back %1", {name}), localized("It's at %1 again.", {place}),
            std::nullopt,     false};
    };
    enqueueRecorded(move, [this, name](const ActivityEntry& recorded) {
        m_puttingBack = false;
        message.set(recorded.failed ? recorded.detail
                                    : localized("Put back %1. Storage lists it after the next scan.", {name}));
    });
}

}  // namespace kestrune
