#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

constexpr const char* notSaved = "This setting works for this session, but couldn't be saved.";

class WorkspaceStoreProtection : public testing::Test {
protected:
    [[nodiscard]] static RunningItem row(const std::string& name, const std::string& executable = "/usr/bin/app") {
        RunningItem made;
        made.id = 200;
        made.name = name;
        made.executable = executable;
        return made;
    }

    [[nodiscard]] const std::set<std::string>& protectedApps() { return fixture.store().protectedApps.get(); }

    StoreFixture fixture;
};

using Names = std::vector<std::string>;
using NameSet = std::set<std::string>;

}  // namespace

TEST_F(WorkspaceStoreProtection, aRowIsProtectedByItsNameOrItsExecutable) {
    const auto& store = fixture.store();
    EXPECT_TRUE(store.isProtected(row("Docker Desktop")));
    EXPECT_TRUE(store.isProtected(row("Containers", "/usr/bin/dockerd")));
    EXPECT_TRUE(store.isProtected(row("FINDER")));
    EXPECT_FALSE(store.isProtected(row("Safari")));
}

TEST_F(WorkspaceStoreProtection, aKeptNameWithCapitalsIsSafeFromEveryAction) {
    fixture.store().toggleProtection(row("Xcode"));
    const auto& app = fixture.applications.start(200, "Xcode");
    auto item = row("Xcode");
    item.app = app;
    EXPECT_TRUE(fixture.store().isProtected(item));
    EXPECT_FALSE(fixture.store().canQuitApplication("Xcode", 200, true, 1));
    fixture.store().quitApp(item, true);
    fixture.store().quitOtherApps();
    EXPECT_TRUE(fixture.applications.asked.empty());
    EXPECT_TRUE(fixture.applications.forced.empty());
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "No other apps to quit");
}

TEST_F(WorkspaceStoreProtection, onlyTheVeryNameIsKept) {
    fixture.store().toggleProtection(row("Xcode"));
    EXPECT_FALSE(fixture.store().isProtected(row("xcode")));
    EXPECT_FALSE(fixture.store().isProtected(row("Xcode Helper")));
    EXPECT_FALSE(fixture.store().isProtected(row("Instruments", "/opt/Xcode")));
}

TEST_F(WorkspaceStoreProtection, aKeptNameInSmallLettersAlsoCountsAsExecutable) {
    fixture.store().toggleProtection(row("node"));
    EXPECT_TRUE(fixture.store().isProtected(row("Server", "/usr/bin/node")));
    EXPECT_TRUE(fixture.store().isProtected(row("NODE")));
}

TEST_F(WorkspaceStoreProtection, aProcessWithoutAWindowIsProtectedByTheVeryNameOfItsProgram) {
    fixture.applications.programNames["/usr/bin/app"] = {"Editor", "My Editor"};
    fixture.store().toggleProtection(row("my editor"));
    EXPECT_FALSE(fixture.store().isProtected(row("app")));
    fixture.store().toggleProtection(row("My Editor"));
    EXPECT_TRUE(fixture.store().isProtected(row("app")));
    EXPECT_FALSE(fixture.store().isProtected(row("app", "/usr/bin/other")));
    auto shown = row("Other Name");
    shown.app = fixture.applications.start(200, "Other Name");
    EXPECT_FALSE(fixture.store().isProtected(shown));
}

TEST_F(WorkspaceStoreProtection, protectingIsSavedAtOnce) {
    fixture.store().toggleProtection(row("Safari"));
    EXPECT_EQ(protectedApps(), NameSet{"Safari"});
    EXPECT_EQ(fixture.preferences.texts("alwaysKeepApps"), Names{"Safari"});
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
}

