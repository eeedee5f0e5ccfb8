#include <gtest/gtest.h>

#include <limits>

#include "tests/fakes/StoreFixture.h"
#include "workspace/ActivityLog.h"

namespace kestrune {

namespace {

constexpr const char* quitText =
    "Save your work first. Kestrune will request a normal quit and won't force the app to close. Developer processes "
    "receive a termination request.";

class WorkspaceStoreQuit : public testing::Test {
protected:
    /// Starts an application and answers its row.
    RunningItem startApp(std::int32_t pid, const std::string& name) {
        RunningItem row;
        row.app = fixture.applications.start(pid, name);
        row.id = pid;
        row.name = name;
        row.executable = "/usr/bin/app";
        row.startTime = row.app->startTime;
        fixture.processes.now.processes.push_back({pid, 0, "0.0", row.executable, row.startTime});
        return row;
    }

    /// Starts a developer process and answers its row.
    RunningItem startTool(std::int32_t pid, const std::string& command = "/usr/bin/node") {
        RunningItem row;
        row.id = pid;
        row.name = lastPathComponent(command);
        row.executable = command;
        row.startTime = 9;
        fixture.processControl.running.push_back({pid, command, 9});
        fixture.processes.now.processes.push_back({pid, 0, "0.0", command, 9});
        return row;
    }

    void quit(const RunningItem& row, bool force = false) {
        fixture.store().quitApp(row, force);
        fixture.settle();
    }

    [[nodiscard]] const Alert& alert() const { return fixture.alerts.alerts.at(0); }

    [[nodiscard]] ActivityEntry entry() {
        const auto& history = fixture.store().history.get();
        return history.size() == 1 ? history[0] : ActivityEntry{};
    }

    void expectUntouched() {
        EXPECT_TRUE(fixture.applications.asked.empty());
        EXPECT_TRUE(fixture.applications.forced.empty());
        EXPECT_TRUE(fixture.processControl.requests.empty());
        EXPECT_TRUE(fixture.store().history.get().empty());
        EXPECT_EQ(fixture.store().message.get(), std::nullopt);
    }

