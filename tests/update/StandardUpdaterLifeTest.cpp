#include <gtest/gtest.h>

#include "tests/update/UpdaterFixture.h"

namespace kestrune {

namespace {

using Log = UpdaterFixture::Log;

/// What may happen at any time: the updater goes away, or its delegate asks it for something.
class StandardUpdaterLife : public testing::Test, public UpdaterFixture {
protected:
    StandardUpdaterLife() { start(); }

    void end() {
        updater.reset();
        static_cast<void>(takeLog());
    }

    /// Ends the updater within the delegate's call of that entry.
    void endDuring(const std::string& entry) {
        delegate.during = [this, entry](const std::string& current) {
            if (current == entry) {
                end();
            }
        };
    }

    /// Nothing is told, shown, fetched or due any more.
    void expectSilence() {
        queue.runPosted();
        queue.advance(std::chrono::hours{48});
        EXPECT_EQ(takeLog(), Log{});
        EXPECT_FALSE(fetcher.isFetchingFeed());
        EXPECT_FALSE(fetcher.isFetchingArchive());
        EXPECT_EQ(queue.timers(), 0U);
        EXPECT_EQ(installer.relaunches, 0);
    }
};

}  // namespace

TEST_F(StandardUpdaterLife, endedWhileIdleItIsSilent) {
    end();
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedDuringACheckItIsSilent) {
    updater->checkForUpdates();
    end();
    EXPECT_TRUE(presenter.press());
    EXPECT_FALSE(answerVersions({"2.2"}));
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedBetweenAnAnswerAndItsTurnItIsSilent) {
    updater->checkForUpdates();
    ASSERT_TRUE(fetcher.answerFeed(std::vector<FeedItem>{feedItem("2.2")}));
    end();
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedDuringTheQuestionItIsSilent) {
    askAbout("2.2");
    end();
    EXPECT_TRUE(presenter.answer(UpdateChoice::install));
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedDuringTheDownloadItIsSilent) {
    downloadOf("2.2");
    end();
    EXPECT_FALSE(fetcher.progress(1, 2));
    EXPECT_FALSE(answerArchive(archivePath));
    EXPECT_TRUE(presenter.press());
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedDuringTheInstallationItIsSilent) {
    installationOf("2.2");
    end();
    EXPECT_TRUE(answerInstallation(UpdateInstaller::Outcome::replaced));
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedBeforeTheRelaunchItIsSilent) {
    replacedBy("2.2");
    end();
    EXPECT_TRUE(presenter.press());
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedWithinAnyCallOfACheckItIsSilent) {
    for (const std::string entry : {"found 2.2", "user sees 2.2"}) {
        start();
        endDuring(entry);
        askAbout("2.2");
        expectSilence();
    }
    for (const std::string entry : {"none", "error 1001"}) {
        start();
        endDuring(entry);
        updater->checkForUpdates();
        answerVersions({});
        expectSilence();
    }
}

TEST_F(StandardUpdaterLife, endedWithinTheCallAboutAFailureItIsSilent) {
    endDuring("error 2001");
    updater->checkForUpdates();
    answerFeed(UpdaterError{UpdaterError::network, "The server did not answer."});
    expectSilence();
    start();
    downloadOf("2.2");
    answerArchive(UpdaterError{UpdaterError::network, "The server did not answer."});
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedWithinTheCallAboutAStopItIsSilent) {
    endDuring("error 1002");
    updater->checkForUpdates();
    presenter.press();
    expectSilence();
    start();
    downloadOf("2.2");
    presenter.press();
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedWithinTheCallAboutAnyChoiceItIsSilent) {
    const std::vector<std::pair<UpdateChoice, std::string>> choices{{UpdateChoice::install, "install 2.2"},
                                                                    {UpdateChoice::dismiss, "dismiss 2.2"},
                                                                    {UpdateChoice::skip, "skip 2.2"}};
    for (const auto& [choice, entry] : choices) {
        start();
        endDuring(entry);
        askAbout("2.2");
        presenter.answer(choice);
        expectSilence();
    }
}

TEST_F(StandardUpdaterLife, endedWhileAScheduledFindIsToldItIsSilent) {
    for (const std::string entry : {"found 2.2", "schedule found 2.2"}) {
        preferences.values.clear();
        start();
        endDuring(entry);
        ASSERT_TRUE(waitForScheduledCheck(std::chrono::minutes{20}));
        answerVersions({"2.2"});
        expectSilence();
    }
}

TEST_F(StandardUpdaterLife, endedDuringTheQuitGuardsAlertItInstallsNothing) {
    endDuring("may it?");
    downloadOf("2.2");
    answerArchive(archivePath);
    EXPECT_TRUE(installer.installed.empty());
    expectSilence();
}

TEST_F(StandardUpdaterLife, endedDuringTheQuitGuardsAlertItDoesNotRelaunch) {
    replacedBy("2.2");
    endDuring("may it?");
    presenter.press();
    expectSilence();
}

TEST_F(StandardUpdaterLife, askedFromWithinEveryCallItAnswersAfterwards) {
    bool asks = true;
    delegate.during = [&](const std::string& entry) {
        if (asks && entry != "user sees 2.2") {
            updater->checkForUpdates();
        }
    };
    askAbout("2.2");
    EXPECT_EQ(takeLog(), (Log{"checking", "found 2.2", "user sees 2.2", "update 2.2", "user sees 2.2", "front"}));
    presenter.answer(UpdateChoice::dismiss);
    queue.runPosted();
    EXPECT_EQ(takeLog(), (Log{"dismiss 2.2", "close", "user sees 2.2", "update 2.2"}));
    presenter.answer(UpdateChoice::skip);
    queue.runPosted();
    EXPECT_EQ(takeLog(), (Log{"skip 2.2", "close", "checking"}));
    asks = false;
    answerVersions({});
    EXPECT_EQ(takeLog(), (Log{"none", "error 1001", "outcome"}));
}

TEST_F(StandardUpdaterLife, askedWhileAScheduledFindIsToldItShowsTheFindAfterwards) {
    delegate.during = [this](const std::string& entry) {
        if (entry == "schedule found 2.2") {
            updater->checkForUpdates();
        }
    };
    ASSERT_TRUE(waitForScheduledCheck(std::chrono::minutes{20}));
    answerVersions({"2.2"});
    EXPECT_EQ(takeLog(), (Log{"found 2.2", "schedule found 2.2", "user sees 2.2", "update 2.2"}));
    EXPECT_EQ(fetcher.feedsAsked, 1);
}

TEST_F(StandardUpdaterLife, askedAndEndedWithinOneCallItIsSilent) {
    delegate.during = [this](const std::string& entry) {
        if (entry == "none") {
            updater->checkForUpdates();
            end();
        }
    };
    updater->checkForUpdates();
    answerVersions({});
    expectSilence();
}

TEST_F(StandardUpdaterLife, askedDuringTheQuitGuardsAlertItBringsTheWindowToTheFront) {
    downloadOf("2.2");
    static_cast<void>(takeLog());
    delegate.during = [this](const std::string& entry) {
        if (entry == "may it?") {
            updater->checkForUpdates();
        }
    };
    answerArchive(archivePath);
    EXPECT_EQ(takeLog(), (Log{"may it?", "user sees 2.2", "front", "installing 2.2"}));
    EXPECT_EQ(installer.installed.size(), 1U);
}

}  // namespace kestrune
