#include "engine/AppClosing.h"

#include <gtest/gtest.h>

namespace kestrune::AppClosing {
namespace {

RunningApplication app(std::string name, std::string bundleIdentifier = {}) {
    RunningApplication application;
    application.localizedName = std::move(name);
    application.bundleIdentifier = std::move(bundleIdentifier);
    return application;
}

TEST(AppClosing, heavyIdentifiersAreComparedExactly) {
    EXPECT_TRUE(isHeavy(app("Anything", "com.google.Chrome")));
    EXPECT_TRUE(isHeavy(app("", "com.docker.docker")));
    EXPECT_FALSE(isHeavy(app("Anything", "com.google.chrome")));
    EXPECT_FALSE(isHeavy(app("Anything", "com.google.Chrome.beta")));
    EXPECT_FALSE(isHeavy(app("Anything", "")));
}

TEST(AppClosing, heavyNamesAreComparedWholeAndInAnyCase) {
    EXPECT_TRUE(isHeavy(app("Google Chrome")));
    EXPECT_TRUE(isHeavy(app("INTELLIJ IDEA")));
    EXPECT_FALSE(isHeavy(app("Google Chrome Beta")));
    EXPECT_FALSE(isHeavy(app("")));
}

TEST(AppClosing, safariIsHeavyByItsNameAlone) {
    EXPECT_TRUE(isHeavy(app("Safari", "com.apple.Safari")));
    EXPECT_FALSE(isHeavy(app("", "com.apple.Safari")));
}

TEST(AppClosing, aReusedNumberIsAnotherProcess) {
    RunningApplication found = app("Editor");
    found.startTime = 7;
    EXPECT_TRUE(isSameProcess(found, 7));
    EXPECT_FALSE(isSameProcess(found, 8));
    EXPECT_TRUE(isSameProcess(found, 0));
    found.startTime = 0;
    EXPECT_TRUE(isSameProcess(found, 7));
}

}  // namespace
}  // namespace kestrune::AppClosing
