#include "platform/macos/MacProcessIdentity.h"

#include <gtest/gtest.h>

#include "tests/platform/macos/fake_darwin/FakeProcesses.h"
#include "tests/platform/macos/fake_darwin/FakeSysctl.h"

namespace kestrune {
namespace {

using MacProcessIdentity::Identity;

class MacProcessIdentityTest : public testing::Test {
protected:
    MacProcessIdentityTest() {
        FakeProcesses::reset();
        FakeProcesses::set(4711, node);
    }

    const FakeProcess node{1'700'000'000, 250'000, 501, "/opt/node/bin/node", "/Users/u/app"};
};

TEST_F(MacProcessIdentityTest, aProcessIsItsStartItsOwnerAndItsExecutable) {
    EXPECT_EQ(MacProcessIdentity::of(4711), (Identity{1'700'000'000'250'000, 501, "/opt/node/bin/node"}));
    EXPECT_EQ(MacProcessIdentity::workingDirectoryOf(4711), "/Users/u/app");
}

TEST_F(MacProcessIdentityTest, aNumberWithoutAProcessIsNone) {
    EXPECT_EQ(MacProcessIdentity::of(4712), std::nullopt);
    EXPECT_EQ(MacProcessIdentity::workingDirectoryOf(4712), std::nullopt);
    FakeProcesses::remove(4711);
    EXPECT_EQ(MacProcessIdentity::of(4711), std::nullopt);
}

TEST_F(MacProcessIdentityTest, aProcessThatOnlyWaitsToBeReapedIsNone) {
    FakeProcess ended = node;
    ended.isZombie = true;
    FakeProcesses::set(4711, ended);
    EXPECT_EQ(MacProcessIdentity::of(4711), std::nullopt);
}

TEST_F(MacProcessIdentityTest, anAnswerThatIsCutShortIsNone) {
    for (auto& [name, bytes] : FakeSysctl::state().byNumbers) {
        bytes.resize(bytes.size() / 2);
    }
    EXPECT_EQ(MacProcessIdentity::of(4711), std::nullopt);
}

TEST_F(MacProcessIdentityTest, aNumberThatChangesHandsDuringTheLookIsNone) {
    FakeProcess other = node;
    other.startMicroseconds += 1;
    FakeProcesses::afterNextExecutable([&] { FakeProcesses::set(4711, other); });
    EXPECT_EQ(MacProcessIdentity::of(4711), std::nullopt);
    EXPECT_EQ(MacProcessIdentity::of(4711)->startTime, 1'700'000'000'250'001U);
}

TEST_F(MacProcessIdentityTest, anExecutableThatIsNotShownIsEmpty) {
    FakeProcesses::set(4711, {1'700'000'000, 0, 0, "", ""});
    EXPECT_EQ(MacProcessIdentity::of(4711), (Identity{1'700'000'000'000'000, 0, ""}));
    EXPECT_EQ(MacProcessIdentity::workingDirectoryOf(4711), std::nullopt);
}

TEST_F(MacProcessIdentityTest, startTimesAreThoseOfOneUser) {
    FakeProcesses::set(5, {9, 1, 501});
    FakeProcesses::set(6, {9, 2, 0});
    const std::unordered_map<std::int32_t, std::uint64_t> expected{{4711, 1'700'000'000'250'000}, {5, 9'000'001}};
    EXPECT_EQ(MacProcessIdentity::startTimesOfUser(501), expected);
    EXPECT_TRUE(MacProcessIdentity::startTimesOfUser(502).empty());
}

TEST_F(MacProcessIdentityTest, processesThatStartBetweenTheQuestionsAreCountedIn) {
    std::int32_t next = 10'000;
    int questions = 0;
    FakeSysctl::state().onNumbers = [&] {
        for (int i = 0; i < 200 && questions == 0; ++i) {
            FakeProcesses::set(next++, {9, 1, 501});
        }
        ++questions;
    };
    EXPECT_EQ(MacProcessIdentity::startTimesOfUser(501).size(), 201U);
    EXPECT_EQ(questions, 4);
}

TEST_F(MacProcessIdentityTest, aListThatGrowsForEverIsGivenUp) {
    std::int32_t next = 10'000;
    int questions = 0;
    FakeSysctl::state().onNumbers = [&] {
        ++questions;
        for (int i = 0; i < 100; ++i) {
            FakeProcesses::set(next++, {9, 1, 501});
        }
    };
    EXPECT_TRUE(MacProcessIdentity::startTimesOfUser(501).empty());
    EXPECT_LE(questions, 8);
}

TEST_F(MacProcessIdentityTest, aWorkingFolderAsLongAsCanBeIsReadWhole) {
    const std::string longest = "/" + std::string(1023, 'x');
    FakeProcesses::set(4711, {9, 1, 501, "/bin/cat", longest});
    EXPECT_EQ(MacProcessIdentity::workingDirectoryOf(4711), longest);
}

}  // namespace
}  // namespace kestrune
