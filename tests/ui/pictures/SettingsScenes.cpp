#include "tests/ui/pictures/SettingsScenes.h"

#include <string>

namespace kestrune {

namespace {

void remindDaily(StoreFixture& fixture) {
    fixture.store().reminders.set(true);
    fixture.store().lastReminder.set(fixture.clock.now());
}

void usual(StoreFixture& fixture) {
    fixture.loginItem.registered = true;
    fixture.store().checkUpdates = [] {};
}

}  // namespace

std::vector<SettingsScene> automationScenes() {
    constexpr std::int64_t megabyte = 1'000'000;
    return {{"automation-off", [](StoreFixture&) {}},
            {"automation-never", [](StoreFixture& fixture) { fixture.store().reminders.set(true); }},
            {"automation", remindDaily},
            {"automation-scanning",
             [](StoreFixture& fixture) {
                 remindDaily(fixture);
                 fixture.store().scan();
                 fixture.store().operationProgress.set({3, 20, "Gradle Caches"});
             }},
            {"automation-scanned", [](StoreFixture& fixture) {
                 remindDaily(fixture);
                 fixture.addCache("Gradle Caches", 6'310 * megabyte);
                 fixture.scan();
             }}};
}

std::vector<SettingsScene> settingsScenes() {
    return {{"settings", usual},
            {"settings-unconfigured",
             [](StoreFixture& fixture) {
                 fixture.notificationCenter.authorization = NotificationAuthorization::denied;
                 fixture.store().updateStatus.set(
                     "This build doesn’t look for updates. Get new versions from your software centre.");
             }},
            {"settings-purging",
             [](StoreFixture& fixture) {
                 usual(fixture);
                 fixture.store().isPurging.set(true);
             }},
            {"settings-long", [](StoreFixture& fixture) {
                 usual(fixture);
                 fixture.store().updateStatus.set(
                     "Update couldn't finish: The server at https://updates.example.org/kestrune/" +
                     std::string(60, 'x') +
                     " did not answer within the time that was allowed for it. Retry or download from your software "
                     "centre.");
                 fixture.store().message.set(
                     "The help page couldn't be opened. Choose a default web browser, then try again.");
             }}};
}

}  // namespace kestrune
