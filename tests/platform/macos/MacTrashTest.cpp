#include "platform/macos/MacTrash.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/fakes/OrdinaryUser.h"
#include "tests/platform/TakenDescriptors.h"
#include "tests/platform/macos/MacTrashHome.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class MacTrashTest : public MacTrashHome {};

TEST_F(MacTrashTest, movesAFolderWithItsContentAndARecord) {
    makeFolder(".cache/npm");
    const auto result = move(".cache/npm");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/npm");
    EXPECT_EQ(contentOf(trashFolder + "/npm/content"), "mine");
    EXPECT_FALSE(fs::exists(home + "/.cache/npm"));
    EXPECT_THAT(recordOf(trashFolder + "/npm"), EndsWith(" " + home + "/.cache/npm"));
    EXPECT_THAT(system.paths, ElementsAre(home + "/.cache/npm"));
}

TEST_F(MacTrashTest, movesARegularFile) {
    writeFile(home + "/log", "lines");
    ASSERT_TRUE(move("log").ok());
    EXPECT_EQ(contentOf(trashFolder + "/log"), "lines");
}

TEST_F(MacTrashTest, strangeNamesArriveByteForByteAndAreRecorded) {
    for (const std::string name : {"with space", "two\nlines", "100%", "caf\xC3\xA9", "not\xFFutf8", "-rf", "a'b\"c",
                                   "...", "\\134", "tab\there", " "}) {
        makeFolder(name, name);
        const auto result = move(name);
        ASSERT_TRUE(result.ok()) << name << result.error().message;
        EXPECT_EQ(contentOf(trashFolder + "/" + name + "/content"), name);
        EXPECT_THAT(recordOf(trashFolder + "/" + name), EndsWith(" " + home + "/" + name));
    }
}

TEST_F(MacTrashTest, aMissingItemOrFolderIsMissingAndTheOthersStillMove) {
    makeFolder("a");
    writeFile(home + "/file", "");
    expectFailure("b", TrashFailure::missing);
    expectFailure("a/b/c", TrashFailure::missing);
    expectFailure("file/b", TrashFailure::missing);
    EXPECT_EQ(macTrash.moveToTrash({home + "/none", "a", {}}).error().failure, TrashFailure::missing);
    EXPECT_THAT(system.paths, IsEmpty());
    EXPECT_TRUE(move("a").ok());
}

TEST_F(MacTrashTest, pathsThatCouldLeaveTheHomeAreRefused) {
    fs::create_directory(beside("outside"));
    makeFolder("a");
    for (const std::string path : {"", ".", "..", "../outside", "a/../../outside", "a//content", "/a", "a/", "a/."}) {
        expectFailure(path, TrashFailure::protectedOrChanged);
    }
    expectFailure(beside("outside"), TrashFailure::protectedOrChanged);
    expectFailure(std::string("a\0b", 3), TrashFailure::protectedOrChanged);
    EXPECT_EQ(macTrash.moveToTrash({"home", "a", {}}).error().failure, TrashFailure::protectedOrChanged);
    EXPECT_EQ(macTrash.moveToTrash({home + std::string(1, '\0'), "a", {}}).error().failure,
              TrashFailure::protectedOrChanged);
    EXPECT_THAT(system.paths, IsEmpty());
}

TEST_F(MacTrashTest, aLinkAtTheItemOrAboveItIsRefused) {
    fs::create_directories(beside("victim/a"));
    fs::create_directory_symlink(beside("victim/a"), home + "/a");
    fs::create_directory_symlink(beside("victim"), home + "/folder");
    expectFailure("a", TrashFailure::protectedOrChanged);
    expectFailure("folder/a", TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::is_symlink(home + "/a"));
    EXPECT_TRUE(fs::exists(beside("victim/a")));
    EXPECT_THAT(system.paths, IsEmpty());
}

TEST_F(MacTrashTest, aLinkInAGivenHomeIsRefused) {
    makeFolder("a");
    fs::create_directory_symlink(home, beside("linked"));
    EXPECT_EQ(macTrash.moveToTrash({beside("linked"), "a", {}}).error().failure, TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::exists(home + "/a"));
}

TEST_F(MacTrashTest, aHomeSpelledLooselyIsTheSameHome) {
    makeFolder("a");
    const auto result = macTrash.moveToTrash({home + "//./x/../", "a", {}});
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/a");
    EXPECT_THAT(recordOf(trashFolder + "/a"), EndsWith(" " + home + "/a"));
}

TEST_F(MacTrashTest, anythingButAFolderOrAFileIsRefusedAtOnce) {
    ASSERT_EQ(::mkfifo((home + "/fifo").c_str(), S_IRUSR | S_IWUSR), 0);
    expectFailure("fifo", TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::is_fifo(home + "/fifo"));
}

