#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

constexpr const char* lastReminderKey = "kestrune_last_scan_reminder";

class WorkspaceStoreMonitoring : public testing::Test {
protected:
    void setNetwork(std::uint64_t received, std::uint64_t sent) {
        fixture.hostStatistics.interfaces = {{"eth0", true, true, InterfaceBytes{received, sent}}};
    }

    void remindedAgo(double seconds) {
        fixture.preferences.values["kestrune_scan_reminders"] = true;
        fixture.preferences.values[lastReminderKey] = fixture.clock.wall - Seconds{seconds};
    }

    StoreFixture fixture;
};

}  // namespace

TEST_F(WorkspaceStoreMonitoring, beforeAnyPressureEventItReadsObserving) {
    fixture.store().startMonitoring();
    EXPECT_TRUE(fixture.memoryPressure.started());
    EXPECT_EQ(fixture.store().pressure.get(), "Observing");
}

TEST_F(WorkspaceStoreMonitoring, thePressureWordFollowsTheLevel) {
    fixture.store().startMonitoring();
    fixture.memoryPressure.send({false, true, false});
    EXPECT_EQ(fixture.store().pressure.get(), "Elevated");
    fixture.memoryPressure.send({false, false, true});
    EXPECT_EQ(fixture.store().pressure.get(), "High");
    fixture.memoryPressure.send({true, false, false});
    EXPECT_EQ(fixture.store().pressure.get(), "Normal");
}

TEST_F(WorkspaceStoreMonitoring, anEventWithBothWarningAndCriticalGivesHigh) {
    fixture.store().startMonitoring();
    fixture.memoryPressure.send({false, true, true});
    EXPECT_EQ(fixture.store().pressure.get(), "High");
}

TEST_F(WorkspaceStoreMonitoring, theFirstRefreshLeavesBothRatesEmptyTheSecondGivesRates) {
    setNetwork(1000, 500);
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().downloadRate.get(), std::nullopt);
    EXPECT_EQ(fixture.store().uploadRate.get(), std::nullopt);
    setNetwork(6000, 1500);
    fixture.clock.advance(Seconds{5});
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().downloadRate.get(), 1000.0);
    EXPECT_EQ(fixture.store().uploadRate.get(), 200.0);
}

TEST_F(WorkspaceStoreMonitoring, unavailableCountersClearThePreviousReading) {
    setNetwork(1000, 500);
    fixture.store().refreshTelemetry();
    fixture.hostStatistics.interfaces.reset();
    fixture.clock.advance(Seconds{5});
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().downloadRate.get(), std::nullopt);
    setNetwork(9000, 9000);
    fixture.clock.advance(Seconds{5});
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().downloadRate.get(), std::nullopt);
    setNetwork(9500, 9000);
    fixture.clock.advance(Seconds{5});
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().downloadRate.get(), 100.0);
}

TEST_F(WorkspaceStoreMonitoring, aCounterThatWentBackwardsCostsOneRefreshOnly) {
    for (const std::uint64_t received : {9000U, 1000U}) {
        setNetwork(received, 0);
        fixture.store().refreshTelemetry();
        fixture.clock.advance(Seconds{5});
    }
    EXPECT_EQ(fixture.store().downloadRate.get(), std::nullopt);
    setNetwork(2000, 0);
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().downloadRate.get(), 200.0);
}

TEST_F(WorkspaceStoreMonitoring, aRefreshReadsProcessorAndBattery) {
    fixture.hostStatistics.ticks = CpuTicks{30, 10, 60, 0};
    fixture.powerSources.batteries = {{80, 100, "Battery Power"}};
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().cpuPercent.get(), 40);
    ASSERT_TRUE(fixture.store().batteryReading.get().has_value());
    EXPECT_EQ(fixture.store().batteryReading.get()->percent, 80);
    fixture.powerSources.batteries.clear();
    fixture.store().refreshTelemetry();
    EXPECT_EQ(fixture.store().batteryReading.get(), std::nullopt);
}

