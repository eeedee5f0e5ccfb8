#include "platform/linux/LinuxMounts.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

constexpr std::string_view recorded =
    "22 1 259:2 / / rw,relatime shared:1 - ext4 /dev/nvme0n1p2 rw\n"
    "23 22 0:21 / /proc rw,relatime - proc proc rw\n"
    "40 22 259:3 / /home rw,relatime shared:9 master:2 - ext4 /dev/nvme0n1p3 rw\n"
    "41 40 0:44 / /home/ann/.cache/my\\040disk\\134x\\011y\\012z rw - tmpfs tmpfs rw\n"
    "42 22 259:3 /ann /mnt/ann rw - ext4 /dev/nvme0n1p3 rw\n"
    "43 42 0:45 / /mnt/ann/.gradle/ram rw - tmpfs tmpfs rw\n";

TEST(LinuxMounts, readsNumbersDeviceRootAndMountPoint) {
    const auto mounts = parseMountInfo(recorded);
    ASSERT_EQ(mounts.size(), 6U);
    EXPECT_EQ(mounts[0], (LinuxMount{22, 1, "259:2", "/", "/"}));
    EXPECT_EQ(mounts[4], (LinuxMount{42, 22, "259:3", "/ann", "/mnt/ann"}));
}

TEST(LinuxMounts, octalEscapesBecomeTheirBytes) {
    EXPECT_EQ(parseMountInfo(recorded)[3].mountPoint, "/home/ann/.cache/my disk\\x\ty\nz");
}

TEST(LinuxMounts, anEscapeThatIsNoneStaysAsItIs) {
    const auto mounts = parseMountInfo("1 0 0:1 / /a\\9\\04 rw - tmpfs tmpfs rw");
    ASSERT_EQ(mounts.size(), 1U);
    EXPECT_EQ(mounts[0].mountPoint, "/a\\9\\04");
}

TEST(LinuxMounts, linesWithoutTheFormAreLeftOut) {
    EXPECT_TRUE(parseMountInfo("").empty());
    EXPECT_TRUE(parseMountInfo("\n\nx y z\n1 2 3:4 / relative rw\n-1 2 3:4 / /a rw\n1 2 3:4 /\n").empty());
}

TEST(LinuxMounts, findsAMountByItsNumber) {
    const auto mounts = parseMountInfo(recorded);
    ASSERT_NE(mountWithId(mounts, 40), nullptr);
    EXPECT_EQ(mountWithId(mounts, 40)->mountPoint, "/home");
    EXPECT_EQ(mountWithId(mounts, 99), nullptr);
}

TEST(LinuxMounts, aFolderAboveAMountPointHoldsIt) {
    const auto mounts = parseMountInfo(recorded);
    EXPECT_TRUE(holdsMountPoint(mounts, 40, "/home/ann/.cache"));
    EXPECT_TRUE(holdsMountPoint(mounts, 40, "/home/ann/.cache/my disk\\x\ty\nz"));
    EXPECT_TRUE(holdsMountPoint(mounts, 22, "/"));
}

TEST(LinuxMounts, aSiblingWithTheSameBeginningDoesNotHoldIt) {
    const auto mounts = parseMountInfo(recorded);
    EXPECT_FALSE(holdsMountPoint(mounts, 40, "/home/ann/.cach"));
    EXPECT_FALSE(holdsMountPoint(mounts, 40, "/home/ann/.npm"));
}

TEST(LinuxMounts, aMountPointReachedThroughAnotherMountOfTheFolderCounts) {
    const auto mounts = parseMountInfo(recorded);
    EXPECT_TRUE(holdsMountPoint(mounts, 40, "/home/ann/.gradle"));
    EXPECT_TRUE(holdsMountPoint(mounts, 42, "/mnt/ann/.cache"));
    EXPECT_FALSE(holdsMountPoint(mounts, 40, "/home/.gradle"));
}

TEST(LinuxMounts, aFolderThatIsOnlyMountedElsewhereHoldsNothing) {
    EXPECT_FALSE(holdsMountPoint(parseMountInfo("22 1 8:1 / / rw - ext4 a rw\n"
                                                "30 22 8:1 /home/ann/.npm /srv/npm rw - ext4 a rw\n"),
                                 22, "/home/ann/.npm"));
}

}  // namespace
}  // namespace kestrune