TEST_F(MacTrashTest, onlyTheExpectedItemMoves) {
    makeFolder("a", "confirmed");
    const auto confirmed = macTrash.identity(home, "a");
    ASSERT_TRUE(confirmed);
    fs::rename(home + "/a", home + "/kept");
    makeFolder("a", "another");
    const auto refused = move("a", confirmed);
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.error().failure, TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(home + "/a/content"), "another");
    EXPECT_EQ(recordOf(home + "/a"), "");

    const auto moved = move("kept", confirmed);
    ASSERT_TRUE(moved.ok()) << moved.error().message;
    EXPECT_EQ(contentOf(moved.value().location + "/content"), "confirmed");
}

TEST_F(MacTrashTest, anItemBornAtAnotherTimeIsAnotherItem) {
    makeFolder("a");
    auto expected = macTrash.identity(home, "a");
    ASSERT_TRUE(expected);
    ASSERT_NE(expected->birthSeconds, 0);
    ++expected->birthNanoseconds;
    EXPECT_FALSE(move("a", expected).ok());
    EXPECT_TRUE(fs::exists(home + "/a"));
}

TEST_F(MacTrashTest, nothingOrALinkHasNoIdentity) {
    makeFolder("a");
    fs::create_directory_symlink("a", home + "/link");
    EXPECT_FALSE(macTrash.identity(home, "b"));
    EXPECT_FALSE(macTrash.identity(home, "link"));
    EXPECT_FALSE(macTrash.identity(home, "link/content"));
    EXPECT_FALSE(macTrash.identity(home, "../home/a"));
    EXPECT_EQ(macTrash.identity(home, "a"), macTrash.identity(home, "a"));
    EXPECT_NE(macTrash.identity(home, "a"), macTrash.identity(home, "a/content"));
}

TEST_F(MacTrashTest, theTrashAndWhatLiesInItAreRefused) {
    const std::string location = trash("a");
    for (const char* path : {".Trash", ".Trash/a"}) {
        const auto result = move(path);
        ASSERT_FALSE(result.ok());
        EXPECT_THAT(result.error().message, HasSubstr("It holds the Trash itself. Choose another item."));
    }
    EXPECT_TRUE(fs::exists(location));
}

TEST_F(MacTrashTest, aFolderThatAVolumeIsMountedAtOrBelowIsRefused) {
    makeFolder("a/b");
    for (const std::string& mountPoint :
         {home + "/a", home + "/a/b", home + "/a/b/c", "/System/Volumes/Data" + home + "/a/b"}) {
        fake_darwin::files().volumes = {{"/", true}, {mountPoint, false}};
        expectFailure("a", TrashFailure::protectedOrChanged);
    }
    fake_darwin::files().volumes = {{"/", true}, {home + "/ab", true}};
    EXPECT_TRUE(move("a").ok());
}

TEST_F(MacTrashTest, withoutKnowingTheVolumesNothingMoves) {
    makeFolder("a");
    fake_darwin::files().volumesError = EIO;
    const auto result = move("a");
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().message,
              "Couldn't move this item to the Trash: Input/output error. Check the disk, then try again.");
    EXPECT_THAT(system.paths, IsEmpty());
}

TEST_F(MacTrashTest, whatAnotherUserOwnsIsRefused) {
    if (::geteuid() != 0) {
        // Without the right to give files away the root folder is what another user owns.
        EXPECT_EQ(macTrash.moveToTrash({"/", "etc", {}}).error().failure, TrashFailure::protectedOrChanged);
        return;
    }
    constexpr uid_t another = 12345;
    makeFolder("theirs");
    ASSERT_EQ(::chown((home + "/theirs").c_str(), another, another), 0);
    expectFailure("theirs", TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::exists(home + "/theirs"));
}

TEST_F(MacTrashTest, whatMayNotBeReadMovesWithoutARecord) {
    EXPECT_TRUE(asOrdinaryUser([] {
        const TemporaryFolder root;
        const std::string own = fs::canonical(root.path()).string();
        FakeMacTrashItem mover(own + "/.Trash");
        writeFile(own + "/closed", "lines");
        fs::permissions(own + "/closed", fs::perms::none);
        const auto result = MacTrash(mover).moveToTrash({own, "closed", {}});
        return result.ok() && result.value().location == own + "/.Trash/closed" &&
               fake_darwin::attribute(own + "/.Trash/closed", MacTrashRecord::attribute).empty();
    }));
}

TEST_F(MacTrashTest, aRunWithoutFreeDescriptorsLeavesTheItemInPlace) {
    makeFolder("a");
    int failures = 0;
    {
        TakenDescriptors taken;
        while (!move("a").ok() && taken.release()) {
            ++failures;
            EXPECT_TRUE(fs::exists(home + "/a"));
            EXPECT_EQ(recordOf(home + "/a"), "");
        }
    }
    EXPECT_GT(failures, 2);
    EXPECT_FALSE(fs::exists(home + "/a"));
}

}  // namespace
}  // namespace kestrune
