#pragma once

#include <functional>
#include <vector>

#include "tests/fakes/StoreFixture.h"

class QWidget;

namespace kestrune {

/// One state of the Disk Explorer page.
struct ExplorerScene {
    const char* name;
    std::function<void(StoreFixture&)> prepare;
    std::function<void(StoreFixture&, QWidget& window)> act;  ///< once the window is shown; may be empty
};

[[nodiscard]] std::vector<ExplorerScene> explorerScenes();

}  // namespace kestrune
