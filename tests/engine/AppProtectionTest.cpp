#include "engine/AppProtection.h"

#include <gtest/gtest.h>

namespace kestrune::AppProtection {
namespace {

using Names = std::vector<std::string>;

TEST(AppProtection, everyProtectedNameProtectsItselfInAnyCaseAndPlace) {
    ASSERT_EQ(protectedNames.size(), 35U);
    for (const std::string_view name : protectedNames) {
        EXPECT_TRUE(isProtected(name, {})) << name;
        EXPECT_TRUE(isProtected("/usr/sbin/" + std::string(name), {})) << name;
    }
    EXPECT_TRUE(isProtected("WindowServer", {}));
    EXPECT_TRUE(isProtected("KESTRUNE", {}));
}

TEST(AppProtection, fullPathOfTheFinderIsProtected) {
    EXPECT_TRUE(isProtected("/System/Library/CoreServices/Finder.app/Contents/MacOS/Finder", {}));
}

TEST(AppProtection, onlyTheFileNameOfAPathCounts) {
    EXPECT_FALSE(isProtected("/home/finder/bin/server", {}));
    EXPECT_FALSE(isProtected("dock/other", {}));
}

TEST(AppProtection, protectionIsByPrefix) {
    for (const std::string name : {"mdsworker", "logd_helper", "docker", "dockerd", "statsd", "Finder (deleted)"}) {
        EXPECT_TRUE(isProtected(name, {})) << name;
    }
    for (const std::string name : {"my-dock", "xfinder", "doc", ""}) {
        EXPECT_FALSE(isProtected(name, {})) << name;
    }
}

TEST(AppProtection, dockerDesktopIsProtectedThroughTheDockPrefix) {
    EXPECT_TRUE(isProtected("Docker Desktop", {}));
}

TEST(AppProtection, safariIsProtectedOnlyWhenTheUserKeepsIt) {
    EXPECT_FALSE(isProtected("Safari", {}));
    EXPECT_TRUE(isProtected("Safari", {"safari"}));
}

TEST(AppProtection, keptNamesAreComparedWhole) {
    EXPECT_FALSE(isProtected("Safari Technology Preview", {"safari"}));
    EXPECT_FALSE(isProtected("Saf", {"safari"}));
    EXPECT_FALSE(isProtected("", {"safari"}));
}

TEST(AppProtection, keptNameProtectsAPathByItsFileNameAndByItself) {
    EXPECT_TRUE(isProtected("/opt/Code/code", {"code"}));
    EXPECT_TRUE(isProtected("/opt/Code/code", {"/opt/code/code"}));
    EXPECT_FALSE(isProtected("/opt/code/server", {"code"}));
}

TEST(AppProtection, keptNameInMixedCaseNeverMatches) {
    EXPECT_FALSE(isProtected("Xcode", {"Xcode"}));
    EXPECT_FALSE(isProtected("xcode", {"Xcode"}));
    EXPECT_TRUE(isProtected("XCODE", {"xcode"}));
}

TEST(AppProtection, keptNamesOfAnyScriptMatch) {
    EXPECT_TRUE(isProtected("ÜBER Рабочий", {"über рабочий"}));
    EXPECT_FALSE(isProtected("ÜBER", {"ÜBER"}));
}

TEST(AppProtection, slashAtTheEndHidesNoName) {
    EXPECT_TRUE(isProtected("/Applications/Finder/", {}));
    EXPECT_FALSE(isProtected("///", {}));
}

TEST(AppProtection, closingSparesAKeptNameAsTheUserWroteIt) {
    EXPECT_TRUE(sparesApplication("Xcode", {"Xcode"}));
    EXPECT_TRUE(sparesApplication("Xcode", {"xcode"}));
    EXPECT_TRUE(sparesApplication("Docker Desktop", {}));
    EXPECT_FALSE(sparesApplication("XCODE", {"Xcode"}));
    EXPECT_FALSE(sparesApplication("Xcode Helper", {"Xcode"}));
}

}  // namespace
}  // namespace kestrune::AppProtection