    StoreFixture fixture;
};

}  // namespace

TEST_F(WorkspaceStoreQuit, anApplicationIsAskedForBeforeItQuits) {
    quit(startApp(200, "Safari"));
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(alert().style, AlertStyle::informational);
    EXPECT_EQ(alert().symbol, "power");
    EXPECT_EQ(alert().messageText, "Quit Safari?");
    EXPECT_EQ(alert().informativeText(), quitText);
    EXPECT_EQ(alert().buttons, (std::vector<std::string>{"Quit", "Cancel"}));
}

TEST_F(WorkspaceStoreQuit, forceIsAskedForAsAWarning) {
    quit(startApp(200, "Safari"), true);
    EXPECT_EQ(alert().style, AlertStyle::warning);
    EXPECT_EQ(alert().symbol, "exclamationmark.triangle");
    EXPECT_EQ(alert().messageText, "Force quit Safari?");
    EXPECT_EQ(alert().informativeText(), "Unsaved work can be lost. Use this only when the app won't quit normally.");
    EXPECT_EQ(alert().buttons, (std::vector<std::string>{"Force Quit", "Cancel"}));
}

TEST_F(WorkspaceStoreQuit, everyPortOfTheProcessIsNamed) {
    auto row = startTool(300);
    row.listeners = {"*:3000", "*:9229"};
    quit(row);
    EXPECT_EQ(alert().style, AlertStyle::warning);
    EXPECT_EQ(alert().symbol, "stop.circle");
    EXPECT_EQ(alert().messageText, "Quit node?");
    EXPECT_EQ(alert().text, std::string(quitText) +
                                "\n\nListening on: *:3000, *:9229. This stops the entire process, including its other "
                                "work and connections.");
}

TEST_F(WorkspaceStoreQuit, theQuestionTellsWhereAndHowLongTheProcessRuns) {
    fixture.processControl.detailsByPid[300] = {"/home/anna/shop", 3 * 3600 + 12 * 60};
    auto row = startTool(300);
    row.listeners = {"*:3000"};
    quit(row, true);
    EXPECT_EQ(alert().text,
              "Unsaved work can be lost. Use this only when the app won't quit normally.\n\nListening on: *:3000. This "
              "stops the entire process, including its other work and connections.\n\nPID 300\nWorking folder: "
              "~/shop\nRunning for 3 h 12 min");
}

TEST_F(WorkspaceStoreQuit, anApplicationsFolderAndTimeAreToldToo) {
    fixture.processControl.detailsByPid[200] = {"/srv/a\nb", 45};
    quit(startApp(200, "Safari"));
    EXPECT_EQ(alert().text, std::string(quitText) + "\n\nPID 200\nWorking folder: /srv/a␊b\nRunning for 45 s");
}

TEST_F(WorkspaceStoreQuit, whatTheSystemDoesNotTellIsLeftOut) {
    fixture.alerts.answer = 1;
    fixture.processControl.detailsByPid[300] = {"", 45};
    fixture.processControl.detailsByPid[301] = {"/home/anna", std::nullopt};
    fixture.processControl.detailsByPid[302] = {"", std::nullopt};
    for (const std::int32_t pid : {300, 301, 302}) {
        quit(startTool(pid));
    }
    EXPECT_EQ(fixture.alerts.alerts.at(0).text, std::string(quitText) + "\n\nPID 300\nRunning for 45 s");
    EXPECT_EQ(fixture.alerts.alerts.at(1).text, std::string(quitText) + "\n\nPID 301\nWorking folder: ~");
    EXPECT_EQ(fixture.alerts.alerts.at(2).text, std::string(quitText) + "\n\nPID 302");
}

TEST_F(WorkspaceStoreQuit, aHostileNameNeitherBreaksNorFloodsTheQuestion) {
    quit(startApp(200, "Mail\n\nListening on: nothing\u202E" + std::string(10'000, 'x')));
    EXPECT_TRUE(alert().messageText.starts_with("Quit Mail␊␊Listening on: nothing�xxx"));
    EXPECT_TRUE(alert().messageText.ends_with("xxx?"));
    EXPECT_EQ(characterCount(alert().messageText), 206U);
    EXPECT_EQ(characterCount(entry().title), 216U);
}

TEST_F(WorkspaceStoreQuit, anythingButTheFirstButtonEndsNothing) {
    fixture.alerts.answer = 1;
    quit(startApp(200, "Safari"));
    quit(startTool(300), true);
    EXPECT_EQ(fixture.alerts.alerts.size(), 2U);
    expectUntouched();
    EXPECT_EQ(fixture.processes.reads, 0);
}

TEST_F(WorkspaceStoreQuit, anAcceptedQuitIsRecordedAndListedASecondLater) {
    quit(startApp(200, "Safari"));
    EXPECT_EQ(fixture.applications.asked, std::vector<std::int32_t>{200});
    EXPECT_TRUE(fixture.applications.forced.empty());
    EXPECT_EQ(entry().title, "Quit requested: Safari");
    EXPECT_EQ(entry().detail, "The app received the request. Refresh to see whether it has exited.");
    EXPECT_FALSE(entry().failed);
    EXPECT_EQ(entry().date, fixture.clock.wall);
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
    fixture.mainQueue.advance(std::chrono::milliseconds{999});
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 0);
    fixture.mainQueue.advance(std::chrono::milliseconds{1});
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 1);
}

TEST_F(WorkspaceStoreQuit, anAcceptedForceQuitIsRecorded) {
    quit(startApp(200, "Safari"), true);
    EXPECT_EQ(fixture.applications.forced, std::vector<std::int32_t>{200});
    EXPECT_TRUE(fixture.applications.asked.empty());
    EXPECT_EQ(entry().title, "Force quit requested: Safari");
    EXPECT_EQ(entry().detail, "The app received the request. Refresh to see whether it has exited.");
    EXPECT_FALSE(entry().failed);
}

TEST_F(WorkspaceStoreQuit, aDeclinedRequestIsRecordedAsFailedAndNeverEscalated) {
    fixture.applications.declining = {200};
    quit(startApp(200, "Safari"));
    EXPECT_EQ(entry().title, "Quit requested: Safari");
    EXPECT_EQ(entry().detail, "The request was declined. Save your work and try quitting the app yourself.");
    EXPECT_TRUE(entry().failed);
    fixture.mainQueue.advance(std::chrono::minutes{5});
    fixture.settle();
    EXPECT_EQ(fixture.applications.asked.size(), 1U);
    EXPECT_TRUE(fixture.applications.forced.empty());
    EXPECT_TRUE(fixture.processControl.requests.empty());
}

TEST_F(WorkspaceStoreQuit, anApplicationThatEndedWhileTheQuestionWasOpenIsOnlyListedAnew) {
    const auto row = startApp(200, "Safari");
    fixture.alerts.whileOpen = [&] { fixture.applications.end(200); };
    quit(row);
    expectUntouched();
    EXPECT_EQ(fixture.processes.reads, 1);
}

TEST_F(WorkspaceStoreQuit, anotherApplicationUnderTheSameNumberIsNotAsked) {
    const auto row = startApp(200, "Safari");
    fixture.alerts.whileOpen = [&] {
        fixture.applications.end(200);
        fixture.applications.start(200, "Safari");
    };
    quit(row, true);
    expectUntouched();
}

TEST_F(WorkspaceStoreQuit, aProtectedRowIsNeitherAskedForNorChanged) {
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"Safari", "node"};
    quit(startApp(200, "Safari"));
    quit(startApp(201, "Docker Desktop"), true);
    quit(startTool(300));
    quit(startTool(301, "/usr/bin/dockerd"));
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    expectUntouched();
    EXPECT_EQ(fixture.processes.reads, 0);
}

TEST_F(WorkspaceStoreQuit, protectionGivenWhileTheQuestionIsOpenHolds) {
    const auto app = startApp(200, "Safari");
    const auto tool = startTool(300);
    fixture.alerts.whileOpen = [&] { fixture.store().toggleProtection(app); };
    quit(app);
    fixture.alerts.whileOpen = [&] { fixture.store().toggleProtection(tool); };
    quit(tool);
    EXPECT_EQ(fixture.alerts.alerts.size(), 2U);
    expectUntouched();
}

TEST_F(WorkspaceStoreQuit, protectionGivenWhileTheStopWaitsHolds) {
    const auto row = startTool(300);
    fixture.store().quitApp(row, false);
    fixture.store().toggleProtection(row);
    fixture.settle();
    EXPECT_TRUE(fixture.processControl.requests.empty());
    EXPECT_TRUE(entry().failed);
}

TEST_F(WorkspaceStoreQuit, aProtectedApplicationWithoutAWindowIsNeitherAskedForNorStopped) {
    const auto row = startTool(300, "/opt/editor-bin");
    fixture.applications.programNames["/opt/editor-bin"] = {"My Editor"};
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"My Editor"};
    quit(row);
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    expectUntouched();
}

