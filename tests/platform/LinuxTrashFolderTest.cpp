#include "platform/linux/LinuxTrashFolder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/platform/TrashHome.h"

namespace kestrune {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class LinuxTrashFolderTest : public TrashHome {};

TEST_F(LinuxTrashFolderTest, makesTheTrashForItsOwnerAlone) {
    makeFolder("a");
    ASSERT_TRUE(move("a").ok());
    for (const char* made : {"", "/files", "/info"}) {
        EXPECT_EQ(fs::status(trashFolder + made).permissions(), fs::perms::owner_all) << made;
    }
    EXPECT_EQ(fs::status(trashFolder + "/info/a.trashinfo").permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(LinuxTrashFolderTest, usesTheGivenDataFolder) {
    makeFolder("a");
    LinuxTrash trash(beside("data/deep"));
    const auto result = trash.moveToTrash({home, "a", {}});
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, beside("data/deep/Trash/files/a"));
}

TEST_F(LinuxTrashFolderTest, aDataFolderThatIsNotAbsoluteCountsAsNone) {
    for (const std::string given : {"", "data", "./data"}) {
        makeFolder("a");
        LinuxTrash trash(given);
        const auto result = trash.moveToTrash({home, "a", {}});
        ASSERT_TRUE(result.ok()) << result.error().message;
        EXPECT_THAT(result.value().location, StartsWith(trashFolder + "/files/"));
    }
}

TEST_F(LinuxTrashFolderTest, theUsersOwnLinkedTrashIsFollowedOnce) {
    fs::create_directories(home + "/.local/share");
    fs::create_directory(beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), trashFolder);
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, beside("elsewhere/files/a"));
    EXPECT_THAT(contentOf(beside("elsewhere/info/a.trashinfo")), HasSubstr("Path=" + home + "/a\n"));
}

TEST_F(LinuxTrashFolderTest, aRelativeLinkToTheTrashWorksAsWell) {
    fs::create_directories(home + "/.local/share");
    fs::create_directory(home + "/bin");
    fs::create_directory_symlink("../../bin", trashFolder);
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, home + "/bin/files/a");
}

TEST_F(LinuxTrashFolderTest, aLinkedTrashThatOthersMayWriteIsRefused) {
    fs::create_directories(home + "/.local/share");
    fs::create_directory(beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), trashFolder);
    makeFolder("a");
    for (const std::string& open : {beside("elsewhere"), home + "/.local/share"}) {
        for (const auto who : {fs::perms::group_write, fs::perms::others_write}) {
            fs::permissions(open, who, fs::perm_options::add);
            expectFailure("a", TrashFailure::system);
            fs::permissions(open, who, fs::perm_options::remove);
        }
    }
    EXPECT_TRUE(fs::is_empty(beside("elsewhere")));
    EXPECT_TRUE(move("a").ok());
}

TEST_F(LinuxTrashFolderTest, aSecondLinkBehindTheLinkedTrashIsRefused) {
    fs::create_directories(home + "/.local/share");
    fs::create_directory(beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), beside("second"));
    fs::create_directory_symlink(beside("second"), trashFolder);
    makeFolder("a");
    expectFailure("a", TrashFailure::system);
    EXPECT_TRUE(fs::exists(home + "/a"));
    EXPECT_TRUE(fs::is_empty(beside("elsewhere")));
}

TEST_F(LinuxTrashFolderTest, aLinkThatLeadsNowhereOrToAFileIsRefused) {
    fs::create_directories(home + "/.local/share");
    makeFolder("a");
    writeFile(beside("file"), "");
    for (const std::string& target : {beside("none"), beside("file"), trashFolder}) {
        fs::create_directory_symlink(target, trashFolder);
        expectFailure("a", TrashFailure::system);
        fs::remove(trashFolder);
    }
    EXPECT_TRUE(fs::exists(home + "/a"));
}

TEST_F(LinuxTrashFolderTest, anyOtherLinkOnTheWayToTheTrashIsRefused) {
    makeFolder("a");
    fs::create_directories(beside("victim"));
    for (const std::string place :
         {"/.local", "/.local/share", "/.local/share/Trash/files", "/.local/share/Trash/info"}) {
        fs::create_directories(fs::path(home + place).parent_path());
        fs::create_directory_symlink(beside("victim"), home + place);
        const auto result = move("a");
        ASSERT_FALSE(result.ok()) << place;
        EXPECT_THAT(result.error().message, HasSubstr("isn't a folder of yours alone")) << place;
        EXPECT_TRUE(fs::is_empty(beside("victim"))) << place;
        fs::remove_all(home + "/.local");
    }
    EXPECT_TRUE(fs::exists(home + "/a/content"));
}

TEST_F(LinuxTrashFolderTest, aFileInTheTrashsPlaceIsRefused) {
    makeFolder("a");
    for (const std::string place : {"/.local", "/.local/share/Trash", "/.local/share/Trash/files"}) {
        fs::create_directories(fs::path(home + place).parent_path());
        writeFile(home + place, "precious");
        expectFailure("a", TrashFailure::system);
        EXPECT_EQ(contentOf(home + place), "precious");
        fs::remove_all(home + "/.local");
    }
}

TEST_F(LinuxTrashFolderTest, aFifoInTheTrashsPlaceNeverBlocks) {
    makeFolder("a");
    fs::create_directories(trashFolder + "/info");
    ASSERT_EQ(::mkfifo((trashFolder + "/files").c_str(), S_IRWXU), 0);
    expectFailure("a", TrashFailure::system);
    ASSERT_EQ(::mkfifo((trashFolder + "/info/a.trashinfo").c_str(), S_IRWXU), 0);
    fs::remove(trashFolder + "/files");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/files/a.2");
}

TEST_F(LinuxTrashFolderTest, aTrashThatEverybodyMayWriteIsRefused) {
    makeFolder("a");
    fs::create_directories(trashFolder + "/files");
    fs::create_directories(trashFolder + "/info");
    for (const char* open : {"", "/files", "/info"}) {
        fs::permissions(trashFolder + open, fs::perms::others_write, fs::perm_options::add);
        expectFailure("a", TrashFailure::system);
        fs::permissions(trashFolder + open, fs::perms::others_write, fs::perm_options::remove);
    }
    EXPECT_TRUE(move("a").ok());
}

}  // namespace
}  // namespace kestrune
