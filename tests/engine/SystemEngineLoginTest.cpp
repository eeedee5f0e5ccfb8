#include <optional>

#include "tests/engine/EngineFixture.h"

namespace kestrune {
namespace {

class SystemEngineLoginTest : public EngineFixture {
protected:
    static constexpr const char* key = "kestrune_login_default_2_1";

    std::optional<bool> permission() {
        std::optional<bool> answered;
        engine.queryNotificationPermission([&answered](bool allowed) { answered = allowed; });
        return answered;
    }
};

TEST_F(SystemEngineLoginTest, firstLaunchTurnsStartingAtLoginOnAndSaysSo) {
    engine.ensureLaunchAtLoginOnFirstLaunch();
    EXPECT_EQ(preferences.boolean(key), true);
    EXPECT_TRUE(loginItem.registered);
    EXPECT_TRUE(engine.isLaunchAtLoginEnabled());
    EXPECT_EQ(told(), Texts{"Start at Login: ON"});
}

TEST_F(SystemEngineLoginTest, firstLaunchWithStartingAtLoginAlreadyOnOnlySetsTheKey) {
    loginItem.registered = true;
    engine.ensureLaunchAtLoginOnFirstLaunch();
    EXPECT_EQ(preferences.boolean(key), true);
    EXPECT_EQ(preferences.keysSet, Texts{key});
    EXPECT_TRUE(loginItem.registered);
    EXPECT_EQ(loginItem.changes, 0);
    EXPECT_TRUE(told().empty());
}

TEST_F(SystemEngineLoginTest, secondLaunchLeavesWhatTheUserTurnedOffAlone) {
    engine.ensureLaunchAtLoginOnFirstLaunch();
    engine.toggleLaunchAtLogin();
    ASSERT_EQ(told(), (Texts{"Start at Login: ON", "Start at Login: OFF"}));
    const int changes = loginItem.changes;
    SystemEngine nextLaunch(parts);
    nextLaunch.ensureLaunchAtLoginOnFirstLaunch();
    EXPECT_FALSE(nextLaunch.isLaunchAtLoginEnabled());
    EXPECT_EQ(loginItem.changes, changes);
    EXPECT_EQ(preferences.boolean(key), true);
    EXPECT_TRUE(told().empty());
}

TEST_F(SystemEngineLoginTest, firstLaunchThatCannotSaveItsKeyStillTurnsItOn) {
    preferences.failsSaving = true;
    engine.ensureLaunchAtLoginOnFirstLaunch();
    EXPECT_TRUE(loginItem.registered);
}

TEST_F(SystemEngineLoginTest, keyIsSetBeforeAnythingIsToggled) {
    loginItem.refuses = true;
    loginItem.agentFails = true;
    std::optional<bool> keyAtTheChange;
    loginItem.whenChanging = [&] { keyAtTheChange = preferences.boolean(key); };
    engine.ensureLaunchAtLoginOnFirstLaunch();
    EXPECT_EQ(keyAtTheChange, true);
    EXPECT_EQ(preferences.boolean(key), true);
    EXPECT_FALSE(engine.isLaunchAtLoginEnabled());
}

TEST_F(SystemEngineLoginTest, systemIsAskedEachTime) {
    EXPECT_FALSE(engine.isLaunchAtLoginEnabled());
    loginItem.registered = true;
    EXPECT_TRUE(engine.isLaunchAtLoginEnabled());
    loginItem.registered = false;
    EXPECT_FALSE(engine.isLaunchAtLoginEnabled());
}

TEST_F(SystemEngineLoginTest, togglingTwiceIsOnAndOffAgain) {
    engine.toggleLaunchAtLogin();
    EXPECT_TRUE(loginItem.registered);
    engine.toggleLaunchAtLogin();
    EXPECT_FALSE(loginItem.registered);
    EXPECT_FALSE(loginItem.agentInstalled);
    EXPECT_EQ(told(), (Texts{"Start at Login: ON", "Start at Login: OFF"}));
}

TEST_F(SystemEngineLoginTest, systemThatRefusesIsReplacedByTheAgent) {
    loginItem.refuses = true;
    engine.toggleLaunchAtLogin();
    EXPECT_TRUE(loginItem.agentInstalled);
    EXPECT_TRUE(engine.isLaunchAtLoginEnabled());
    EXPECT_EQ(told(), Texts{"Start at Login: ON"});
    engine.toggleLaunchAtLogin();
    EXPECT_FALSE(loginItem.agentInstalled);
    EXPECT_FALSE(engine.isLaunchAtLoginEnabled());
    EXPECT_EQ(told(), Texts{"Start at Login: OFF"});
}

TEST_F(SystemEngineLoginTest, agentIsTurnedOffAlsoWhenTheSystemWouldNoLongerRefuse) {
    loginItem.agentInstalled = true;
    engine.toggleLaunchAtLogin();
    EXPECT_FALSE(engine.isLaunchAtLoginEnabled());
    EXPECT_EQ(told(), Texts{"Start at Login: OFF"});
}

TEST_F(SystemEngineLoginTest, turningOffTakesAnAgentThatIsThereTooAway) {
    loginItem.registered = true;
    loginItem.agentInstalled = true;
    engine.toggleLaunchAtLogin();
    EXPECT_FALSE(loginItem.registered);
    EXPECT_FALSE(loginItem.agentInstalled);
    EXPECT_EQ(told(), Texts{"Start at Login: OFF"});
}

TEST_F(SystemEngineLoginTest, agentThatCannotBeLaidDownIsNotReported) {
    loginItem.refuses = true;
    loginItem.agentFails = true;
    engine.toggleLaunchAtLogin();
    EXPECT_FALSE(engine.isLaunchAtLoginEnabled());
    EXPECT_TRUE(told().empty());
    EXPECT_TRUE(center.sounds.empty());
}

TEST_F(SystemEngineLoginTest, agentThatCannotBeRemovedIsReportedOffAllTheSame) {
    loginItem.refuses = true;
    loginItem.agentInstalled = true;
    loginItem.agentFails = true;
    engine.toggleLaunchAtLogin();
    EXPECT_EQ(told(), Texts{"Start at Login: OFF"});
}

TEST_F(SystemEngineLoginTest, runWithoutAnIdentityTogglesSilently) {
    center.identity = false;
    engine.toggleLaunchAtLogin();
    EXPECT_TRUE(loginItem.registered);
    EXPECT_TRUE(told().empty());
}

TEST_F(SystemEngineLoginTest, notificationsAreAllowedInThreeOfTheFiveStates) {
    using Status = NotificationAuthorization;
    for (const Status status : {Status::authorized, Status::provisional, Status::ephemeral}) {
        center.authorization = status;
        EXPECT_EQ(permission(), true);
    }
    for (const Status status : {Status::notDetermined, Status::denied}) {
        center.authorization = status;
        EXPECT_EQ(permission(), false);
    }
    EXPECT_EQ(center.requests, 0);
}

TEST_F(SystemEngineLoginTest, runWithoutAnIdentityHasNoPermissionAndAsksNobody) {
    center.identity = false;
    EXPECT_EQ(permission(), false);
    EXPECT_EQ(center.queries, 0);
}

TEST_F(SystemEngineLoginTest, permissionThatIsToldAfterTheEngineIsGoneGoesNowhere) {
    center.holdAnswers = true;
    bool answered = false;
    {
        SystemEngine shortLived(parts);
        shortLived.queryNotificationPermission([&answered](bool) { answered = true; });
    }
    center.answerHeld();
    EXPECT_FALSE(answered);
}

}  // namespace
}  // namespace kestrune
