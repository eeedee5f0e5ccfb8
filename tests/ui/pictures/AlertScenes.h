#pragma once

#include <vector>

#include "platform/AlertPresenter.h"

namespace kestrune {

/// A question of the program, as the store asks it.
struct AlertScene {
    const char* name;
    Alert alert;
};

[[nodiscard]] std::vector<AlertScene> alertScenes();

}  // namespace kestrune
