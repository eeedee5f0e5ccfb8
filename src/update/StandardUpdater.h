#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Preferences.h"
#include "platform/UpdateFetcher.h"
#include "platform/UpdateInstaller.h"
#include "platform/UpdatePresenter.h"
#include "platform/Updater.h"

namespace kestrune {

/// What StandardUpdater works with. Everything outlives it.
struct StandardUpdaterParts {
    UpdateSource source;
    std::string runningVersion;
    UpdateFetcher& fetcher;
    UpdateInstaller& installer;
    UpdatePresenter& presenter;
    Preferences& preferences;
    MainQueue& mainQueue;
    const Clock& clock;
    std::function<std::uint32_t()> random;  ///< evenly spread; parts the checks of many machines in time
};

/// The updater for systems that bring none. Main thread.
class StandardUpdater final : public Updater {
public:
    explicit StandardUpdater(StandardUpdaterParts parts);
    ~StandardUpdater() override;

    [[nodiscard]] bool isConfigured() const override;
    void start(UpdaterDelegate& delegate) override;
    void checkForUpdates() override;

private:
    StandardUpdaterParts m_parts;
    UpdaterDelegate* m_delegate = nullptr;
};

}  // namespace kestrune
