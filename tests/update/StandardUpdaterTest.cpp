#include "update/StandardUpdater.h"

#include <gtest/gtest.h>

#include "tests/update/UpdaterFixture.h"

namespace kestrune {

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using Log = UpdaterFixture::Log;
using State = FakeUpdatePresenter::State;

constexpr const char* lastCheckKey = "kestrune_update_last_check";
constexpr const char* skippedKey = "kestrune_update_skipped";

const UpdaterError networkError{UpdaterError::network, "The server did not answer."};

class StandardUpdaterTest : public testing::Test, public UpdaterFixture {
protected:
    StandardUpdaterTest() { start(); }

    /// A scheduled check found version; nothing of that is left in the log.
    void findOnSchedule(const std::string& version) {
        ASSERT_TRUE(waitForScheduledCheck(hours{30}));
        ASSERT_TRUE(answerVersions({version}));
        static_cast<void>(takeLog());
    }
};

}  // namespace

TEST_F(StandardUpdaterTest, withoutAFeedNothingEverHappens) {
    source.feedUrl.clear();
    preferences.values.clear();
    start();
    EXPECT_FALSE(updater->isConfigured());
    EXPECT_EQ(queue.timers(), 0U);
    updater->checkForUpdates();
    EXPECT_FALSE(waitForScheduledCheck(hours{48}));
    EXPECT_EQ(fetcher.feedsAsked, 0);
    EXPECT_EQ(takeLog(), Log{});
    EXPECT_TRUE(preferences.keysSet.empty());
}

TEST_F(StandardUpdaterTest, beforeTheStartNothingHappens) {
    StandardUpdater unstarted(parts());
    EXPECT_TRUE(unstarted.isConfigured());
    unstarted.checkForUpdates();
    EXPECT_EQ(fetcher.feedsAsked, 0);
    EXPECT_EQ(takeLog(), Log{});
}

TEST_F(StandardUpdaterTest, theUsersCheckShowsThatItRunsAndAsksTheFeed) {
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), Log{"checking"});
    EXPECT_EQ(fetcher.feedsAsked, 1);
    EXPECT_EQ(fetcher.sources, std::vector<UpdateSource>{source});
}

TEST_F(StandardUpdaterTest, anUpdateTheUserAskedForIsToldThenShown) {
    askAbout("2.2");
    EXPECT_EQ(takeLog(), (Log{"checking", "found 2.2", "user sees 2.2", "update 2.2"}));
    EXPECT_EQ(presenter.runningVersion, "2.1.0");
}

TEST_F(StandardUpdaterTest, whenThereIsNoneTheUserIsToldSo) {
    updater->checkForUpdates();
    answerVersions({"2.1.0", "2.0"});
    EXPECT_EQ(takeLog(), (Log{"checking", "none", "error 1001", "outcome"}));
    EXPECT_EQ(presenter.title, "You’re up to date");
    EXPECT_EQ(presenter.text, "Kestrune 2.1.0 is the newest version available.");
}

TEST_F(StandardUpdaterTest, anItemThatBreaksARuleIsNoUpdate) {
    updater->checkForUpdates();
    FeedItem item = feedItem("2.2");
    item.url = "http://example.com/Kestrune.AppImage";
    answerFeed(std::vector<FeedItem>{item});
    EXPECT_EQ(takeLog(), (Log{"checking", "none", "error 1001", "outcome"}));
}

TEST_F(StandardUpdaterTest, anArchiveOfAnotherKindThanTheProgramIsNoUpdate) {
    installer.suffix = "deb";
    updater->checkForUpdates();
    answerVersions({"2.2"});
    EXPECT_EQ(presenter.title, "You’re up to date");
}

TEST_F(StandardUpdaterTest, aFailedCheckTellsTheUserWhy) {
    updater->checkForUpdates();
    answerFeed(networkError);
    EXPECT_EQ(takeLog(), (Log{"checking", "error 2001", "outcome"}));
    EXPECT_EQ(delegate.error, networkError);
    EXPECT_EQ(presenter.title, "Updates couldn’t be checked");
    EXPECT_EQ(presenter.text, "The server did not answer. Check again later.");
}

TEST_F(StandardUpdaterTest, aStoppedCheckIsToldAndClosesTheWindow) {
    updater->checkForUpdates();
    EXPECT_TRUE(presenter.press());
    EXPECT_EQ(takeLog(), (Log{"checking", "error 1002", "close"}));
    EXPECT_EQ(delegate.error, (UpdaterError{UpdaterError::cancelled, "The check for updates was stopped."}));
    EXPECT_FALSE(fetcher.isFetchingFeed());
    EXPECT_EQ(preferences.date(lastCheckKey), std::nullopt);
}

