#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Result.h"
#include "platform/MainQueue.h"
#include "platform/Preferences.h"
#include "platform/UpdateFetcher.h"
#include "platform/UpdateInstaller.h"
#include "platform/UpdatePresenter.h"
#include "platform/Updater.h"
#include "update/UpdateSchedule.h"

namespace kestrune {

/// What StandardUpdater works with. Everything outlives it.
struct StandardUpdaterParts {
    UpdateSource source;
    std::string runningVersion;
    UpdateFetcher& fetcher;
    UpdateInstaller& installer;
    UpdatePresenter& presenter;
    Preferences& preferences;
    MainQueue& mainQueue;
    const Clock& clock;
    std::function<std::uint32_t()> random;  ///< evenly spread; parts the checks of many machines in time
};

/// The updater for systems that bring none. Main thread.
///
/// An update that was found stays known until it is skipped, until a later check finds another one or none, or until
/// something about it fails; a user who asks is shown the known one without another check. A scheduled check passes
/// over the version that the user skipped, and a failed one is told to the delegate only. Where no archive fits the
/// way the program was installed, updates are announced all the same, and installing one tells where to download it.
class StandardUpdater final : public Updater {
public:
    explicit StandardUpdater(StandardUpdaterParts parts);
    ~StandardUpdater() override;

    [[nodiscard]] bool isConfigured() const override;
    void start(UpdaterDelegate& delegate) override;
    void checkForUpdates() override;

private:
    enum class State {
        idle,
        checking,
        asking,  ///< the user has the question before them
        downloading,
        installing,
        replaced,  ///< the new version is in place and not started yet
    };

    /// One stay in a state. What was asked for in it is void once it is over.
    struct Stay {
        std::unique_ptr<UpdateFetcher::Transfer> transfer;
    };

    using Feed = Result<std::vector<FeedItem>, UpdaterError>;
    using Archive = Result<std::string, UpdaterError>;
    using Installation = Result<UpdateInstaller::Outcome, UpdaterError>;

    void showAgain();
    void enter(State state);
    [[nodiscard]] bool tell(const std::function<void(UpdaterDelegate&)>& call);
    [[nodiscard]] bool tellOfShowing();
    [[nodiscard]] std::function<void()> inThisStay(void (StandardUpdater::*step)());
    template <typename Answer>
    [[nodiscard]] std::function<void(Answer)> answerInThisStay(void (StandardUpdater::*step)(const Answer&));

    void checkOnSchedule();
    void check(bool userInitiated);
    void showChecking();
    void stopCheck();
    void feedArrived(const Feed& feed);
    void found(const UpdateItem& item, bool userInitiated);
    void foundNone(bool userInitiated);
    [[nodiscard]] bool isSkipped(const UpdateItem& item) const;

    void askUser();
    void showQuestion();
    void answered(UpdateChoice choice);

    void install();
    void download();
    void stopDownload();
    void archiveArrived(const Archive& archive);
    void installArchive();
    void installed(const Installation& installation);
    void installationFailed(const UpdaterError& error);
    void showReadyToRelaunch();
    void relaunch();

    StandardUpdaterParts m_parts;
    UpdaterDelegate* m_delegate = nullptr;
    State m_state = State::idle;
    std::shared_ptr<Stay> m_stay = std::make_shared<Stay>();
    std::shared_ptr<bool> m_isTelling = std::make_shared<bool>(false);  ///< gone with the updater
    bool m_isUserInitiated = false;                                     ///< the check under way
    std::optional<UpdateItem> m_known;
    std::optional<std::string> m_archive;  ///< path of the known update's archive, verified while its question stands
    UpdateSchedule m_schedule;
};

template <typename Answer>
std::function<void(Answer)> StandardUpdater::answerInThisStay(void (StandardUpdater::*step)(const Answer&)) {
    // Posted, so that the step may let go of the transfer that answers.
    return [this, step, stay = std::weak_ptr(m_stay)](Answer answer) {
        if (stay.expired()) {
            return;
        }
        m_parts.mainQueue.post([this, step, stay, answer = std::move(answer)] {
            if (!stay.expired()) {
                (this->*step)(answer);
            }
        });
    };
}

}  // namespace kestrune
