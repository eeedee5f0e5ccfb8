#pragma once

#include <functional>
#include <vector>

#include "ui/QtUpdatePresenter.h"

namespace kestrune {

/// One state of the window about updates.
struct UpdateScene {
    const char* name;
    std::function<void(QtUpdatePresenter&)> show;
};

[[nodiscard]] std::vector<UpdateScene> updateScenes();

}  // namespace kestrune
