#pragma once

#include <functional>

#include "platform/Updater.h"

namespace kestrune {

/// An updater that finds nothing by itself: a test tells its delegate what a check came to.
class FakeUpdater final : public Updater {
public:
    [[nodiscard]] bool isConfigured() const override { return configured; }

    void start(UpdaterDelegate& newDelegate) override {
        delegate = &newDelegate;
        if (whenStarted) {
            whenStarted();
        }
    }

    void checkForUpdates() override { ++checks; }

    bool configured = true;
    int checks = 0;
    UpdaterDelegate* delegate = nullptr;  ///< nothing before start
    std::function<void()> whenStarted;
};

}  // namespace kestrune