TEST_F(WorkspaceStoreMonitoring, everyRefreshAddsABeatToTheHistory) {
    fixture.store().memoryPercent.set(63);
    fixture.hostStatistics.ticks = CpuTicks{50, 0, 50, 0};
    fixture.store().refreshTelemetry();
    fixture.clock.advance(Seconds{5});
    fixture.store().refreshTelemetry();
    const auto& history = fixture.store().telemetryHistory.get();
    ASSERT_EQ(history.size(), 2U);
    EXPECT_EQ(history[0].memoryPercent, 63);
    EXPECT_EQ(history[0].cpuPercent, 50);
    EXPECT_EQ(history[1].time - history[0].time, Seconds{5});
}

TEST_F(WorkspaceStoreMonitoring, theFirstTickComesAfterSixtySeconds) {
    remindedAgo(100'000);
    fixture.store().startMonitoring();
    fixture.mainQueue.advance(std::chrono::milliseconds{59'999});
    EXPECT_FALSE(fixture.store().isScanning.get());
    fixture.mainQueue.advance(std::chrono::milliseconds{1});
    EXPECT_TRUE(fixture.store().isScanning.get());
}

TEST_F(WorkspaceStoreMonitoring, withRemindersOffATickDoesNothing) {
    fixture.store().monitorTick();
    EXPECT_FALSE(fixture.store().isScanning.get());
    EXPECT_EQ(fixture.store().lastReminder.get(), std::nullopt);
}

TEST_F(WorkspaceStoreMonitoring, at86399SecondsATickDoesNothing) {
    remindedAgo(86'399);
    fixture.store().monitorTick();
    EXPECT_FALSE(fixture.store().isScanning.get());
    EXPECT_TRUE(fixture.notificationCenter.delivered.empty());
    EXPECT_TRUE(fixture.preferences.keysSet.empty());
}

TEST_F(WorkspaceStoreMonitoring, at86400SecondsATickRecordsTheTimeScansAndNotifies) {
    remindedAgo(86'400);
    fixture.store().monitorTick();
    EXPECT_EQ(fixture.store().lastReminder.get(), fixture.clock.wall);
    EXPECT_EQ(fixture.preferences.date(lastReminderKey), fixture.clock.wall);
    EXPECT_TRUE(fixture.store().isScanning.get());
    ASSERT_EQ(fixture.notificationCenter.delivered.size(), 1U);
    EXPECT_EQ(fixture.notificationCenter.delivered[0].title, "Your daily storage review");
    EXPECT_EQ(fixture.notificationCenter.delivered[0].body,
              "Kestrune is scanning supported cache locations. Open Storage to review the results. Nothing is deleted "
              "automatically.");
    fixture.settle();
    EXPECT_TRUE(fixture.alerts.alerts.empty());
}

TEST_F(WorkspaceStoreMonitoring, theTimeIsStoredBeforeTheScanBegins) {
    remindedAgo(86'400);
    bool storedFirst = false;
    const auto subscription = fixture.store().isScanning.observe(
        [&] { storedFirst = fixture.preferences.date(lastReminderKey) == fixture.clock.wall; });
    fixture.store().monitorTick();
    EXPECT_TRUE(storedFirst);
}

TEST_F(WorkspaceStoreMonitoring, aTickDuringAScanWaitsAndDoesNotUpdateTheTime) {
    remindedAgo(90'000);
    const auto before = fixture.store().lastReminder.get();
    fixture.store().scan();
    fixture.store().monitorTick();
    EXPECT_EQ(fixture.store().lastReminder.get(), before);
    fixture.settle();
    fixture.store().monitorTick();
    EXPECT_EQ(fixture.store().lastReminder.get(), fixture.clock.wall);
}

TEST_F(WorkspaceStoreMonitoring, aTickDuringACleanupWaitsAndDoesNotUpdateTheTime) {
    remindedAgo(90'000);
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.scan();
    fixture.store().selectRecommended();
    fixture.store().clean();
    ASSERT_TRUE(fixture.store().isCleaning.get());
    const auto before = fixture.store().lastReminder.get();
    fixture.store().monitorTick();
    EXPECT_EQ(fixture.store().lastReminder.get(), before);
}

TEST_F(WorkspaceStoreMonitoring, aTickWhileAQuestionIsOpenWaits) {
    remindedAgo(90'000);
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.scan();
    fixture.store().selectRecommended();
    const auto before = fixture.store().lastReminder.get();
    fixture.alerts.answer = 1;
    fixture.alerts.whileOpen = [&] { fixture.store().monitorTick(); };
    fixture.store().clean();
    EXPECT_EQ(fixture.store().lastReminder.get(), before);
    EXPECT_FALSE(fixture.store().isScanning.get());
}

TEST_F(WorkspaceStoreMonitoring, switchingOnWithoutAnEarlierReviewReviewsAtTheNextTick) {
    fixture.store().startMonitoring();
    fixture.store().setReminders(true);
    EXPECT_FALSE(fixture.store().isScanning.get());
    fixture.mainQueue.advance(std::chrono::seconds{60});
    EXPECT_TRUE(fixture.store().isScanning.get());
    EXPECT_EQ(fixture.notificationCenter.delivered.size(), 1U);
}

TEST_F(WorkspaceStoreMonitoring, switchingOnAsksForPermissionAndOffAsksNothing) {
    fixture.store().setReminders(true);
    EXPECT_EQ(fixture.notificationCenter.requests, 1);
    EXPECT_EQ(fixture.preferences.boolean("kestrune_scan_reminders"), true);
    fixture.store().setReminders(false);
    EXPECT_EQ(fixture.notificationCenter.requests, 1);
    EXPECT_EQ(fixture.preferences.boolean("kestrune_scan_reminders"), false);
    EXPECT_FALSE(fixture.store().reminders.get());
}

TEST_F(WorkspaceStoreMonitoring, switchingOffAndOnDoesNotResetTheWait) {
    remindedAgo(86'340);
    fixture.store().setReminders(false);
    fixture.store().setReminders(true);
    fixture.store().monitorTick();
    EXPECT_FALSE(fixture.store().isScanning.get());
    fixture.clock.advance(Seconds{60});
    fixture.store().monitorTick();
    EXPECT_TRUE(fixture.store().isScanning.get());
}

TEST_F(WorkspaceStoreMonitoring, aReviewInTheFutureWaitsUntilADayAfterIt) {
    remindedAgo(-3600);
    fixture.store().monitorTick();
    fixture.clock.advance(Seconds{86'400});
    fixture.store().monitorTick();
    EXPECT_FALSE(fixture.store().isScanning.get());
    fixture.clock.advance(Seconds{3600});
    fixture.store().monitorTick();
    EXPECT_TRUE(fixture.store().isScanning.get());
}

TEST_F(WorkspaceStoreMonitoring, aLongAbsenceIsOneReview) {
    remindedAgo(86'400 * 30);
    fixture.store().monitorTick();
    fixture.settle();
    fixture.store().monitorTick();
    EXPECT_FALSE(fixture.store().isScanning.get());
    EXPECT_EQ(fixture.notificationCenter.delivered.size(), 1U);
}

TEST_F(WorkspaceStoreMonitoring, aSwitchThatCannotBeSavedHoldsForTheSessionAndSaysSo) {
    fixture.preferences.failsSaving = true;
    fixture.store().setReminders(true);
    EXPECT_TRUE(fixture.store().reminders.get());
    EXPECT_EQ(fixture.store().message.get(), "This setting works for this session, but couldn't be saved.");
}

TEST_F(WorkspaceStoreMonitoring, aReviewTimeThatCannotBeSavedIsToldWhileTheScanRuns) {
    remindedAgo(90'000);
    fixture.preferences.failsSaving = true;
    fixture.store().monitorTick();
    EXPECT_TRUE(fixture.store().isScanning.get());
    EXPECT_EQ(fixture.store().message.get(), "This setting works for this session, but couldn't be saved.");
    EXPECT_EQ(fixture.store().lastReminder.get(), fixture.clock.wall);
}

}  // namespace kestrune
