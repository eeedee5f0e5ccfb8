#include "platform/macos/MacUpdater.h"

namespace kestrune {

namespace {

class MacWithoutUpdater final : public Updater {
public:
    [[nodiscard]] bool isConfigured() const override { return false; }

    void start(UpdaterDelegate& /*delegate*/) override {}

    void checkForUpdates() override {}
};

}  // namespace

std::unique_ptr<Updater> makeMacUpdater() {
    return std::make_unique<MacWithoutUpdater>();
}

}  // namespace kestrune
