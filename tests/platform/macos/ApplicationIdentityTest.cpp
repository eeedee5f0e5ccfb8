#include "platform/macos/ApplicationIdentity.h"

#include <gtest/gtest.h>

#include "tests/platform/macos/fake_darwin/FakeProcesses.h"

namespace kestrune {
namespace {

constexpr std::int32_t own = 77;

class ApplicationIdentityTest : public testing::Test {
protected:
    ApplicationIdentityTest() {
        FakeProcesses::reset();
        FakeProcesses::set(100, process);
        application.processIdentifier = 100;
        application.startTime = 1'000'005;
        application.executable = "/Applications/Notes.app/Contents/MacOS/Notes";
    }

    void becomes(const FakeProcess& other) const { FakeProcesses::set(100, other); }

    [[nodiscard]] bool mayBeEnded() const { return ApplicationIdentity::mayBeEnded(application, own, 501); }

    FakeProcess process{1, 5, 501, "/Applications/Notes.app/Contents/MacOS/Notes", ""};
    RunningApplication application;
};

TEST_F(ApplicationIdentityTest, theApplicationListedMayBeEnded) {
    EXPECT_TRUE(mayBeEnded());
    EXPECT_FALSE(ApplicationIdentity::hasEnded(application));
}

TEST_F(ApplicationIdentityTest, whatIsAnotherProcessByNowMayNotAndHasEnded) {
    process.startMicroseconds = 6;
    becomes(process);
    EXPECT_FALSE(mayBeEnded());
    EXPECT_TRUE(ApplicationIdentity::hasEnded(application));
}

TEST_F(ApplicationIdentityTest, whatRunsAnotherProgramByNowMayNotAndHasEnded) {
    process.executable = "/usr/bin/vim";
    becomes(process);
    EXPECT_FALSE(mayBeEnded());
    EXPECT_TRUE(ApplicationIdentity::hasEnded(application));
}

TEST_F(ApplicationIdentityTest, whatIsGoneOrOnlyWaitsToBeReapedMayNotAndHasEnded) {
    process.isZombie = true;
    becomes(process);
    EXPECT_FALSE(mayBeEnded());
    EXPECT_TRUE(ApplicationIdentity::hasEnded(application));
    FakeProcesses::remove(100);
    EXPECT_FALSE(mayBeEnded());
    EXPECT_TRUE(ApplicationIdentity::hasEnded(application));
}

TEST_F(ApplicationIdentityTest, anotherUsersApplicationMayNotBeEnded) {
    process.user = 0;
    becomes(process);
    EXPECT_FALSE(mayBeEnded());
    EXPECT_FALSE(ApplicationIdentity::hasEnded(application));
}

TEST_F(ApplicationIdentityTest, thisProgramAndTheFirstProcessMayNotBeEnded) {
    for (const std::int32_t pid : {own, 1, 0, -1}) {
        FakeProcesses::set(pid, process);
        application.processIdentifier = pid;
        EXPECT_FALSE(mayBeEnded()) << pid;
    }
}

TEST_F(ApplicationIdentityTest, whatIsNotKnownWellEnoughMayNotBeEndedButRuns) {
    application.startTime = 0;
    EXPECT_FALSE(mayBeEnded());
    EXPECT_FALSE(ApplicationIdentity::hasEnded(application));
    application.startTime = 1'000'005;
    application.executable = "";
    EXPECT_FALSE(mayBeEnded());
    EXPECT_FALSE(ApplicationIdentity::hasEnded(application));
    process.executable = "";
    becomes(process);
    EXPECT_FALSE(mayBeEnded());
}

}  // namespace
}  // namespace kestrune
