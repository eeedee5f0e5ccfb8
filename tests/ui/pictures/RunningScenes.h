#pragma once

#include <functional>
#include <vector>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

/// One state of a window or a page that shows what runs.
struct RunningScene {
    const char* name;
    std::function<void(StoreFixture&)> prepare;
};

/// Of the Running Apps page, and with other lists of the same kind of the port window.
[[nodiscard]] std::vector<RunningScene> runningAppsScenes();
[[nodiscard]] std::vector<RunningScene> portScenes();

/// Of the AI Tools page.
[[nodiscard]] std::vector<RunningScene> aiToolsScenes();

}  // namespace kestrune
