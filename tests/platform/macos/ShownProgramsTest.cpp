#include "platform/macos/ShownPrograms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string chrome = "/Applications/Google Chrome.app";

class ShownProgramsTest : public testing::Test {
protected:
    ShownProgramsTest() { shown.remember(chrome, "Google Chrome"); }

    ShownPrograms shown;
};

TEST_F(ShownProgramsTest, everyProgramInABundleGoesByItsName) {
    EXPECT_THAT(shown.namesOf(chrome), ElementsAre("Google Chrome"));
    EXPECT_THAT(shown.namesOf(chrome + "/Contents/MacOS/Google Chrome"), ElementsAre("Google Chrome"));
    EXPECT_THAT(shown.namesOf(chrome + "/Contents/Frameworks/X.framework/Versions/1/Helpers/H.app/Contents/MacOS/H"),
                ElementsAre("Google Chrome"));
}

TEST_F(ShownProgramsTest, aProgramBesideABundleDoesNot) {
    for (const std::string executable : {"", "/", "node", "/Applications", "/Applications/Google Chrome.app2/x",
                                         "/Applications/Google Chrome", "/usr/local/bin/node"}) {
        EXPECT_THAT(shown.namesOf(executable), IsEmpty()) << executable;
    }
}

TEST_F(ShownProgramsTest, allNamesOfABundleAndThoseOfTheBundleAroundItAreTold) {
    shown.remember(chrome, "Chrome");
    shown.remember(chrome + "/Contents/Helper.app", "Helper");
    EXPECT_THAT(shown.namesOf(chrome + "/Contents/Helper.app/x"), ElementsAre("Chrome", "Google Chrome", "Helper"));
    EXPECT_THAT(shown.namesOf(chrome + "/x"), ElementsAre("Chrome", "Google Chrome"));
}

TEST_F(ShownProgramsTest, interpretersHaveNoNames) {
    const std::string python = "/opt/python/Python.framework/Versions/3.12/Resources/Python.app";
    shown.remember(python, "Python");
    EXPECT_THAT(shown.namesOf(python + "/Contents/MacOS/Python"), IsEmpty());
    shown.remember("", "java");
    EXPECT_THAT(shown.namesOf(""), IsEmpty());
    shown.remember("/Applications/Nameless.app", "");
    EXPECT_THAT(shown.namesOf("/Applications/Nameless.app"), IsEmpty());
}

TEST_F(ShownProgramsTest, anApplicationThatRenamesItselfForEverIsRememberedABit) {
    for (int i = 0; i < 100; ++i) {
        shown.remember(chrome, std::to_string(i));
    }
    EXPECT_EQ(shown.namesOf(chrome).size(), 16U);
}

TEST_F(ShownProgramsTest, noMoreBundlesAreRememberedThanThereIsRoomFor) {
    for (int i = 0; i < 5000; ++i) {
        shown.remember("/tmp/" + std::to_string(i) + ".app", "x");
    }
    EXPECT_THAT(shown.namesOf("/tmp/4000.app"), ElementsAre("x"));
    EXPECT_THAT(shown.namesOf("/tmp/4999.app"), IsEmpty());
    shown.remember(chrome, "Chrome");
    EXPECT_THAT(shown.namesOf(chrome), ElementsAre("Chrome", "Google Chrome"));
}

}  // namespace
}  // namespace kestrune
