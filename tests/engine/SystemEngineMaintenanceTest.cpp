#include "tests/engine/EngineFixture.h"

namespace kestrune {
namespace {

class SystemEngineMaintenanceTest : public EngineFixture {
protected:
    /// What was started, a line a command.
    Texts started() const {
        Texts lines;
        for (const auto& call : runner.calls) {
            lines.push_back(call.executable + " " + joined(call.arguments, " "));
        }
        return lines;
    }

    /// Snapshots are let go with that exit status, and so many more bytes are available afterwards.
    std::int64_t thinSnapshots(std::int32_t status, std::int64_t gained) {
        volumes.volumes["/"] = {4'000'000'000, 2'000'000'000};
        runner.answer("/usr/bin/tmutil", [this, status, gained](const FakeProcessRunner::Call&) {
            volumes.volumes["/"].available = 2'000'000'000 + gained;
            return ProcessResult{status, {}};
        });
        return engine.freePurgeableDisk();
    }
};

TEST_F(SystemEngineMaintenanceTest, memoryThatIsPurgedWithoutRightsAsksNobody) {
    runner.answer("/usr/sbin/purge", {0, ""});
    engine.purgeMemory();
    EXPECT_EQ(runner.calls.size(), 1U);
    EXPECT_EQ(told(), Texts{"Inactive memory cleared!"});
}

TEST_F(SystemEngineMaintenanceTest, memoryThatIsPurgedAsAdministratorIsReportedAlike) {
    runner.answer("/usr/sbin/purge", {1, ""});
    runner.answer("/usr/bin/osascript", {0, ""});
    engine.purgeMemory();
    EXPECT_EQ(started(), (Texts{"/usr/sbin/purge ",
                                "/usr/bin/osascript -e do shell script \"'/usr/sbin/purge'\" with administrator "
                                "privileges"}));
    EXPECT_EQ(told(), Texts{"Inactive memory cleared!"});
}

TEST_F(SystemEngineMaintenanceTest, cancelledPasswordDialogReportsDeclinedPrivileges) {
    runner.answer("/usr/sbin/purge", {1, ""});
    runner.answer("/usr/bin/osascript", {1, "User canceled."});
    engine.purgeMemory();
    EXPECT_EQ(told(), Texts{"Couldn't purge memory · admin privileges were declined"});
}

TEST_F(SystemEngineMaintenanceTest, missingToolReportsDeclinedPrivilegesToo) {
    engine.purgeMemory();
    EXPECT_EQ(told(), Texts{"Couldn't purge memory · admin privileges were declined"});
}

TEST_F(SystemEngineMaintenanceTest, snapshotsThatAreThinnedTellWhatTheyFreed) {
    EXPECT_EQ(thinSnapshots(0, 1'234'000'000), 1'234'000'000);
    EXPECT_EQ(started(), Texts{"/usr/bin/tmutil thinlocalsnapshots / 999999999999999 4"});
    EXPECT_EQ(told(), Texts{"Freed 1.23 GB of purgeable space"});
}

TEST_F(SystemEngineMaintenanceTest, machineWithoutSnapshotsHasNothingPurgeable) {
    EXPECT_EQ(thinSnapshots(0, 0), 0);
    EXPECT_EQ(told(), Texts{"No local snapshots to thin · nothing purgeable right now"});
}

TEST_F(SystemEngineMaintenanceTest, spaceThatShrinksMeanwhileIsNeverANegativeGain) {
    EXPECT_EQ(thinSnapshots(0, -5000), 0);
    EXPECT_EQ(thinSnapshots(1, -5000), 0);
    EXPECT_EQ(told(), (Texts{"No local snapshots to thin · nothing purgeable right now",
                             "Couldn't thin local snapshots (Time Machine may be busy)"}));
}

TEST_F(SystemEngineMaintenanceTest, failedThinningStillCountsWhatItGained) {
    EXPECT_EQ(thinSnapshots(1, 7000), 7000);
    EXPECT_EQ(thinSnapshots(-1, 0), 0);
    EXPECT_EQ(told(), Texts(2, "Couldn't thin local snapshots (Time Machine may be busy)"));
}

TEST_F(SystemEngineMaintenanceTest, unknownFreeSpaceIsNoGain) {
    runner.answer("/usr/bin/tmutil", {0, ""});
    EXPECT_EQ(engine.freePurgeableDisk(), 0);
    volumes.volumes["/"] = {4'000'000'000, std::nullopt};
    EXPECT_EQ(engine.freePurgeableDisk(), 0);
    EXPECT_EQ(told(), Texts(2, "No local snapshots to thin · nothing purgeable right now"));
}

TEST_F(SystemEngineMaintenanceTest, emptiedTrashIsReported) {
    runner.answer("/usr/bin/osascript", {0, ""});
    trash.empty = true;
    engine.emptyTrash();
    EXPECT_EQ(started(), Texts{"/usr/bin/osascript -e tell application \"Finder\" to empty trash"});
    EXPECT_EQ(told(), Texts{"Trash emptied!"});
}

TEST_F(SystemEngineMaintenanceTest, trashThatCannotBeSeenIsBelievedToBeEmptied) {
    runner.answer("/usr/bin/osascript", {0, ""});
    trash.empty = std::nullopt;
    engine.emptyTrash();
    EXPECT_EQ(told(), Texts{"Trash emptied!"});
}

TEST_F(SystemEngineMaintenanceTest, trashThatStillHoldsSomethingIsNotEmptied) {
    runner.answer("/usr/bin/osascript", {0, ""});
    trash.empty = false;
    engine.emptyTrash();
    EXPECT_EQ(told(), Texts{"Couldn't empty Trash (Finder may have declined)"});
}

TEST_F(SystemEngineMaintenanceTest, toolThatFailsDidNotEmptyTheTrash) {
    trash.empty = true;
    engine.emptyTrash();
    runner.answer("/usr/bin/osascript", {1, ""});
    engine.emptyTrash();
    EXPECT_EQ(told(), Texts(2, "Couldn't empty Trash (Finder may have declined)"));
}

TEST_F(SystemEngineMaintenanceTest, nameCacheIsFlushedWhateverTheToolsSay) {
    engine.flushDNS();
    EXPECT_EQ(started(), (Texts{"/usr/bin/dscacheutil -flushcache", "/usr/bin/killall -HUP mDNSResponder"}));
    EXPECT_EQ(told(), Texts{"DNS cache flushed!"});
}

TEST_F(SystemEngineMaintenanceTest, fileManagerIsRestartedWhateverTheToolSays) {
    engine.restartFinder();
    EXPECT_EQ(started(), Texts{"/usr/bin/killall Finder"});
    EXPECT_EQ(told(), Texts{"Finder restarted!"});
}

TEST_F(SystemEngineMaintenanceTest, animationsAreReducedWithTheSameValueInAllThreeKeys) {
    engine.toggleAnimations();
    EXPECT_EQ(started(), (Texts{"/usr/bin/defaults write NSGlobalDomain NSAutomaticWindowAnimationsEnabled -bool true",
                                "/usr/bin/defaults write NSGlobalDomain NSScrollAnimationEnabled -bool true",
                                "/usr/bin/defaults write com.apple.finder DisableAllAnimations -bool true"}));
    EXPECT_EQ(preferences.boolean("reduceFX"), true);
    EXPECT_EQ(told(), Texts{"Animations reduced · restart apps to see effect"});
}

TEST_F(SystemEngineMaintenanceTest, togglingAnimationsTwiceRestoresThem) {
    engine.toggleAnimations();
    runner.calls.clear();
    engine.toggleAnimations();
    EXPECT_EQ(started(), (Texts{"/usr/bin/defaults write NSGlobalDomain NSAutomaticWindowAnimationsEnabled -bool false",
                                "/usr/bin/defaults write NSGlobalDomain NSScrollAnimationEnabled -bool false",
                                "/usr/bin/defaults write com.apple.finder DisableAllAnimations -bool false"}));
    EXPECT_EQ(preferences.boolean("reduceFX"), false);
    EXPECT_EQ(told(), (Texts{"Animations reduced · restart apps to see effect",
                             "Animations restored · restart apps to see effect"}));
}

TEST_F(SystemEngineMaintenanceTest, animationsAreNotReducedUntilTheUserSaysSo) {
    EXPECT_FALSE(engine.reduceFX());
    engine.setReduceFX(true);
    EXPECT_TRUE(engine.reduceFX());
    EXPECT_EQ(preferences.keysSet, Texts{"reduceFX"});
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_TRUE(told().empty());
}

TEST_F(SystemEngineMaintenanceTest, userCachesAreLeftToStorage) {
    EXPECT_EQ(engine.clearUserCaches(), 0);
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_TRUE(told().empty());
}

TEST_F(SystemEngineMaintenanceTest, outcomeIsToldOnTheMainThread) {
    engine.flushDNS();
    EXPECT_TRUE(center.delivered.empty());
    EXPECT_EQ(told(), Texts{"DNS cache flushed!"});
}

TEST_F(SystemEngineMaintenanceTest, outcomeThatComesAfterTheEngineIsGoneIsNotTold) {
    {
        SystemEngine shortLived(parts);
        shortLived.flushDNS();
    }
    EXPECT_TRUE(told().empty());
}

}  // namespace
}  // namespace kestrune
