#include "platform/macos/MacVolumes.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "tests/platform/macos/fake_darwin/FakeFiles.h"

namespace kestrune {
namespace {

class MacVolumesTest : public testing::Test {
protected:
    MacVolumesTest() { fake_darwin::files() = {}; }

    ~MacVolumesTest() override { fake_darwin::files() = {}; }

    MacVolumesTest(const MacVolumesTest&) = delete;
    MacVolumesTest& operator=(const MacVolumesTest&) = delete;
};

TEST_F(MacVolumesTest, allVolumesAreToldHoweverManyThereAre) {
    EXPECT_TRUE(macVolumes().value().empty());
    for (int i = 0; i < 100; ++i) {
        fake_darwin::files().volumes.push_back({"/Volumes/" + std::to_string(i), i % 2 == 0});
    }
    const auto volumes = macVolumes();
    ASSERT_TRUE(volumes.ok());
    ASSERT_EQ(volumes.value().size(), 100U);
    EXPECT_EQ(volumes.value()[99].mountPoint, "/Volumes/99");
    EXPECT_FALSE(volumes.value()[99].isLocal);
    EXPECT_TRUE(volumes.value()[98].isLocal);
}

TEST_F(MacVolumesTest, theErrorOfTheSystemIsPassedOn) {
    fake_darwin::files().volumesError = EIO;
    ASSERT_FALSE(macVolumes().ok());
    EXPECT_EQ(macVolumes().error(), EIO);
}

TEST_F(MacVolumesTest, aVolumeBelowAFolderIsHeldByItUnderBothOfItsNames) {
    const std::vector<MacVolume> volumes = {
        {"/", true}, {"/Users/ann/a/b", true}, {"/System/Volumes/Data/Users/c", true}};
    EXPECT_TRUE(holdsVolume(volumes, "/Users/ann/a"));
    EXPECT_TRUE(holdsVolume(volumes, "/Users/ann/a/b"));
    EXPECT_TRUE(holdsVolume(volumes, "/Users/c"));
    EXPECT_FALSE(holdsVolume(volumes, "/Users/ann/a/b/c"));
    EXPECT_FALSE(holdsVolume(volumes, "/Users/ann/ab"));
}

}  // namespace
}  // namespace kestrune
