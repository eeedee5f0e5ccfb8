#include "update/StandardUpdater.h"

#include <utility>

#include "update/UpdateRules.h"
#include "update/UpdateTexts.h"
#include "update/VersionNumber.h"

namespace kestrune {

namespace {

constexpr const char* skippedKey = "kestrune_update_skipped";

}  // namespace

StandardUpdater::StandardUpdater(StandardUpdaterParts parts)
    : m_parts(std::move(parts)),
      m_schedule({.preferences = m_parts.preferences,
                  .mainQueue = m_parts.mainQueue,
                  .clock = m_parts.clock,
                  .random = m_parts.random},
                 [this] { checkOnSchedule(); }) {
}

StandardUpdater::~StandardUpdater() = default;

bool StandardUpdater::isConfigured() const {
    return !m_parts.source.feedUrl.empty();
}

void StandardUpdater::start(UpdaterDelegate& delegate) {
    m_delegate = &delegate;
    if (isConfigured()) {
        m_schedule.start();
    }
}

void StandardUpdater::checkForUpdates() {
    if (!isConfigured() || m_delegate == nullptr) {
        return;
    }
    if (*m_isTelling) {
        // Asked from within a delegate's call: answered when what is being told has been told to the end.
        m_parts.mainQueue.post([this, alive = std::weak_ptr(m_isTelling)] {
            if (!alive.expired()) {
                checkForUpdates();
            }
        });
        return;
    }
    switch (m_state) {
        case State::idle:
            return m_known ? askUser() : check(true);
        case State::checking:
            return m_isUserInitiated ? m_parts.presenter.bringToFront() : showChecking();
        case State::asking:
        case State::downloading:
        case State::installing:
        case State::replaced:
            return showAgain();
    }
}

/// The window is there already, except that the one of a version that waits for its start may have been closed.
void StandardUpdater::showAgain() {
    if (!tellOfShowing()) {
        return;
    }
    if (m_state == State::replaced) {
        showReadyToRelaunch();
    } else {
        m_parts.presenter.bringToFront();
    }
}

void StandardUpdater::enter(State state) {
    m_state = state;
    m_stay = std::make_shared<Stay>();
}

/// Calls the delegate. False when the updater is gone since.
bool StandardUpdater::tell(const std::function<void(UpdaterDelegate&)>& call) {
    const std::weak_ptr<bool> alive = m_isTelling;
    *m_isTelling = true;
    call(*m_delegate);
    if (alive.expired()) {
        return false;
    }
    *m_isTelling = false;
    return true;
}

bool StandardUpdater::tellOfShowing() {
    return tell([item = *m_known](UpdaterDelegate& delegate) { delegate.willHandleShowingUpdate(item, true); });
}

std::function<void()> StandardUpdater::inThisStay(void (StandardUpdater::*step)()) {
    return [this, step, stay = std::weak_ptr(m_stay)] {
        if (!stay.expired()) {
            (this->*step)();
        }
    };
}

void StandardUpdater::checkOnSchedule() {
    if (m_state == State::idle && !*m_isTelling) {
        check(false);
    }
}

void StandardUpdater::check(bool userInitiated) {
    enter(State::checking);
    m_isUserInitiated = false;
    if (userInitiated) {
        showChecking();
    }
    m_stay->transfer = m_parts.fetcher.fetchFeed(m_parts.source, answerInThisStay(&StandardUpdater::feedArrived));
}

void StandardUpdater::showChecking() {
    m_isUserInitiated = true;
    m_parts.presenter.showChecking(inThisStay(&StandardUpdater::stopCheck));
}

void StandardUpdater::stopCheck() {
    enter(State::idle);
    if (tell([](UpdaterDelegate& delegate) { delegate.didAbortWithError(UpdateTexts::checkStopped()); })) {
        m_parts.presenter.close();
    }
}

void StandardUpdater::feedArrived(const Feed& feed) {
    const bool userInitiated = m_isUserInitiated;
    enter(State::idle);
    if (feed.ok()) {
        m_schedule.checkEnded();
        const auto best = UpdateRules::bestUpdate(feed.value(), {.runningVersion = m_parts.runningVersion,
                                                                 .archiveSuffix = m_parts.installer.archiveSuffix()});
        const bool counts = best && (userInitiated || !isSkipped(*best));
        return counts ? found(*best, userInitiated) : foundNone(userInitiated);
    }
    if (!userInitiated) {
        m_schedule.checkFailed();
    }
    const bool isHere = tell([&](UpdaterDelegate& delegate) { delegate.didAbortWithError(feed.error()); });
    if (isHere && userInitiated) {
        const auto outcome = UpdateTexts::checkFailed(feed.error());
        m_parts.presenter.showOutcome(outcome.title, outcome.text);
    }
}

void StandardUpdater::found(const UpdateItem& item, bool userInitiated) {
    m_known = item;
    if (!tell([&](UpdaterDelegate& delegate) { delegate.didFindValidUpdate(item); })) {
        return;
    }
    if (userInitiated) {
        return askUser();
    }
    // Whether the updater is gone after this last call is of no importance.
    static_cast<void>(tell([&](UpdaterDelegate& delegate) { delegate.willHandleShowingUpdate(item, false); }));
}

void StandardUpdater::foundNone(bool userInitiated) {
    m_known.reset();
    const bool isHere = tell([](UpdaterDelegate& delegate) { delegate.didNotFindUpdate(); }) &&
                        tell([](UpdaterDelegate& delegate) { delegate.didAbortWithError(UpdateTexts::noUpdate()); });
    if (isHere && userInitiated) {
        const auto outcome = UpdateTexts::upToDate(m_parts.runningVersion);
        m_parts.presenter.showOutcome(outcome.title, outcome.text);
    }
}

bool StandardUpdater::isSkipped(const UpdateItem& item) const {
    const auto skipped = m_parts.preferences.texts(skippedKey);
    if (!skipped || skipped->empty()) {
        return false;
    }
    return VersionNumber::parse(skipped->front()) == VersionNumber::parse(item.version);
}

void StandardUpdater::askUser() {
    enter(State::asking);
    if (tellOfShowing()) {
        showQuestion();
    }
}

void StandardUpdater::showQuestion() {
    m_parts.presenter.showUpdate(*m_known, m_parts.runningVersion,
                                 [this, stay = std::weak_ptr(m_stay)](UpdateChoice choice) {
                                     if (!stay.expired()) {
                                         answered(choice);
                                     }
                                 });
}

void StandardUpdater::answered(UpdateChoice choice) {
    const UpdateItem item = *m_known;
    if (choice != UpdateChoice::install) {
        enter(State::idle);
        m_archive.reset();
    }
    if (choice == UpdateChoice::skip) {
        m_parts.preferences.setTexts(skippedKey, {item.version});
        m_known.reset();
    }
    if (!tell([&](UpdaterDelegate& delegate) { delegate.userDidMake(choice, item); })) {
        return;
    }
    return choice == UpdateChoice::install ? install() : m_parts.presenter.close();
}

}  // namespace kestrune
