#include "tests/engine/EngineFixture.h"

namespace kestrune {
namespace {

class SystemEngineClosingTest : public EngineFixture {
protected:
    using Pids = std::vector<std::int32_t>;

    static constexpr const char* unsure =
        "Not sure which app to keep · click into the app you are using, then try again";
};

TEST_F(SystemEngineClosingTest, heavyAppsAreAskedInTheDesktopsOrderAndNamed) {
    applications.start(12, "Slack");
    applications.start(10, "Firefox Nightly", "org.mozilla.firefox");
    applications.start(11, "Editor");
    engine.killHeavyApps();
    EXPECT_EQ(applications.asked, (Pids{12, 10}));
    EXPECT_TRUE(applications.forced.empty());
    EXPECT_EQ(told(), Texts{"Killed: Slack, Firefox Nightly"});
}

TEST_F(SystemEngineClosingTest, heavyAppThatDeclinesIsNotNamed) {
    applications.start(10, "Slack");
    applications.start(11, "Zoom");
    applications.declining = {10};
    engine.killHeavyApps();
    EXPECT_EQ(applications.asked, (Pids{10, 11}));
    EXPECT_EQ(told(), Texts{"Killed: Zoom"});
    applications.declining = {10, 11};
    engine.killHeavyApps();
    EXPECT_EQ(told(), Texts{"No heavy apps running"});
}

TEST_F(SystemEngineClosingTest, dockerDesktopIsNotClosedAsAHeavyApp) {
    applications.start(10, "Docker Desktop", "com.docker.docker");
    engine.killHeavyApps();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_EQ(told(), Texts{"No heavy apps running"});
}

TEST_F(SystemEngineClosingTest, onlyRegularAppsThatAreAProcessAndNotThisProgramAreHeavy) {
    applications.start(10, "Slack").activationPolicy = ActivationPolicy::accessory;
    applications.start(0, "Zoom");
    applications.start(-1, "Figma");
    applications.start(thisProgram, "Terminal");
    engine.killHeavyApps();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_EQ(told(), Texts{"No heavy apps running"});
}

TEST_F(SystemEngineClosingTest, appWhoseExecutableIsProtectedIsSparedByEveryAction) {
    engine.setAlwaysKeepApps({"tool"});
    applications.start(10, "Slack").executable = "/opt/stats/stats";
    applications.start(11, "Zoom").executable = "/opt/Tool";
    applications.start(12, "Editor");
    applications.activate(12);
    engine.killHeavyApps();
    engine.keepFrontmostKillRest();
    EXPECT_TRUE(applications.asked.empty());
    engine.killEverything();
    EXPECT_EQ(applications.asked, Pids{12});
}

TEST_F(SystemEngineClosingTest, devServersAreReviewedAndNotStopped) {
    applications.start(10, "Terminal");
    engine.killDevServers();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_EQ(told(), Texts{"Review individual developer processes in Running Apps before stopping them."});
}

TEST_F(SystemEngineClosingTest, withOnlyTheFinderRunningItIsKept) {
    applications.start(10, "Finder");
    applications.start(thisProgram, "Kestrune");
    applications.activate(10);
    engine.keepFrontmostKillRest();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_EQ(told(), Texts{"No other apps to close · kept Finder"});
}

TEST_F(SystemEngineClosingTest, fromThisProgramsMenuTheAppBeforeItIsKept) {
    applications.start(10, "Editor");
    applications.start(11, "Browser");
    applications.start(thisProgram, "Kestrune");
    applications.activate(10);
    applications.activate(thisProgram);
    engine.keepFrontmostKillRest();
    EXPECT_EQ(applications.asked, Pids{11});
    EXPECT_EQ(told(), Texts{"Kept Editor · closed: Browser"});
}

TEST_F(SystemEngineClosingTest, closedAppsAreNamedInTextOrderWhetherTheyAccept) {
    applications.start(20, "zoo");
    applications.start(10, "Editor");
    applications.start(12, "Ärger");
    applications.start(11, "Browser");
    applications.start(13, "Browser");
    applications.frontmost = 10;
    applications.declining = {11};
    engine.keepFrontmostKillRest();
    EXPECT_EQ(applications.asked, (Pids{11, 12, 13, 20}));
    EXPECT_EQ(told(), Texts{"Kept Editor · closed: Browser, Browser, zoo, Ärger"});
}

TEST_F(SystemEngineClosingTest, protectedNamelessAndAgentAppsStayOpenBesideTheKeptOne) {
    applications.start(10, "Editor");
    applications.start(11, "");
    applications.start(12, "Finder");
    applications.start(13, "Agent").activationPolicy = ActivationPolicy::accessory;
    applications.start(0, "Zoom");
    applications.frontmost = 10;
    engine.keepFrontmostKillRest();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_EQ(told(), Texts{"No other apps to close · kept Editor"});
}

TEST_F(SystemEngineClosingTest, keptAppWithoutANameIsTheFrontmostApp) {
    applications.start(10, "");
    applications.start(11, "Browser");
    applications.frontmost = 10;
    engine.keepFrontmostKillRest();
    EXPECT_EQ(told(), Texts{"Kept frontmost app · closed: Browser"});
}

TEST_F(SystemEngineClosingTest, withoutAnAppToKeepNothingIsClosed) {
    applications.start(11, "Browser");
    engine.keepFrontmostKillRest();
    applications.start(thisProgram, "Kestrune");
    applications.frontmost = thisProgram;
    engine.keepFrontmostKillRest();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_EQ(told(), (Texts{unsure, unsure}));
}

TEST_F(SystemEngineClosingTest, appToKeepThatHasQuitClosesNothing) {
    applications.start(10, "Editor");
    applications.start(11, "Browser");
    applications.activate(10);
    applications.frontmost = 0;
    applications.end(10);
    engine.keepFrontmostKillRest();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_EQ(told(), Texts{unsure});
}

// The desktop still names an application whose process has just ended.
class StaleFront final : public RunningApplications {
public:
    explicit StaleFront(FakeRunningApplications& applications) : m_applications(applications) {}