TEST_F(StandardUpdaterTest, anAnswerThatCrossesTheStopIsNotHeard) {
    updater->checkForUpdates();
    ASSERT_TRUE(fetcher.answerFeed(std::vector<FeedItem>{feedItem("2.2")}));
    EXPECT_TRUE(presenter.press());
    queue.runPosted();
    EXPECT_EQ(takeLog(), (Log{"checking", "error 1002", "close"}));
}

TEST_F(StandardUpdaterTest, afterAnOutcomeTheUserCanCheckAgain) {
    updater->checkForUpdates();
    answerFeed(networkError);
    static_cast<void>(takeLog());
    askAbout("2.2");
    EXPECT_EQ(takeLog(), (Log{"checking", "found 2.2", "user sees 2.2", "update 2.2"}));
}

TEST_F(StandardUpdaterTest, askingAgainDuringACheckOnlyBringsItsWindowToTheFront) {
    updater->checkForUpdates();
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"checking", "front"}));
    EXPECT_EQ(fetcher.feedsAsked, 1);
}

TEST_F(StandardUpdaterTest, askingAgainDuringTheQuestionTellsOfItAndBringsItToTheFront) {
    askAbout("2.2");
    static_cast<void>(takeLog());
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "front"}));
    EXPECT_EQ(fetcher.feedsAsked, 1);
    EXPECT_TRUE(presenter.answer(UpdateChoice::dismiss));
}

TEST_F(StandardUpdaterTest, aDismissedUpdateStaysKnownAndIsShownWithoutAnotherCheck) {
    askAbout("2.2");
    static_cast<void>(takeLog());
    presenter.answer(UpdateChoice::dismiss);
    EXPECT_EQ(takeLog(), (Log{"dismiss 2.2", "close"}));
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "update 2.2"}));
    EXPECT_EQ(fetcher.feedsAsked, 1);
}

TEST_F(StandardUpdaterTest, aSkippedUpdateIsForgottenAndRemembered) {
    askAbout("2.2");
    static_cast<void>(takeLog());
    presenter.answer(UpdateChoice::skip);
    EXPECT_EQ(takeLog(), (Log{"skip 2.2", "close"}));
    EXPECT_EQ(preferences.texts(skippedKey), std::vector<std::string>{"2.2"});
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), Log{"checking"});
}

TEST_F(StandardUpdaterTest, theUserIsShownASkippedVersionWhoAsksForIt) {
    preferences.values[skippedKey] = std::vector<std::string>{"2.2"};
    askAbout("2.2");
    EXPECT_EQ(takeLog(), (Log{"checking", "found 2.2", "user sees 2.2", "update 2.2"}));
}

TEST_F(StandardUpdaterTest, aScheduledFindIsToldAndKeptOutOfSight) {
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    answerVersions({"2.2"});
    EXPECT_EQ(takeLog(), (Log{"found 2.2", "schedule found 2.2"}));
    EXPECT_EQ(presenter.state, State::closed);
}

TEST_F(StandardUpdaterTest, theUpdateOfAScheduledCheckIsShownToWhoAsksWithoutAnotherCheck) {
    findOnSchedule("2.2");
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "update 2.2"}));
    EXPECT_EQ(fetcher.feedsAsked, 1);
}

TEST_F(StandardUpdaterTest, aScheduledFindGivesOneAnnouncementAndOneQuestion) {
    std::unique_ptr<Timer> recheck;
    delegate.during = [&](const std::string& entry) {
        if (entry.starts_with("schedule found")) {
            recheck = queue.after(std::chrono::milliseconds{500}, [this] { updater->checkForUpdates(); });
        }
    };
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    answerVersions({"2.2"});
    queue.advance(std::chrono::milliseconds{499});
    EXPECT_EQ(takeLog(), (Log{"found 2.2", "schedule found 2.2"}));
    queue.advance(minutes{1});
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "update 2.2"}));
}

TEST_F(StandardUpdaterTest, aScheduledCheckWithoutAFindShowsNothing) {
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    answerVersions({});
    EXPECT_EQ(takeLog(), (Log{"none", "error 1001"}));
}

TEST_F(StandardUpdaterTest, aFailedScheduledCheckShowsNothingAndIsTriedAgainLater) {
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    answerFeed(networkError);
    EXPECT_EQ(takeLog(), Log{"error 2001"});
    EXPECT_FALSE(waitForScheduledCheck(minutes{59}));
    EXPECT_TRUE(waitForScheduledCheck(minutes{16}));
}

TEST_F(StandardUpdaterTest, aScheduledCheckPassesOverTheSkippedVersion) {
    preferences.values[skippedKey] = std::vector<std::string>{"2.2.0"};
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    answerVersions({"2.2"});
    EXPECT_EQ(takeLog(), (Log{"none", "error 1001"}));
}

