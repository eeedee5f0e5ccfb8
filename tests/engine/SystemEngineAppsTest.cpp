#include "tests/engine/EngineFixture.h"

namespace kestrune {
namespace {

using SystemEngineAppsTest = EngineFixture;

std::optional<std::string> nameOf(const std::optional<RunningApplication>& application) {
    return application ? std::optional(application->localizedName) : std::nullopt;
}

TEST_F(SystemEngineAppsTest, alwaysKeptAppsAreEmptyUntilTheUserSavesSome) {
    EXPECT_TRUE(engine.alwaysKeepApps().empty());
    EXPECT_TRUE(engine.setAlwaysKeepApps({"xcode", "Safari"}));
    EXPECT_EQ(engine.alwaysKeepApps(), (Texts{"xcode", "Safari"}));
    EXPECT_EQ(preferences.texts("alwaysKeepApps"), (Texts{"xcode", "Safari"}));
    EXPECT_TRUE(engine.setAlwaysKeepApps({}));
    EXPECT_EQ(preferences.texts("alwaysKeepApps"), Texts{});
}

TEST_F(SystemEngineAppsTest, listThatCannotBeSavedIsToldAndHoldsForTheSession) {
    preferences.failsSaving = true;
    EXPECT_FALSE(engine.setAlwaysKeepApps({"safari"}));
    EXPECT_TRUE(engine.isProtected("Safari"));
}

TEST_F(SystemEngineAppsTest, protectionFollowsWhatTheUserKeepsNow) {
    EXPECT_FALSE(engine.isProtected("Safari"));
    engine.setAlwaysKeepApps({"safari"});
    EXPECT_TRUE(engine.isProtected("Safari"));
    engine.setAlwaysKeepApps({"Safari"});
    EXPECT_FALSE(engine.isProtected("Safari"));
    EXPECT_TRUE(engine.isProtected("/usr/bin/dockerd"));
}

TEST_F(SystemEngineAppsTest, theListIsReadOnceForAnyNumberOfNames) {
    engine.setAlwaysKeepApps({"safari"});
    const int before = preferences.textQuestions;
    for (int i = 0; i < 100; ++i) {
        EXPECT_TRUE(engine.isProtected("Safari"));
        EXPECT_FALSE(engine.isProtected("app" + std::to_string(i)));
    }
    EXPECT_EQ(preferences.textQuestions, before + 1);
}

TEST_F(SystemEngineAppsTest, aListThatChangedOtherwiseHoldsAtOnce) {
    EXPECT_FALSE(engine.isProtected("Safari"));
    preferences.values["alwaysKeepApps"] = Texts{"safari"};
    EXPECT_TRUE(engine.isProtected("Safari"));
    preferences.values.clear();
    EXPECT_FALSE(engine.isProtected("Safari"));
}

TEST_F(SystemEngineAppsTest, applicationInFrontIsTheCurrentOne) {
    applications.start(10, "Editor");
    applications.frontmost = 10;
    EXPECT_EQ(nameOf(engine.currentExternalApp()), "Editor");
}

TEST_F(SystemEngineAppsTest, withThisProgramInFrontTheLastActivatedOneIsCurrent) {
    applications.start(10, "Editor");
    applications.start(11, "Browser");
    applications.start(thisProgram, "Kestrune");
    applications.activate(10);
    applications.activate(11);
    applications.activate(thisProgram);
    EXPECT_EQ(nameOf(engine.currentExternalApp()), "Browser");
}

TEST_F(SystemEngineAppsTest, withThisProgramInFrontAndNoOtherEverActivatedThereIsNoCurrentOne) {
    applications.start(10, "Editor");
    applications.start(thisProgram, "Kestrune");
    applications.activate(thisProgram);
    EXPECT_EQ(engine.currentExternalApp(), std::nullopt);
}

TEST_F(SystemEngineAppsTest, withNothingInFrontTheLastActivatedOneIsCurrent) {
    applications.start(10, "Editor");
    applications.activate(10);
    applications.frontmost = 0;
    EXPECT_EQ(nameOf(engine.currentExternalApp()), "Editor");
}

TEST_F(SystemEngineAppsTest, lastActivatedOneThatQuitIsNotCurrent) {
    applications.start(10, "Editor");
    applications.activate(10);
    applications.frontmost = 0;
    applications.end(10);
    EXPECT_EQ(engine.currentExternalApp(), std::nullopt);
}

TEST_F(SystemEngineAppsTest, anotherProcessWithTheNumberOfTheLastActivatedOneIsNotCurrent) {
    applications.start(10, "Editor");
    applications.activate(10);
    applications.frontmost = 0;
    applications.end(10);
    applications.start(10, "Newcomer");
    EXPECT_EQ(engine.currentExternalApp(), std::nullopt);
}

TEST_F(SystemEngineAppsTest, activationsAfterTheEngineIsGoneDoNothing) {
    applications.start(10, "Editor");
    { const SystemEngine shortLived(parts); }
    applications.activate(10);
    applications.frontmost = 0;
    EXPECT_EQ(engine.currentExternalApp(), std::nullopt);
}

TEST_F(SystemEngineAppsTest, topProcessesAreTheLargestSoMany) {
    runner.answer("/bin/ps", {0, "%MEM COMM\n1.0 a\n3.0 c\n2.0 b\n"});
    EXPECT_EQ(engine.getTopProcesses(2), (std::vector<TopProcess>{{3.0, "c"}, {2.0, "b"}}));
    EXPECT_EQ(engine.getTopProcesses(9).size(), 3U);
    EXPECT_TRUE(engine.getTopProcesses(0).empty());
    EXPECT_EQ(runner.calls.front().arguments, (Texts{"-arc", "-eo", "%mem,comm"}));
}

TEST_F(SystemEngineAppsTest, malformedLineAmongTheTopProcessesCostsNoRow) {
    runner.answer("/bin/ps", {0, "%MEM COMM\n1.0 a\nbroken\n2.0 b\n3.0 c\n4.0 d\n5.0 e\n"});
    const std::vector<TopProcess> top = engine.getTopProcesses(5);
    ASSERT_EQ(top.size(), 5U);
    EXPECT_EQ(top.front(), (TopProcess{5.0, "e"}));
}

TEST_F(SystemEngineAppsTest, withoutTheToolThereAreNoTopProcesses) {
    EXPECT_TRUE(engine.getTopProcesses(5).empty());
}

}  // namespace
}  // namespace kestrune