    std::vector<RunningApplication> runningApplications() override { return m_applications.runningApplications(); }

    std::optional<RunningApplication> frontmostApplication() override { return stale; }

    std::optional<RunningApplication> application(std::int32_t pid) override {
        return vanished == pid ? std::nullopt : m_applications.application(pid);
    }

    ApplicationIcon iconOf(const RunningApplication& application) override {
        return m_applications.iconOf(application);
    }

    std::vector<std::string> namesOfProgram(const std::string& executable) override {
        return m_applications.namesOfProgram(executable);
    }

    bool tellsFrontmost() override { return true; }

    void observeActivation(ActivationHandler handler) override { m_applications.observeActivation(std::move(handler)); }

    bool isTerminated(const RunningApplication& application) override {
        return m_applications.isTerminated(application);
    }

    bool terminate(const RunningApplication& application) override { return m_applications.terminate(application); }

    bool forceTerminate(const RunningApplication& application) override {
        return m_applications.forceTerminate(application);
    }

    std::optional<RunningApplication> stale;
    std::int32_t vanished = 0;  ///< listed, but gone when it is looked up

private:
    FakeRunningApplications& m_applications;
};

TEST_F(SystemEngineClosingTest, appInFrontThatHasAlreadyTerminatedIsNotKept) {
    StaleFront stale(applications);
    SystemEngine engineWithStaleFront({host, power, volumes, runner, tools, preferences, center, clock, mainQueue,
                                       stale, trash, loginItem, "/home/anna", thisProgram});
    applications.start(10, "Editor");
    applications.start(11, "Browser");
    stale.stale = applications.application(10);
    applications.end(10);
    engineWithStaleFront.keepFrontmostKillRest();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_EQ(told(), Texts{unsure});
}

TEST_F(SystemEngineClosingTest, appThatVanishesInBetweenIsSkippedSilently) {
    StaleFront stale(applications);
    SystemEngine engineWithStaleFront({host, power, volumes, runner, tools, preferences, center, clock, mainQueue,
                                       stale, trash, loginItem, "/home/anna", thisProgram});
    applications.start(10, "Editor");
    applications.start(11, "Browser");
    applications.start(12, "Mail");
    stale.stale = applications.application(10);
    stale.vanished = 11;
    engineWithStaleFront.keepFrontmostKillRest();
    EXPECT_EQ(applications.asked, Pids{12});
    EXPECT_EQ(told(), Texts{"Kept Editor · closed: Browser, Mail"});
}

TEST_F(SystemEngineClosingTest, killingEverythingSaysNothingAndSparesTheProtected) {
    applications.start(10, "Editor");
    applications.start(11, "Finder");
    applications.start(12, "");
    applications.start(13, "Agent").activationPolicy = ActivationPolicy::accessory;
    applications.start(thisProgram, "Another Name");
    engine.killEverything();
    EXPECT_EQ(applications.asked, (Pids{10, 12}));
    EXPECT_TRUE(applications.forced.empty());
    EXPECT_TRUE(told().empty());
}

TEST_F(SystemEngineClosingTest, appInTheAlwaysKeepListIsNeverClosedByAnyAction) {
    for (const std::string name : {"Slack", "slack"}) {
        engine.setAlwaysKeepApps({name});
        applications.applications.clear();
        applications.start(10, "Editor");
        applications.start(11, "Slack", "com.tinyspeck.slackmacgap");
        applications.frontmost = 10;
        engine.killHeavyApps();
        engine.keepFrontmostKillRest();
        applications.end(10);
        engine.killEverything();
        EXPECT_TRUE(applications.asked.empty()) << name;
        EXPECT_EQ(told(), (Texts{"No heavy apps running", "No other apps to close · kept Editor"})) << name;
    }
}

TEST_F(SystemEngineClosingTest, memoryIsReportedAndNothingFreed) {
    host.memoryPages = MemoryPages{
        .free = 1, .active = 3, .wired = 0, .inactive = 0, .speculative = 0, .compressed = 0, .pageSize = 1U << 20U};
    applications.start(10, "Slack");
    engine.autoFreeMemory();
    host.memoryPages.reset();
    engine.autoFreeMemory();
    EXPECT_TRUE(applications.asked.empty());
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_EQ(told(), (Texts{"Memory usage is 75%. Review Running Apps before choosing what to close.",
                             "Memory usage is 0%. Review Running Apps before choosing what to close."}));
}

TEST_F(SystemEngineClosingTest, deepCleanPointsToStorageAndDeletesNothing) {
    engine.deepClean();
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_TRUE(trash.moved.empty());
    EXPECT_EQ(told(), Texts{"Open Storage to review and move selected caches to Trash."});
}

}  // namespace
}  // namespace kestrune
