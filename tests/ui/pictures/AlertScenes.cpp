#include "tests/ui/pictures/AlertScenes.h"

#include <functional>
#include <string>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

/// What the store asks when act is done with it; the answer is no.
Alert asked(const std::function<void(StoreFixture&)>& act) {
    StoreFixture fixture;
    fixture.alerts.answer = 1;
    act(fixture);
    return fixture.alerts.alerts.at(0);
}

Alert quitQuestion(std::size_t ports, bool isApp, bool force) {
    return asked([=](StoreFixture& fixture) {
        RunningItem item{5521, isApp ? "Xcode" : "node", "/usr/bin/node", 1394, "11.8", {}, {}, 1};
        if (isApp) {
            item.app = fixture.applications.start(item.id, item.name);
        }
        for (std::size_t port = 0; port < ports; ++port) {
            item.listeners.push_back("127.0.0.1:" + std::to_string(3000 + port));
        }
        fixture.processControl.detailsByPid[item.id] = {"/home/anna/projects/shop", 11'520};
        fixture.store().quitApp(item, force);
    });
}

Alert quitOthersQuestion(std::size_t nameLength) {
    return asked([nameLength](StoreFixture& fixture) {
        std::int32_t pid = 100;
        for (const char* name : {"Safari", "Terminal", "Xcode", "Docker Desktop", "Visual Studio Code", "Mail", "Notes",
                                 "LM Studio", "Spotify", "Slack", "Zed", "Preview"}) {
            fixture.applications.start(pid++, std::string(name) + std::string(nameLength, 'w'));
        }
        fixture.store().quitOtherApps();
    });
}

}  // namespace

std::vector<AlertScene> alertScenes() {
    return {{"alert-quit-ports", quitQuestion(2, false, false)},
            {"alert-quit-10000", quitQuestion(10'000, false, false)},
            {"alert-quit-app", quitQuestion(0, true, false)},
            {"alert-force", quitQuestion(0, true, true)},
            {"alert-others", quitOthersQuestion(0)},
            {"alert-others-long", quitOthersQuestion(180)},
            {"alert-purge", asked([](StoreFixture& fixture) { fixture.store().purgeMemoryWithReview(); })}};
}

}  // namespace kestrune
