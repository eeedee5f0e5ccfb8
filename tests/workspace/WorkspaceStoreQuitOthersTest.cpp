#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

class WorkspaceStoreQuitOthers : public testing::Test {
protected:
    void quitOthers() {
        fixture.store().quitOtherApps();
        fixture.settle();
    }

    [[nodiscard]] const Alert& alert() const { return fixture.alerts.alerts.at(0); }

    [[nodiscard]] std::vector<std::int32_t> asked() const { return fixture.applications.asked; }

    [[nodiscard]] std::string summary() { return fixture.store().message.get().value_or("(none)"); }

    StoreFixture fixture;
};

using Pids = std::vector<std::int32_t>;

}  // namespace

TEST_F(WorkspaceStoreQuitOthers, everyOtherApplicationIsNamedInTheQuestion) {
    fixture.applications.start(200, "Safari");
    fixture.applications.start(201, "Mail");
    fixture.applications.start(202, "Notes");
    quitOthers();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(alert().style, AlertStyle::informational);
    EXPECT_EQ(alert().messageText, "Quit 3 other apps?");
    EXPECT_EQ(alert().informativeText(),
              "Safari, Mail, Notes\n\nSave your work first. Kestrune requests normal quits; apps may show their own "
              "save dialogs. Protected apps and background agents stay running. Unresponsive apps are never forced to "
              "close by this action.");
    EXPECT_EQ(alert().buttons, (std::vector<std::string>{"Quit Apps", "Cancel"}));
    EXPECT_EQ(asked(), (Pids{200, 201, 202}));
    EXPECT_TRUE(fixture.applications.forced.empty());
}

TEST_F(WorkspaceStoreQuitOthers, theOutcomeIsRecordedShownAndNotified) {
    fixture.applications.start(200, "Safari");
    fixture.applications.start(201, "Mail");
    fixture.applications.declining = {201};
    quitOthers();
    ASSERT_EQ(fixture.store().history.get().size(), 1U);
    const auto& entry = fixture.store().history.get()[0];
    EXPECT_EQ(entry.title, "Quit Other Apps requested");
    EXPECT_EQ(entry.detail,
              "1 of 2 apps accepted a quit request. This is not a count of confirmed exits; check Running Apps for the "
              "current state.");
    EXPECT_FALSE(entry.failed);
    EXPECT_EQ(summary(), "Quit requests sent to 1 apps. Protected apps were kept running.");
    EXPECT_EQ(fixture.notificationCenter.delivered,
              (std::vector<FakeNotificationCenter::Delivered>{{"Kestrune", summary()}}));
    EXPECT_EQ(fixture.processes.reads, 0);
    fixture.mainQueue.advance(std::chrono::seconds{1});
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 1);
}

TEST_F(WorkspaceStoreQuitOthers, withOnlyProtectedApplicationsAndThisProgramThereIsNothingToQuit) {
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"Safari"};
    fixture.applications.start(StoreFixture::ownProcess, "Window");
    fixture.applications.start(200, "Safari");
    fixture.applications.start(201, "Docker Desktop");
    fixture.applications.start(202, "Agent").activationPolicy = ActivationPolicy::accessory;
    quitOthers();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(alert().messageText, "No other apps to quit");
    EXPECT_EQ(alert().informativeText(), "Kestrune, protected apps and background agents are kept running.");
    EXPECT_EQ(alert().buttons, std::vector<std::string>{"OK"});
    EXPECT_TRUE(asked().empty());
    EXPECT_TRUE(fixture.store().history.get().empty());
    EXPECT_TRUE(fixture.notificationCenter.delivered.empty());
}

TEST_F(WorkspaceStoreQuitOthers, anythingButTheFirstButtonQuitsNothing) {
    fixture.applications.start(200, "Safari");
    fixture.alerts.answer = 1;
    quitOthers();
    EXPECT_TRUE(asked().empty());
    EXPECT_TRUE(fixture.store().history.get().empty());
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
}

TEST_F(WorkspaceStoreQuitOthers, anApplicationThatEndedMeanwhileIsSkippedAndNotCounted) {
    fixture.applications.start(200, "Safari");
    fixture.applications.start(201, "Mail");
    fixture.alerts.whileOpen = [&] { fixture.applications.end(200); };
    quitOthers();
    EXPECT_EQ(asked(), Pids{201});
    EXPECT_EQ(summary(), "Quit requests sent to 1 apps. Protected apps were kept running.");
    EXPECT_TRUE(fixture.store().history.get().at(0).detail.starts_with("1 of 2 apps accepted"));
}

TEST_F(WorkspaceStoreQuitOthers, protectionGivenWhileTheQuestionIsOpenHolds) {
    fixture.applications.start(200, "Safari");
    fixture.applications.start(201, "Mail");
    fixture.alerts.whileOpen = [&] {
        RunningItem row;
        row.name = "Safari";
        fixture.store().toggleProtection(row);
    };
    quitOthers();
    EXPECT_EQ(asked(), Pids{201});
}

TEST_F(WorkspaceStoreQuitOthers, anApplicationStartedWhileTheQuestionIsOpenIsNotAsked) {
    fixture.applications.start(200, "Safari");
    fixture.alerts.whileOpen = [&] { fixture.applications.start(201, "Mail"); };
    quitOthers();
    EXPECT_EQ(asked(), Pids{200});
}

TEST_F(WorkspaceStoreQuitOthers, anApplicationWhoseExecutableIsProtectedIsSparedBeforeAnythingWasListed) {
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"tool", "Viewer"};
    fixture.applications.start(200, "System Monitor").executable = "/opt/stats/stats";
    fixture.applications.start(201, "Mail");
    fixture.applications.start(202, "Shown Otherwise").executable = "/opt/Tool";
    fixture.applications.start(203, "").executable = "/opt/Viewer";
    quitOthers();
    EXPECT_EQ(asked(), Pids{201});
    EXPECT_EQ(alert().messageText, "Quit 1 other apps?");
}

TEST_F(WorkspaceStoreQuitOthers, anApplicationWithoutANameIsStillNamed) {
    fixture.applications.start(200, "", "org.example.Viewer");
    fixture.applications.start(201, "");
    fixture.applications.start(202, "a\nb" + std::string(10'000, 'x'));
    quitOthers();
    EXPECT_TRUE(alert().text.starts_with("org.example.Viewer, PID 201, a␊bxxx"));
    EXPECT_LT(alert().text.size(), 600U);
}

TEST_F(WorkspaceStoreQuitOthers, onlyARegularApplicationOfAnotherProcessMayQuit) {
    const auto& store = fixture.store();
    EXPECT_TRUE(store.canQuitApplication("Safari", 200, true, 100));
    EXPECT_TRUE(store.canQuitApplication("Safari", 1, true, 100));
    EXPECT_FALSE(store.canQuitApplication("Safari", 200, false, 100));
    EXPECT_FALSE(store.canQuitApplication("Safari", 0, true, 100));
    EXPECT_FALSE(store.canQuitApplication("Safari", -5, true, 100));
    EXPECT_FALSE(store.canQuitApplication("Safari", 100, true, 100));
    EXPECT_FALSE(store.canQuitApplication("Docker Desktop", 200, true, 100));
}

}  // namespace kestrune
