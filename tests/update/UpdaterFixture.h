#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/FakeUpdateFetcher.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/fakes/FakeUpdatePresenter.h"
#include "tests/fakes/ManualQueues.h"
#include "update/StandardUpdater.h"

namespace kestrune {

/// Writes down what it is told, between what the window is asked to show.
class RecordingDelegate final : public UpdaterDelegate {
public:
    explicit RecordingDelegate(std::vector<std::string>& sharedLog) : m_log(sharedLog) {}

    void didFindValidUpdate(const UpdateItem& item) override { note("found " + item.displayVersion); }

    void willHandleShowingUpdate(const UpdateItem& item, bool userInitiated) override {
        note((userInitiated ? "user sees " : "schedule found ") + item.displayVersion);
    }

    void userDidMake(UpdateChoice choice, const UpdateItem& item) override {
        const std::vector<std::string> words{"install ", "dismiss ", "skip "};
        note(words.at(static_cast<std::size_t>(choice)) + item.displayVersion);
    }

    void didNotFindUpdate() override { note("none"); }

    void didAbortWithError(const UpdaterError& newError) override {
        error = newError;
        note("error " + std::to_string(newError.code));
    }

    [[nodiscard]] bool shouldInstallUpdate() override {
        note("may it?");
        return allowsInstall;
    }

    bool allowsInstall = true;
    UpdaterError error;                                    ///< the last one
    std::function<void(const std::string& entry)> during;  ///< called within each call, with its log entry

private:
    void note(const std::string& entry) {
        m_log.push_back(entry);
        if (during) {
            const auto call = during;
            call(entry);
        }
    }

    std::vector<std::string>& m_log;
};

/// An updater of version 2.1.0 with everything around it.
struct UpdaterFixture {
    using Log = std::vector<std::string>;

    UpdaterFixture() { source.feedUrl = "https://example.com/feed.xml"; }

    [[nodiscard]] StandardUpdaterParts parts() {
        return {.source = source,
                .runningVersion = "2.1.0",
                .fetcher = fetcher,
                .installer = installer,
                .presenter = presenter,
                .preferences = preferences,
                .mainQueue = queue,
                .clock = clock,
                .random = [] { return 0U; }};
    }

    /// Makes the updater and starts it.
    void start() {
        updater = std::make_unique<StandardUpdater>(parts());
        updater->start(delegate);
    }

    static FeedItem feedItem(const std::string& version) {
        return {.version = version,
                .shortVersion = {},
                .os = {},
                .minimumSystemVersion = {},
                .notes = {},
                .url = "https://example.com/Kestrune.AppImage",
                .length = "1000",
                .signature = std::string(86, 'A') + "=="};
    }

    bool answerFeed(Result<std::vector<FeedItem>, UpdaterError> feed) {
        const bool wasAsked = fetcher.answerFeed(std::move(feed));
        queue.runPosted();
        return wasAsked;
    }

    /// The feed with these versions.
    bool answerVersions(const std::vector<std::string>& versions) {
        std::vector<FeedItem> feed;
        for (const auto& version : versions) {
            feed.push_back(feedItem(version));
        }
        return answerFeed(feed);
    }

    bool answerArchive(Result<std::string, UpdaterError> archive) {
        const bool wasAsked = fetcher.answerArchive(std::move(archive));
        queue.runPosted();
        return wasAsked;
    }

    bool answerInstallation(Result<UpdateInstaller::Outcome, UpdaterError> outcome) {
        const bool wasAsked = installer.answer(std::move(outcome));
        queue.runPosted();
        return wasAsked;
    }

    /// Time passes on both clocks, until a scheduled check asks for the feed or time is over.
    bool waitForScheduledCheck(std::chrono::minutes time) {
        const int before = fetcher.feedsAsked;
        for (std::chrono::minutes passed{0}; passed < time && fetcher.feedsAsked == before; ++passed) {
            clock.advance(std::chrono::minutes{1});
            queue.advance(std::chrono::minutes{1});
        }
        return fetcher.feedsAsked > before;
    }

    /// What was told and shown since the last call.
    [[nodiscard]] Log takeLog() { return std::exchange(presenter.log, {}); }

    /// The user asked, and has the question about version before them.
    void askAbout(const std::string& version) {
        updater->checkForUpdates();
        answerVersions({version});
    }

    /// The archive of version is being fetched.
    void downloadOf(const std::string& version) {
        askAbout(version);
        presenter.answer(UpdateChoice::install);
    }

    /// version is being installed.
    void installationOf(const std::string& version) {
        downloadOf(version);
        answerArchive(archivePath);
    }

    /// version is in place.
    void replacedBy(const std::string& version) {
        installationOf(version);
        answerInstallation(UpdateInstaller::Outcome::replaced);
    }

    const std::string archivePath = "/cache/update/archive.AppImage";
    UpdateSource source;
    FakeUpdateFetcher fetcher;
    FakeUpdateInstaller installer;
    FakeUpdatePresenter presenter;
    FakePreferences preferences;
    ManualMainQueue queue;
    ManualClock clock;
    RecordingDelegate delegate{presenter.log};
    std::unique_ptr<StandardUpdater> updater;
};

}  // namespace kestrune
