#include <gtest/gtest.h>

#include "platform/macos/MacUpdater.h"

namespace kestrune {

TEST(MacWithoutUpdater, aBuildWithoutTheFrameworkLooksForNoUpdates) {
    const auto updater = makeMacUpdater();
    ASSERT_NE(updater, nullptr);
    EXPECT_FALSE(updater->isConfigured());
    updater->checkForUpdates();
    EXPECT_FALSE(updater->isConfigured());
}

}  // namespace kestrune
