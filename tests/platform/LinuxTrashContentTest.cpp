#include "platform/linux/LinuxTrashContent.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/LinuxFileStatus.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/TrashHome.h"

namespace kestrune {
namespace {

class LinuxTrashContentTest : public TrashHome {
protected:
    [[nodiscard]] std::optional<bool> isEmpty(const std::string& dataHome = {}) const {
        return isTrashEmpty(home, dataHome, mounts);
    }

    static void fill(const std::string& trash) {
        fs::create_directories(trash + "/files");
        writeFile(trash + "/files/item", "content");
    }

    /// A volume whose top is a new folder beside the home; it has the mount number of the file system both lie on.
    std::string mountVolume(const std::string& device) {
        const std::string top = beside("volume");
        fs::create_directory(top);
        mounts.push_back({mountNumber(top), 0, device, "/", top});
        return top;
    }

    static std::uint64_t mountNumber(const std::string& path) {
        const auto status = statusIn(AT_FDCWD, path);
        return status.ok() ? status.value().mountId : 0;
    }

    static std::string user() { return std::to_string(::geteuid()); }

    std::vector<LinuxMount> mounts;
};

TEST_F(LinuxTrashContentTest, trashThatWasNeverMadeIsEmpty) {
    EXPECT_EQ(isEmpty(), true);
    fs::create_directories(trashFolder);
    EXPECT_EQ(isEmpty(), true);
    EXPECT_FALSE(fs::exists(trashFolder + "/files"));
}

TEST_F(LinuxTrashContentTest, whatWasMovedThereLiesThere) {
    makeFolder("cache");
    ASSERT_TRUE(move("cache").ok());
    EXPECT_EQ(isEmpty(), false);
    fs::remove_all(trashFolder + "/files/cache");
    EXPECT_EQ(isEmpty(), true);
}

TEST_F(LinuxTrashContentTest, recordWithoutItsItemIsNothing) {
    fs::create_directories(trashFolder + "/files");
    fs::create_directories(trashFolder + "/info");
    writeFile(trashFolder + "/info/gone.trashinfo", "[Trash Info]\n");
    EXPECT_EQ(isEmpty(), true);
}

TEST_F(LinuxTrashContentTest, hiddenAndLinkedItemsCount) {
    fs::create_directories(trashFolder + "/files");
    writeFile(trashFolder + "/files/.hidden", "");
    EXPECT_EQ(isEmpty(), false);
    fs::remove(trashFolder + "/files/.hidden");
    fs::create_symlink("/does/not/exist", trashFolder + "/files/link");
    EXPECT_EQ(isEmpty(), false);
}

TEST_F(LinuxTrashContentTest, usersOwnLinkAsTheTrashFolderIsFollowed) {
    fs::create_directories(home + "/.local/share");
    fs::create_directories(beside("elsewhere/files"));
    fs::permissions(beside("elsewhere"), fs::perms::owner_all);
    fs::permissions(home + "/.local/share", fs::perms::owner_all);
    fs::create_symlink(beside("elsewhere"), trashFolder);
    EXPECT_EQ(isEmpty(), true);
    fill(beside("elsewhere"));
    EXPECT_EQ(isEmpty(), false);
}

TEST_F(LinuxTrashContentTest, linkToAFolderThatOthersMayWriteIsNotFollowed) {
    fs::create_directories(home + "/.local/share");
    fill(beside("elsewhere"));
    fs::permissions(beside("elsewhere"), fs::perms::all);
    fs::create_symlink(beside("elsewhere"), trashFolder);
    EXPECT_EQ(isEmpty(), std::nullopt);
}

TEST_F(LinuxTrashContentTest, linkAnywhereElseOnTheWayIsNotFollowed) {
    fill(beside("elsewhere/share/Trash"));
    fs::create_symlink(beside("elsewhere"), home + "/.local");
    EXPECT_EQ(isEmpty(), std::nullopt);
    fs::remove(home + "/.local");
    fs::create_directories(trashFolder);
    fs::create_symlink(beside("elsewhere/share/Trash/files"), trashFolder + "/files");
    EXPECT_EQ(isEmpty(), std::nullopt);
}

TEST_F(LinuxTrashContentTest, trashOfAGivenDataFolderIsTheOneThatCounts) {
    fill(trashFolder);
    EXPECT_EQ(isEmpty(beside("data")), true);
    fill(beside("data/Trash"));
    fs::remove_all(trashFolder);
    EXPECT_EQ(isEmpty(beside("data")), false);
    EXPECT_EQ(isEmpty(), true);
}

TEST_F(LinuxTrashContentTest, homeThatCannotBeOpenedTellsNothing) {
    fs::remove(home);
    EXPECT_EQ(isEmpty(), std::nullopt);
}

TEST_F(LinuxTrashContentTest, usersTrashOnAVolumeCounts) {
    const std::string top = mountVolume("8:1");
    EXPECT_EQ(isEmpty(), true);
    fill(top + "/.Trash-" + user());
    EXPECT_EQ(isEmpty(), false);
}

TEST_F(LinuxTrashContentTest, sharedTrashOfAVolumeCountsOnlyWhenItIsSticky) {
    const std::string top = mountVolume("8:1");
    fill(top + "/.Trash/" + user());
    EXPECT_EQ(isEmpty(), true);
    fs::permissions(top + "/.Trash", fs::perms::all | fs::perms::sticky_bit);
    EXPECT_EQ(isEmpty(), false);
}

TEST_F(LinuxTrashContentTest, trashOfAnotherUserOrBehindALinkOnAVolumeDoesNotCount) {
    const std::string top = mountVolume("8:1");
    fill(top + "/.Trash-" + user() + "1");
    fill(beside("elsewhere"));
    fs::create_symlink(beside("elsewhere"), top + "/.Trash-" + user());
    EXPECT_EQ(isEmpty(), true);
}

TEST_F(LinuxTrashContentTest, volumeWithoutADiskIsLookedAtOnlyWhenTheHomeLiesOnIt) {
    const std::string top = mountVolume("0:99");
    fill(top + "/.Trash-" + user());
    EXPECT_EQ(isEmpty(), false);

    const TemporaryFolder other("/dev/shm");
    fill(other.path(".Trash-" + user()));
    ASSERT_NE(mountNumber(other.path()), mountNumber(home));
    mounts = {{mountNumber(other.path()), 0, "0:99", "/", other.path()}};
    EXPECT_EQ(isEmpty(), true);
    mounts.back().device = "8:1";
    EXPECT_EQ(isEmpty(), false);
}

TEST_F(LinuxTrashContentTest, volumeThatAnotherOneCoversIsNotLookedAt) {
    const std::string top = mountVolume("8:1");
    fill(top + "/.Trash-" + user());
    mounts.back().id += 1'000'000;
    EXPECT_EQ(isEmpty(), true);
}

TEST_F(LinuxTrashContentTest, lookingReadsTheMountsOfThisMachine) {
    fill(trashFolder);
    EXPECT_EQ(LinuxTrash().isEmpty(home), false);
    EXPECT_EQ(LinuxTrash(home + "/.local/share").isEmpty(beside("home")), false);
}

}  // namespace
}  // namespace kestrune
