#include <gtest/gtest.h>

#include "tests/update/UpdaterFixture.h"

namespace kestrune {

namespace {

using Log = UpdaterFixture::Log;
using State = FakeUpdatePresenter::State;

class StandardUpdaterInstall : public testing::Test, public UpdaterFixture {
protected:
    StandardUpdaterInstall() { start(); }

    /// Leaves out what came before the state that a test is about.
    void forget() { static_cast<void>(takeLog()); }
};

}  // namespace

TEST_F(StandardUpdaterInstall, installFetchesTheArchiveOfTheItemShown) {
    askAbout("2.2");
    const UpdateItem shown = *presenter.item;
    forget();
    presenter.answer(UpdateChoice::install);
    EXPECT_EQ(takeLog(), (Log{"install 2.2", "download 2.2"}));
    EXPECT_EQ(fetcher.archivesAsked, std::vector<UpdateItem>{shown});
    EXPECT_EQ(fetcher.sources.back(), source);
}

TEST_F(StandardUpdaterInstall, theProgressOfTheDownloadIsShown) {
    downloadOf("2.2");
    forget();
    EXPECT_TRUE(fetcher.progress(0, 1000));
    EXPECT_TRUE(fetcher.progress(400, 1000));
    EXPECT_EQ(takeLog(), (Log{"downloaded 0/1000", "downloaded 400/1000"}));
}

TEST_F(StandardUpdaterInstall, theQuitGuardIsAskedOnceTheArchiveIsVerified) {
    downloadOf("2.2");
    forget();
    answerArchive(archivePath);
    EXPECT_EQ(takeLog(), (Log{"may it?", "installing 2.2"}));
    EXPECT_EQ(installer.installed, std::vector<std::string>{archivePath});
}

TEST_F(StandardUpdaterInstall, aRefusalOfTheQuitGuardLeadsBackToTheQuestion) {
    downloadOf("2.2");
    delegate.allowsInstall = false;
    forget();
    answerArchive(archivePath);
    EXPECT_EQ(takeLog(), (Log{"may it?", "update 2.2"}));
    EXPECT_TRUE(installer.installed.empty());
}

TEST_F(StandardUpdaterInstall, afterARefusalTheArchiveIsInstalledWithoutFetchingItAgain) {
    downloadOf("2.2");
    delegate.allowsInstall = false;
    answerArchive(archivePath);
    delegate.allowsInstall = true;
    forget();
    presenter.answer(UpdateChoice::install);
    EXPECT_EQ(takeLog(), (Log{"install 2.2", "may it?", "installing 2.2"}));
    EXPECT_EQ(fetcher.archivesAsked.size(), 1U);
    EXPECT_EQ(installer.installed, std::vector<std::string>{archivePath});
}

TEST_F(StandardUpdaterInstall, theArchiveIsKeptNoLongerThanItsQuestion) {
    downloadOf("2.2");
    delegate.allowsInstall = false;
    answerArchive(archivePath);
    presenter.answer(UpdateChoice::dismiss);
    delegate.allowsInstall = true;
    updater->checkForUpdates();
    presenter.answer(UpdateChoice::install);
    EXPECT_EQ(presenter.state, State::download);
    EXPECT_EQ(fetcher.archivesAsked.size(), 2U);
    EXPECT_TRUE(installer.installed.empty());
}

TEST_F(StandardUpdaterInstall, theQuitGuardCanRefuseAgainAndAgain) {
    downloadOf("2.2");
    delegate.allowsInstall = false;
    answerArchive(archivePath);
    for (int i = 0; i < 3; ++i) {
        forget();
        EXPECT_TRUE(presenter.answer(UpdateChoice::install));
        EXPECT_EQ(takeLog(), (Log{"install 2.2", "may it?", "update 2.2"}));
    }
}

TEST_F(StandardUpdaterInstall, aStoppedDownloadIsToldAndTheUpdateStaysKnown) {
    downloadOf("2.2");
    forget();
    EXPECT_TRUE(presenter.press());
    EXPECT_EQ(takeLog(), (Log{"error 1002", "close"}));
    EXPECT_EQ(delegate.error, (UpdaterError{UpdaterError::cancelled, "The download of version 2.2 was stopped."}));
    EXPECT_FALSE(fetcher.isFetchingArchive());
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "update 2.2"}));
}

TEST_F(StandardUpdaterInstall, anArchiveThatCrossesTheStopIsNotInstalled) {
    downloadOf("2.2");
    ASSERT_TRUE(fetcher.answerArchive(archivePath));
    EXPECT_TRUE(presenter.press());
    queue.runPosted();
    EXPECT_TRUE(installer.installed.empty());
    EXPECT_EQ(presenter.state, State::closed);
}

TEST_F(StandardUpdaterInstall, aDownloadStoppedDuringTheQuitGuardsAlertIsNotInstalled) {
    downloadOf("2.2");
    delegate.during = [this](const std::string& entry) {
        if (entry == "may it?") {
            presenter.press();
        }
    };
    forget();
    answerArchive(archivePath);
    EXPECT_EQ(takeLog(), (Log{"may it?", "error 1002", "close"}));
    EXPECT_TRUE(installer.installed.empty());
}

