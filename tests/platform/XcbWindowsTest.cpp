#include "platform/linux/XcbWindows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

XcbWindow window(std::int32_t pid, XcbWindowKind kind = XcbWindowKind::normal, const std::string& name = "Tool") {
    return {1, pid, name, "tool", kind, false};
}

std::vector<std::int32_t> processes(const std::vector<XcbWindow>& windows) {
    std::vector<std::int32_t> found;
    for (const SourcedApplication& application : applicationsBehind(windows)) {
        found.push_back(application.policy == ActivationPolicy::regular ? application.pid : -application.pid);
    }
    return found;
}

TEST(XcbWindows, windowsOfOneProcessAreOneApplicationInTheOrderOfTheFirst) {
    EXPECT_THAT(processes({window(7), window(5), window(7), window(6), window(5)}), ElementsAre(7, 5, 6));
    EXPECT_THAT(processes({}), IsEmpty());
}

TEST(XcbWindows, windowWithoutAProcessHereIsNoApplication) {
    EXPECT_THAT(processes({window(0), window(-3)}), IsEmpty());
}

TEST(XcbWindows, onlyAMainWindowMakesARegularApplication) {
    XcbWindow hidden = window(4);
    hidden.skipsTaskbar = true;
    EXPECT_THAT(processes({window(2, XcbWindowKind::secondary), window(3, XcbWindowKind::ornament), hidden}),
                ElementsAre(-2, -3, -4));
}

TEST(XcbWindows, mainWindowNamesItsApplicationWhateverCameBefore) {
    const auto applications =
        applicationsBehind({window(2, XcbWindowKind::secondary, "Dialog"), window(2, XcbWindowKind::normal, "Main"),
                            window(2, XcbWindowKind::normal, "Later")});
    ASSERT_EQ(applications.size(), 1U);
    EXPECT_EQ(applications[0].policy, ActivationPolicy::regular);
    EXPECT_EQ(applications[0].name, "Main");
    EXPECT_THAT(applications[0].hints, ElementsAre("Main", "tool"));
}

TEST(XcbWindows, whatTheServerSeesCountsMoreThanWhatTheClientClaims) {
    EXPECT_EQ(processOf({7, 2, "here"}, "here"), 7);
    EXPECT_EQ(processOf({7, std::nullopt, std::nullopt}, "here"), 7);
}

TEST(XcbWindows, claimIsBelievedOfLocalWindowsOnly) {
    EXPECT_EQ(processOf({std::nullopt, 7, "here"}, "here"), 7);
    EXPECT_EQ(processOf({std::nullopt, 7, "there"}, "here"), 0);
    EXPECT_EQ(processOf({std::nullopt, 7, std::nullopt}, "here"), 0);
    EXPECT_EQ(processOf({std::nullopt, 0, "here"}, "here"), 0);
    EXPECT_EQ(processOf({std::nullopt, 4'000'000'000U, "here"}, "here"), 0);
    EXPECT_EQ(processOf({std::nullopt, std::nullopt, "here"}, "here"), 0);
}

TEST(XcbWindows, windowThatReachesTheServerThroughATunnelIsNotTheTunnelsProcess) {
    EXPECT_EQ(processOf({700, 7, "there"}, "here"), 0);
    EXPECT_EQ(processOf({700, std::nullopt, "there"}, "here"), 0);
}

TEST(XcbWindows, machineThatWasRenamedMeanwhileIsStillThisOne) {
    EXPECT_EQ(processOf({7, 7, "old-name"}, "new-name"), 7);
}

TEST(XcbWindows, machineMayBeCalledWithItsDomain) {
    EXPECT_EQ(processOf({std::nullopt, 7, "Here.example.org"}, "here"), 7);
    EXPECT_EQ(processOf({std::nullopt, 7, "here"}, "here.example.org"), 7);
    EXPECT_EQ(processOf({std::nullopt, 7, "here.example.org"}, "here.example.com"), 0);
    EXPECT_EQ(processOf({std::nullopt, 7, ""}, ""), 0);
}

}  // namespace
}  // namespace kestrune
