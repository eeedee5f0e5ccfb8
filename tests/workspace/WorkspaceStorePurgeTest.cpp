#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"
#include "workspace/ActivityLog.h"

namespace kestrune {

namespace {

constexpr const char* purgeTool = "/usr/sbin/purge";

class WorkspaceStorePurge : public testing::Test {
protected:
    void purge() {
        fixture.store().purgeMemoryWithReview();
        fixture.settle();
    }

    void expectOutcome(const std::string& title, const std::string& detail, const std::string& summary, bool failed) {
        ASSERT_EQ(fixture.store().history.get().size(), 1U);
        const auto& entry = fixture.store().history.get()[0];
        EXPECT_EQ(entry.title, title);
        EXPECT_EQ(entry.detail, detail);
        EXPECT_EQ(entry.failed, failed);
        EXPECT_EQ(fixture.store().message.get(), summary);
        EXPECT_EQ(fixture.notificationCenter.delivered,
                  (std::vector<FakeNotificationCenter::Delivered>{{"Kestrune", summary}}));
        EXPECT_FALSE(fixture.store().isPurging.get());
    }

    StoreFixture fixture;
};

}  // namespace

TEST_F(WorkspaceStorePurge, theQuestionSaysWhatItDoes) {
    fixture.alerts.answer = 1;
    purge();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    const Alert& alert = fixture.alerts.alerts[0];
    EXPECT_EQ(alert.style, AlertStyle::informational);
    EXPECT_EQ(alert.messageText, "Clear cached memory?");
    EXPECT_EQ(alert.informativeText(),
              "macOS may ask for an administrator password. This does not close apps or delete files. macOS will "
              "refill useful caches as needed, so the benefit may be temporary.");
    EXPECT_EQ(alert.buttons, (std::vector<std::string>{"Continue", "Cancel"}));
}

TEST_F(WorkspaceStorePurge, anythingButTheFirstButtonRunsNothing) {
    fixture.alerts.answer = 1;
    purge();
    EXPECT_TRUE(fixture.processRunner.calls.empty());
    EXPECT_FALSE(fixture.store().isPurging.get());
    EXPECT_TRUE(fixture.store().history.get().empty());
}

TEST_F(WorkspaceStorePurge, itRunsTheToolAloneOnTheActionQueue) {
    fixture.processRunner.answer(purgeTool, {0, ""});
    fixture.store().purgeMemoryWithReview();
    EXPECT_TRUE(fixture.store().isPurging.get());
    EXPECT_TRUE(fixture.processRunner.calls.empty());
    ASSERT_TRUE(fixture.actions().runOne());
    ASSERT_EQ(fixture.processRunner.calls.size(), 1U);
    EXPECT_EQ(fixture.processRunner.calls[0].executable, purgeTool);
    EXPECT_TRUE(fixture.processRunner.calls[0].arguments.empty());
    EXPECT_TRUE(fixture.store().isPurging.get());
    fixture.mainQueue.runPosted();
    EXPECT_FALSE(fixture.store().isPurging.get());
}

TEST_F(WorkspaceStorePurge, successIsRecordedShownAndNotified) {
    fixture.processRunner.answer(purgeTool, {0, ""});
    purge();
    expectOutcome("Inactive memory cleared", "macOS completed the purge command; memory will be reused as needed.",
                  "Memory action completed.", false);
}

TEST_F(WorkspaceStorePurge, withAdministratorRightsItSucceedsToo) {
    fixture.processRunner.answer(purgeTool, {1, ""});
    const ToolCommand prompt = fixture.systemTools.withAdministratorRights({purgeTool, {}});
    fixture.processRunner.answer(prompt.executable, {0, ""});
    purge();
    ASSERT_EQ(fixture.processRunner.calls.size(), 2U);
    EXPECT_EQ(fixture.processRunner.calls[1].executable, prompt.executable);
    EXPECT_EQ(fixture.processRunner.calls[1].arguments, prompt.arguments);
    expectOutcome("Inactive memory cleared", "macOS completed the purge command; memory will be reused as needed.",
                  "Memory action completed.", false);
}

TEST_F(WorkspaceStorePurge, aCancelledPasswordIsAFailure) {
    fixture.processRunner.answer(purgeTool, {1, ""});
    fixture.processRunner.answer(fixture.systemTools.withAdministratorRights({purgeTool, {}}).executable, {126, ""});
    purge();
    expectOutcome("Memory action didn't complete", "Authorization was cancelled or the command failed.",
                  "Memory action cancelled or unavailable.", true);
}

TEST_F(WorkspaceStorePurge, duringACleanupItDoesNothing) {
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.scan();
    fixture.store().selectRecommended();
    fixture.store().clean();
    ASSERT_TRUE(fixture.store().isCleaning.get());
    fixture.store().purgeMemoryWithReview();
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_FALSE(fixture.store().isPurging.get());
}

TEST_F(WorkspaceStorePurge, whileOneRunsNoOtherStarts) {
    fixture.store().purgeMemoryWithReview();
    fixture.store().purgeMemoryWithReview();
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.actions().waiting(), 1U);
    fixture.settle();
    fixture.store().purgeMemoryWithReview();
    EXPECT_EQ(fixture.alerts.alerts.size(), 2U);
}

TEST_F(WorkspaceStorePurge, whileItsQuestionIsOpenNoOtherIsAsked) {
    fixture.applications.start(200, "Safari");
    fixture.alerts.answer = 1;
    fixture.alerts.whileOpen = [&] {
        fixture.store().purgeMemoryWithReview();
        fixture.store().quitOtherApps();
    };
    purge();
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_FALSE(fixture.store().isPurging.get());
}

TEST_F(WorkspaceStorePurge, theOutcomeThatComesWithTheStoresEndIsStillLogged) {
    fixture.store().purgeMemoryWithReview();
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.endStore();
    fixture.mainQueue.runPosted();
    const auto logged = ActivityLog::load(fixture.fileStore, fixture.home);
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_EQ(logged[0].title, "Memory action didn't complete");
}

}  // namespace kestrune