TEST_F(WorkspaceStoreQuit, protectionOfAnApplicationWithoutAWindowHoldsWhileTheStopWaits) {
    const auto row = startTool(300, "/opt/editor-bin");
    fixture.applications.programNames["/opt/editor-bin"] = {"Editor", "My Editor"};
    const auto app = startApp(200, "My Editor");
    fixture.alerts.whileOpen = [&] { fixture.store().toggleProtection(app); };
    quit(row);
    fixture.alerts.whileOpen = {};
    expectUntouched();
    fixture.store().toggleProtection(app);
    fixture.store().quitApp(row, false);
    fixture.store().toggleProtection(app);
    fixture.settle();
    EXPECT_TRUE(fixture.processControl.requests.empty());
    EXPECT_TRUE(entry().failed);
}

TEST_F(WorkspaceStoreQuit, aKeptNameWithCapitalsHoldsWhileTheStopWaits) {
    const auto row = startTool(300, "/opt/Node");
    fixture.store().quitApp(row, false);
    fixture.store().toggleProtection(row);
    fixture.settle();
    EXPECT_TRUE(fixture.processControl.requests.empty());
}

TEST_F(WorkspaceStoreQuit, theProgramItselfIsNeitherAskedForNorEnded) {
    auto row = startTool(StoreFixture::ownProcess);
    quit(row);
    quit(row, true);
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    expectUntouched();
}

TEST_F(WorkspaceStoreQuit, aDeveloperProcessGetsATerminationRequest) {
    quit(startTool(300));
    EXPECT_EQ(fixture.processControl.requests, (std::vector<ProcessReference>{{300, "/usr/bin/node", 9}}));
    EXPECT_EQ(entry().title, "Stop requested: node");
    EXPECT_EQ(entry().detail, "Sent a termination request to PID 300.");
    EXPECT_FALSE(entry().failed);
    EXPECT_EQ(fixture.processes.reads, 1);
    fixture.mainQueue.advance(std::chrono::seconds{1});
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 2);
}

TEST_F(WorkspaceStoreQuit, aForcedStopIsNoStrongerThanAnother) {
    quit(startTool(300), true);
    EXPECT_EQ(alert().messageText, "Force quit node?");
    EXPECT_EQ(fixture.processControl.requests.size(), 1U);
    EXPECT_TRUE(fixture.applications.forced.empty());
    EXPECT_EQ(entry().title, "Stop requested: node");
}

TEST_F(WorkspaceStoreQuit, theStopRunsOnTheActionQueue) {
    fixture.store().quitApp(startTool(300), false);
    EXPECT_TRUE(fixture.processControl.requests.empty());
    ASSERT_TRUE(fixture.actions().runOne());
    EXPECT_EQ(fixture.processControl.requests.size(), 1U);
    EXPECT_TRUE(fixture.store().history.get().empty());
    fixture.mainQueue.runPosted();
    EXPECT_EQ(fixture.store().history.get().size(), 1U);
}

TEST_F(WorkspaceStoreQuit, anotherCommandUnderTheSameNumberIsNotSignalled) {
    const auto row = startTool(300);
    fixture.processControl.running = {{300, "/usr/bin/other", 9}};
    quit(row);
    EXPECT_EQ(entry().title, "Stop requested: node");
    EXPECT_EQ(entry().detail, "Process changed or couldn't be stopped. Rescan before retrying.");
    EXPECT_TRUE(entry().failed);
    EXPECT_EQ(fixture.processes.reads, 1);
}