TEST_F(StandardUpdaterTest, aScheduledCheckFindsAVersionAfterTheSkippedOne) {
    preferences.values[skippedKey] = std::vector<std::string>{"2.2"};
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    answerVersions({"2.2", "2.3"});
    EXPECT_EQ(takeLog(), (Log{"found 2.3", "schedule found 2.3"}));
}

TEST_F(StandardUpdaterTest, aNoteOfASkippedVersionThatIsNoneChangesNothing) {
    preferences.values[skippedKey] = std::vector<std::string>{"nonsense"};
    findOnSchedule("2.2");
    preferences.values[skippedKey] = std::vector<std::string>{};
    findOnSchedule("2.2");
    preferences.values[skippedKey] = true;
    findOnSchedule("2.2");
    updater->checkForUpdates();
    EXPECT_EQ(presenter.state, State::update);
}

TEST_F(StandardUpdaterTest, aDismissedUpdateIsAnnouncedAgainADayLater) {
    askAbout("2.2");
    presenter.answer(UpdateChoice::dismiss);
    static_cast<void>(takeLog());
    EXPECT_FALSE(waitForScheduledCheck(hours{24} - minutes{1}));
    EXPECT_TRUE(waitForScheduledCheck(minutes{16}));
    answerVersions({"2.2"});
    EXPECT_EQ(takeLog(), (Log{"found 2.2", "schedule found 2.2"}));
}

TEST_F(StandardUpdaterTest, aLaterScheduledFindTakesTheKnownOnesPlace) {
    findOnSchedule("2.2");
    findOnSchedule("2.3");
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.3", "update 2.3"}));
}

TEST_F(StandardUpdaterTest, anUpdateThatTheFeedTookBackIsForgotten) {
    findOnSchedule("2.2");
    ASSERT_TRUE(waitForScheduledCheck(hours{30}));
    answerVersions({});
    EXPECT_EQ(takeLog(), (Log{"none", "error 1001"}));
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), Log{"checking"});
}

TEST_F(StandardUpdaterTest, aFailedScheduledCheckKeepsTheKnownUpdate) {
    findOnSchedule("2.2");
    ASSERT_TRUE(waitForScheduledCheck(hours{30}));
    answerFeed(networkError);
    static_cast<void>(takeLog());
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "update 2.2"}));
}

TEST_F(StandardUpdaterTest, whoAsksDuringAScheduledCheckIsShownWhatItBrings) {
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), Log{"checking"});
    EXPECT_EQ(fetcher.feedsAsked, 1);
    answerVersions({"2.2"});
    EXPECT_EQ(takeLog(), (Log{"found 2.2", "user sees 2.2", "update 2.2"}));
}

TEST_F(StandardUpdaterTest, aScheduledCheckThatTheUserJoinedCanBeStopped) {
    ASSERT_TRUE(waitForScheduledCheck(minutes{20}));
    updater->checkForUpdates();
    EXPECT_TRUE(presenter.press());
    EXPECT_EQ(takeLog(), (Log{"checking", "error 1002", "close"}));
    EXPECT_FALSE(fetcher.isFetchingFeed());
}

TEST_F(StandardUpdaterTest, theUsersCheckCountsAsTheDaysCheck) {
    updater->checkForUpdates();
    answerVersions({});
    EXPECT_EQ(preferences.date(lastCheckKey), clock.wall);
    EXPECT_FALSE(waitForScheduledCheck(hours{23}));
}

TEST_F(StandardUpdaterTest, aFailedCheckOfTheUserDoesNotPutOffTheScheduledOne) {
    updater->checkForUpdates();
    answerFeed(networkError);
    EXPECT_TRUE(waitForScheduledCheck(minutes{20}));
}

TEST_F(StandardUpdaterTest, noScheduledCheckDisturbsACheckOfTheUser) {
    updater->checkForUpdates();
    EXPECT_FALSE(waitForScheduledCheck(hours{3}));
    EXPECT_EQ(takeLog(), Log{"checking"});
}

TEST_F(StandardUpdaterTest, noScheduledCheckDisturbsAQuestionADownloadOrAnInstallation) {
    askAbout("2.2");
    EXPECT_FALSE(waitForScheduledCheck(hours{72}));
    presenter.answer(UpdateChoice::install);
    EXPECT_FALSE(waitForScheduledCheck(hours{72}));
    answerArchive(archivePath);
    EXPECT_FALSE(waitForScheduledCheck(hours{72}));
    answerInstallation(UpdateInstaller::Outcome::replaced);
    EXPECT_FALSE(waitForScheduledCheck(hours{72}));
}

}  // namespace kestrune