TEST_F(StandardUpdaterInstall, aFailedDownloadTellsTheUserWhyAndStartsFromTheFeedNextTime) {
    downloadOf("2.2");
    forget();
    const UpdaterError error{UpdaterError::signature, "The download is not what its publisher signed."};
    answerArchive(error);
    EXPECT_EQ(takeLog(), (Log{"error 2003", "outcome"}));
    EXPECT_EQ(delegate.error, error);
    EXPECT_EQ(presenter.title, "Version 2.2 couldn’t be installed");
    EXPECT_EQ(presenter.text,
              "The download is not what its publisher signed. Check for updates again, or download the new version "
              "yourself.");
    EXPECT_TRUE(installer.installed.empty());
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), Log{"checking"});
}

TEST_F(StandardUpdaterInstall, askingDuringTheDownloadTellsOfItAndBringsItToTheFront) {
    downloadOf("2.2");
    forget();
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "front"}));
    EXPECT_TRUE(fetcher.isFetchingArchive());
    EXPECT_EQ(fetcher.archivesAsked.size(), 1U);
}

TEST_F(StandardUpdaterInstall, askingDuringTheInstallationBringsItToTheFront) {
    installationOf("2.2");
    forget();
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "front"}));
    EXPECT_EQ(installer.installed.size(), 1U);
}

TEST_F(StandardUpdaterInstall, aFailedInstallationTellsTheUserWhy) {
    installationOf("2.2");
    forget();
    answerInstallation(UpdaterError{UpdaterError::install, "The disk is full."});
    EXPECT_EQ(takeLog(), (Log{"error 2004", "outcome"}));
    EXPECT_EQ(presenter.title, "Version 2.2 couldn’t be installed");
    EXPECT_EQ(presenter.text, "The disk is full. Check for updates again, or download the new version yourself.");
    downloadOf("2.2");
    EXPECT_EQ(fetcher.archivesAsked.size(), 2U);
}

TEST_F(StandardUpdaterInstall, aReplacedProgramOffersToStartTheNewVersion) {
    installationOf("2.2");
    forget();
    answerInstallation(UpdateInstaller::Outcome::replaced);
    EXPECT_EQ(takeLog(), Log{"ready 2.2"});
    EXPECT_EQ(installer.relaunches, 0);
}

TEST_F(StandardUpdaterInstall, theQuitGuardIsAskedAgainBeforeTheNewVersionStarts) {
    replacedBy("2.2");
    forget();
    EXPECT_TRUE(presenter.press());
    EXPECT_EQ(takeLog(), Log{"may it?"});
    EXPECT_EQ(installer.relaunches, 1);
}

TEST_F(StandardUpdaterInstall, aRefusedRelaunchIsOfferedAgain) {
    replacedBy("2.2");
    delegate.allowsInstall = false;
    forget();
    EXPECT_TRUE(presenter.press());
    EXPECT_EQ(takeLog(), (Log{"may it?", "ready 2.2"}));
    EXPECT_EQ(installer.relaunches, 0);
    delegate.allowsInstall = true;
    EXPECT_TRUE(presenter.press());
    EXPECT_EQ(installer.relaunches, 1);
}

TEST_F(StandardUpdaterInstall, aClosedOfferToRelaunchComesBackWhenTheUserAsks) {
    replacedBy("2.2");
    presenter.close();
    forget();
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "ready 2.2"}));
    EXPECT_EQ(fetcher.feedsAsked, 1);
    EXPECT_TRUE(presenter.press());
    EXPECT_EQ(installer.relaunches, 1);
}

TEST_F(StandardUpdaterInstall, anArchiveThatWasHandedOverIsToldSo) {
    installer.suffix = "deb";
    updater->checkForUpdates();
    FeedItem item = feedItem("2.2");
    item.url = "https://example.com/kestrune.deb";
    answerFeed(std::vector<FeedItem>{item});
    presenter.answer(UpdateChoice::install);
    answerArchive(std::string("/cache/update/archive.deb"));
    forget();
    answerInstallation(UpdateInstaller::Outcome::handedOver);
    EXPECT_EQ(takeLog(), Log{"outcome"});
    EXPECT_EQ(presenter.title, "Version 2.2 was handed to the system’s installer");
    EXPECT_EQ(presenter.text, "Finish the installation there, then quit Kestrune and open it again.");
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "update 2.2"}));
}

TEST_F(StandardUpdaterInstall, aProgramThatCannotReplaceItselfTellsWhereToDownload) {
    installer.suffix.reset();
    askAbout("2.2");
    forget();
    presenter.answer(UpdateChoice::install);
    EXPECT_EQ(takeLog(), (Log{"install 2.2", "outcome"}));
    EXPECT_EQ(presenter.title, "Version 2.2 is ready to download");
    EXPECT_EQ(presenter.text,
              "This copy of Kestrune can’t replace itself. Download the new version from "
              "https://example.com/Kestrune.AppImage and install it the way you installed this one.");
    EXPECT_TRUE(fetcher.archivesAsked.empty());
    updater->checkForUpdates();
    EXPECT_EQ(takeLog(), (Log{"user sees 2.2", "update 2.2"}));
}

}  // namespace kestrune