TEST_F(WorkspaceStoreQuit, numbersBelowTwoNeverReachTheProcessControl) {
    int asked = 0;
    for (const std::int32_t pid : {1, 0, -1, std::numeric_limits<std::int32_t>::min()}) {
        fixture.processControl.detailsByPid[pid] = {"/", 1};
        quit(startTool(pid), ++asked % 2 == 0);
    }
    EXPECT_TRUE(fixture.processControl.requests.empty());
    ASSERT_EQ(fixture.store().history.get().size(), 4U);
    for (const auto& entry : fixture.store().history.get()) {
        EXPECT_TRUE(entry.failed);
        EXPECT_EQ(entry.detail, "Process changed or couldn't be stopped. Rescan before retrying.");
    }
    EXPECT_EQ(alert().text, quitText);
}

TEST_F(WorkspaceStoreQuit, theRowMayVanishFromTheListWhileTheQuestionIsOpen) {
    startTool(300);
    fixture.store().refreshProcesses();
    fixture.settle();
    ASSERT_EQ(fixture.store().running.get().size(), 1U);
    fixture.alerts.whileOpen = [&] {
        fixture.processes.now = {};
        fixture.store().refreshProcesses();
        fixture.settle();
    };
    quit(fixture.store().running.get().front());
    EXPECT_EQ(fixture.processControl.requests, (std::vector<ProcessReference>{{300, "/usr/bin/node", 9}}));
    EXPECT_EQ(entry().title, "Stop requested: node");
}

TEST_F(WorkspaceStoreQuit, whileOneQuestionIsOpenNoOtherIsAsked) {
    const auto app = startApp(200, "Safari");
    const auto other = startApp(201, "Mail");
    const auto tool = startTool(300);
    fixture.alerts.answer = 1;
    fixture.alerts.whileOpen = [&] {
        EXPECT_TRUE(fixture.store().isConfirming());
        fixture.store().quitApp(other, true);
        fixture.store().quitApp(tool, false);
        fixture.store().quitOtherApps();
        fixture.store().purgeMemoryWithReview();
        fixture.store().clean();
        fixture.store().scan();
        EXPECT_TRUE(fixture.store().isConfirming());
    };
    quit(app);
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_FALSE(fixture.store().isConfirming());
    EXPECT_FALSE(fixture.store().isScanning.get());
    EXPECT_FALSE(fixture.store().isPurging.get());
    expectUntouched();
}

TEST_F(WorkspaceStoreQuit, aScanDoesNotHinderQuitting) {
    const auto row = startApp(200, "Safari");
    fixture.store().scan();
    fixture.store().quitApp(row, false);
    EXPECT_EQ(fixture.applications.asked.size(), 1U);
}

TEST_F(WorkspaceStoreQuit, aReviewThatBecomesReadyMeanwhileWaitsForTheAnswer) {
    const auto row = startApp(200, "Safari");
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.store().quickClean(false);
    fixture.alerts.answer = 1;
    fixture.alerts.whileOpen = [&] {
        fixture.settle();
        EXPECT_FALSE(fixture.store().isScanning.get());
        EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
        EXPECT_TRUE(fixture.store().isConfirming());
        fixture.alerts.whileOpen = {};
    };
    quit(row);
    ASSERT_EQ(fixture.alerts.alerts.size(), 2U);
    EXPECT_EQ(fixture.alerts.alerts[1].messageText, "Move 1 item to Trash?");
}

TEST_F(WorkspaceStoreQuit, theStopThatEndsWithTheStoreIsStillLogged) {
    fixture.store().quitApp(startTool(300), false);
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.endStore();
    fixture.mainQueue.runPosted();
    const auto logged = ActivityLog::load(fixture.fileStore, fixture.home);
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_EQ(logged[0].title, "Stop requested: node");
    EXPECT_FALSE(logged[0].failed);
}

TEST_F(WorkspaceStoreQuit, aStopThatNeverRanIsNotLogged) {
    fixture.store().quitApp(startTool(300), false);
    fixture.endStore();
    EXPECT_TRUE(ActivityLog::load(fixture.fileStore, fixture.home).empty());
    EXPECT_EQ(fixture.fileStore.replaceAttempts, 0);
}

TEST_F(WorkspaceStoreQuit, theListingASecondLaterEndsWithTheStore) {
    quit(startApp(200, "Safari"));
    fixture.endStore();
    fixture.mainQueue.advance(std::chrono::seconds{2});
    EXPECT_EQ(fixture.applications.reads, 0);
    EXPECT_EQ(fixture.mainQueue.timers(), 0U);
}

}  // namespace kestrune