TEST_F(WorkspaceStoreProtection, togglingTwiceLeavesEverythingAsItWas) {
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"Mail", "Xcode"};
    fixture.store().toggleProtection(row("Safari"));
    fixture.store().toggleProtection(row("Safari"));
    EXPECT_EQ(protectedApps(), (NameSet{"Mail", "Xcode"}));
    EXPECT_EQ(fixture.engine.alwaysKeepApps(), (Names{"Mail", "Xcode"}));
}

TEST_F(WorkspaceStoreProtection, removingTakesTheNameAway) {
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"Mail", "Xcode"};
    fixture.store().removeProtection("Mail");
    EXPECT_EQ(protectedApps(), NameSet{"Xcode"});
    EXPECT_EQ(fixture.engine.alwaysKeepApps(), Names{"Xcode"});
}

TEST_F(WorkspaceStoreProtection, removingWhatIsNotThereSavesNothing) {
    fixture.store().removeProtection("Mail");
    EXPECT_TRUE(fixture.preferences.keysSet.empty());
}

TEST_F(WorkspaceStoreProtection, aNameMayBeTakenFromTheSetItself) {
    fixture.preferences.values["alwaysKeepApps"] = Preferences::Texts{"A name that is too long for the string itself"};
    fixture.store().removeProtection(*protectedApps().begin());
    EXPECT_TRUE(protectedApps().empty());
}

TEST_F(WorkspaceStoreProtection, protectionThatCannotBeSavedHoldsForTheSessionAndSaysSo) {
    fixture.preferences.failsSaving = true;
    fixture.store().toggleProtection(row("Safari"));
    EXPECT_TRUE(fixture.store().isProtected(row("Safari")));
    EXPECT_EQ(fixture.store().message.get(), notSaved);
}

TEST_F(WorkspaceStoreProtection, theApplicationInFrontIsProtected) {
    fixture.applications.start(200, "Safari");
    fixture.applications.frontmost = 200;
    fixture.store().protectCurrentApp();
    EXPECT_EQ(protectedApps(), NameSet{"Safari"});
    EXPECT_EQ(fixture.engine.alwaysKeepApps(), Names{"Safari"});
    EXPECT_EQ(fixture.notificationCenter.delivered,
              (std::vector<FakeNotificationCenter::Delivered>{
                  {"Kestrune", "Protected Safari. Kestrune will keep it running."}}));
}

TEST_F(WorkspaceStoreProtection, withoutACurrentApplicationNothingIsProtected) {
    fixture.store().protectCurrentApp();
    fixture.applications.start(200, "");
    fixture.applications.frontmost = 200;
    fixture.store().protectCurrentApp();
    EXPECT_TRUE(protectedApps().empty());
    EXPECT_TRUE(fixture.preferences.keysSet.empty());
    EXPECT_TRUE(fixture.notificationCenter.delivered.empty());
}

TEST_F(WorkspaceStoreProtection, protectingTheCurrentApplicationTwiceChangesNothingMore) {
    fixture.applications.start(200, "Safari");
    fixture.applications.frontmost = 200;
    fixture.store().protectCurrentApp();
    fixture.store().protectCurrentApp();
    EXPECT_EQ(fixture.engine.alwaysKeepApps(), Names{"Safari"});
}

TEST_F(WorkspaceStoreProtection, theRowsStayAsTheyAre) {
    fixture.processes.now.processes = {{300, 0, "0.0", "/usr/bin/node", 1}};
    fixture.store().refreshProcesses();
    fixture.settle();
    const auto before = fixture.store().running.get();
    fixture.store().toggleProtection(before.at(0));
    EXPECT_EQ(fixture.store().running.get(), before);
    EXPECT_EQ(fixture.processes.reads, 1);
}

TEST_F(WorkspaceStoreProtection, whetherTheDesktopTellsTheFrontIsTheSystemsAnswer) {
    EXPECT_TRUE(fixture.store().tellsFrontmost());
    fixture.applications.frontmostIsTold = false;
    EXPECT_FALSE(fixture.store().tellsFrontmost());
}

}  // namespace kestrune
