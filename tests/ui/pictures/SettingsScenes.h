#pragma once

#include <functional>
#include <vector>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

/// One state of a page about the program itself.
struct SettingsScene {
    const char* name;
    std::function<void(StoreFixture&)> prepare;
};

/// Of the Automation page.
[[nodiscard]] std::vector<SettingsScene> automationScenes();

/// Of the Settings page.
[[nodiscard]] std::vector<SettingsScene> settingsScenes();

}  // namespace kestrune
