#include <fcntl.h>
#include <gmock/gmock.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>

#include "tests/platform/TakenDescriptors.h"
#include "tests/platform/macos/MacPutBackHome.h"

namespace kestrune {
namespace {

using testing::StartsWith;

class MacPutBack : public MacPutBackHome {};

TEST_F(MacPutBack, aFolderIsBackByteForByteAndItsRecordIsGone) {
    const std::string location = trash(".cache/npm");
    const PutBackPlan confirmed = goodPlan(location);
    EXPECT_EQ(confirmed.location, location);
    EXPECT_EQ(confirmed.originalPath, home + "/.cache/npm");
    const auto result = putBack(confirmed);
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value(), home + "/.cache/npm");
    EXPECT_EQ(contentOf(home + "/.cache/npm/content"), "mine");
    EXPECT_EQ(macTrash.identity(home, ".cache/npm"), confirmed.item);
    EXPECT_EQ(recordOf(home + "/.cache/npm"), "");
    EXPECT_FALSE(fs::exists(location));
}

TEST_F(MacPutBack, aRegularFileGoesBack) {
    writeFile(home + "/log", "lines");
    ASSERT_TRUE(move("log").ok());
    ASSERT_TRUE(putBack(goodPlan(trashFolder + "/log")).ok());
    EXPECT_EQ(contentOf(home + "/log"), "lines");
}

TEST_F(MacPutBack, planningChangesNothing) {
    const std::string location = trash("a");
    const std::string record = recordOf(location);
    const PutBackPlan first = goodPlan(location);
    EXPECT_EQ(goodPlan(location), first);
    EXPECT_EQ(recordOf(location), record);
    EXPECT_FALSE(fs::exists(home + "/a"));
}

TEST_F(MacPutBack, strangeNamesComeBackByteForByte) {
    for (const std::string name : {"with space", "two\nlines", "100%", "%41", "caf\xC3\xA9", "not\xFFutf8", "-rf",
                                   "a'b\"c", "...", "\\134", "tab\there", " ", "1 2 3 /a"}) {
        const std::string relative = lastPathComponent(name) == name ? name : "1 2 3 /a";
        const std::string location = trash(relative, name);
        const auto result = putBack(goodPlan(location));
        ASSERT_TRUE(result.ok()) << name << result.error().message;
        EXPECT_EQ(result.value(), home + "/" + relative);
        EXPECT_EQ(contentOf(home + "/" + relative + "/content"), name);
    }
}

TEST_F(MacPutBack, theLongestNamesAndPathsComeBackWhole) {
    const std::string name(255, 'n');
    ASSERT_TRUE(putBack(goodPlan(trash(name))).ok());
    EXPECT_TRUE(fs::exists(home + "/" + name + "/content"));
    std::string deep;
    while (deep.size() < 3500) {
        deep += std::string(200, '\xFF') + "/";
    }
    ASSERT_TRUE(putBack(goodPlan(trash(deep + "a"))).ok());
    EXPECT_TRUE(fs::exists(home + "/" + deep + "a/content"));
}

TEST_F(MacPutBack, aNumberedNameGoesBackToThePlaceItsRecordNames) {
    trash("a", "first");
    const std::string location = trash("a", "second");
    ASSERT_EQ(location, trashFolder + "/a 2");
    ASSERT_TRUE(putBack(goodPlan(location)).ok());
    EXPECT_EQ(contentOf(home + "/a/content"), "second");
    EXPECT_EQ(contentOf(trashFolder + "/a/content"), "first");
}

TEST_F(MacPutBack, whatIsInTheWayStaysAndIsNamed) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    const std::string place = home + "/a";
    const auto refuseBoth = [&] {
        expectNoPlan(location, PutBackFailure::inTheWay, place);
        expectNotPutBack(confirmed, PutBackFailure::inTheWay, place);
        EXPECT_EQ(contentOf(location + "/content"), "mine");
    };
    writeFile(place, "file");
    refuseBoth();
    EXPECT_EQ(contentOf(place), "file");
    fs::remove(place);
    fs::create_directory(place);
    refuseBoth();
    fs::remove(place);
    fs::create_symlink("/does/not/exist", place);
    refuseBoth();
    EXPECT_TRUE(fs::is_symlink(place));
    fs::remove(place);
    EXPECT_TRUE(putBack(confirmed).ok());
}

TEST_F(MacPutBack, aMissingFolderIsNamedAndNotMade) {
    const std::string location = trash("deep/folder/a");
    const PutBackPlan confirmed = goodPlan(location);
    fs::remove_all(home + "/deep");
    expectNoPlan(location, PutBackFailure::noFolder, home + "/deep/folder");
    expectNotPutBack(confirmed, PutBackFailure::noFolder, home + "/deep/folder");
    EXPECT_FALSE(fs::exists(home + "/deep"));
    fs::create_directories(home + "/deep/folder");
    EXPECT_TRUE(putBack(confirmed).ok());
}

TEST_F(MacPutBack, aFolderThatIsALinkOrAFileNowIsNotEntered) {
    const std::string location = trash("deep/folder/a");
    const PutBackPlan confirmed = goodPlan(location);
    fs::create_directories(beside("victim/folder"));
    for (const std::string replaced : {"/deep", "/deep/folder"}) {
        fs::rename(home + replaced, beside("away"));
        fs::create_directory_symlink(beside(replaced == "/deep" ? "victim" : "victim/folder"), home + replaced);
        expectNoPlan(location, PutBackFailure::noFolder, home + "/deep/folder");
        expectNotPutBack(confirmed, PutBackFailure::noFolder, home + "/deep/folder");
        fs::remove(home + replaced);
        writeFile(home + replaced, "file");
        expectNotPutBack(confirmed, PutBackFailure::noFolder, home + "/deep/folder");
        fs::remove(home + replaced);
        fs::rename(beside("away"), home + replaced);
    }
    EXPECT_TRUE(fs::is_empty(beside("victim/folder")));
    EXPECT_TRUE(putBack(confirmed).ok());
}

TEST_F(MacPutBack, whatWasRestoredOrEmptiedMeanwhileIsMissing) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    fs::rename(location, home + "/a");
    expectNoPlan(location, PutBackFailure::missing);
    expectNotPutBack(confirmed, PutBackFailure::missing);
    fs::remove_all(trashFolder);
    expectNoPlan(location, PutBackFailure::missing);
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");
}

TEST_F(MacPutBack, onlyTheItemThatWasPlannedGoesBack) {
    const std::string location = trash("a", "confirmed");
    const PutBackPlan confirmed = goodPlan(location);
    fs::rename(location, beside("kept"));
    fs::rename(trash("a", "another"), trashFolder + "/b");
    fs::rename(trashFolder + "/b", location);
    expectNotPutBack(confirmed, PutBackFailure::changed);
    EXPECT_EQ(contentOf(location + "/content"), "another");
    EXPECT_FALSE(fs::exists(home + "/a"));
    PutBackPlan born = goodPlan(location);
    ++born.item.birthNanoseconds;
    expectNotPutBack(born, PutBackFailure::changed);
}

TEST_F(MacPutBack, onlyLocationsInTheUsersTrashAreLookedAt) {
    trash("a");
    fs::create_directories(beside(".Trash/a"));
    fs::create_directories(beside(".Trashes/" + user() + "/a"));
    makeFolder(".Trash/a/b");
    for (const std::string& location :
         {std::string(), std::string("a"), std::string("/"), std::string("/a"), trashFolder, trashFolder + "/",
          trashFolder + "/a/", home + "//.Trash/a", trashFolder + "/../.Trash/a", trashFolder + "/a/b",
          trashFolder + "/a" + std::string(1, '\0'), trashFolder.substr(1) + "/a", trashFolder + "/..",
          beside(".Trash/a"), beside(".Trashes/" + user() + "/a")}) {
        expectNoPlan(location, PutBackFailure::changed);
    }
    EXPECT_TRUE(plan(trashFolder + "/a").ok());
}

TEST_F(MacPutBack, theTrashOfTheVolumeThatTheHomeLiesOnIsTheUsersToo) {
    fake_darwin::files().volumes = {{beside("volume"), true}};
    system.trash = beside("volume/.Trashes/" + user());
    fs::create_directories(beside("volume/.Trashes"));
    const std::string location = trash("a");
    ASSERT_EQ(location, system.trash + "/a");
    EXPECT_TRUE(putBack(goodPlan(location)).ok());
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");

    trash("a");
    fs::rename(beside("volume/.Trashes"), beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), beside("volume/.Trashes"));
    expectNoPlan(location, PutBackFailure::changed);
}

TEST_F(MacPutBack, aTrashBehindALinkIsRefused) {
    const std::string location = trash("a");
    fs::rename(trashFolder, beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), trashFolder);
    expectNoPlan(location, PutBackFailure::changed);
    EXPECT_TRUE(fs::exists(beside("elsewhere/a/content")));
}

TEST_F(MacPutBack, aLinkAFifoOrAMountedVolumeInTheTrashIsNotPutBack) {
    const std::string location = trash("a");
    fake_darwin::files().volumes = {{location + "/volume", true}};
    expectNoPlan(location, PutBackFailure::changed);
    fake_darwin::files().volumes.clear();
    fs::rename(location, beside("kept"));
    fs::create_directory_symlink(beside("kept"), location);
    expectNoPlan(location, PutBackFailure::changed);
    fs::remove(location);
    ASSERT_EQ(::mkfifo(location.c_str(), S_IRWXU), 0);
    expectNoPlan(location, PutBackFailure::changed);
}

TEST_F(MacPutBack, aTrashThatEverybodyMayWriteIsRefused) {
    const std::string location = trash("a");
    fs::permissions(trashFolder, fs::perms::others_write, fs::perm_options::add);
    const auto planned = plan(location);
    ASSERT_FALSE(planned.ok());
    EXPECT_EQ(planned.error().message,
              "Couldn't put this item back: The Trash folder isn't a folder of yours alone. Check its owner, its "
              "permissions and links that lead to it, then try again.");
}

TEST_F(MacPutBack, whatAnotherUserOwnsIsRefused) {
    const std::string location = trash("a");
    if (::geteuid() != 0) {
        // Without the right to give files away the plan of one's own item is all there is to see.
        EXPECT_TRUE(plan(location).ok());
        return;
    }
    constexpr uid_t another = 12345;
    ASSERT_EQ(::lchown(location.c_str(), another, another), 0);
    expectNoPlan(location, PutBackFailure::changed);
    ASSERT_EQ(::lchown(location.c_str(), 0, 0), 0);
    ASSERT_EQ(::lchown(trashFolder.c_str(), another, another), 0);
    expectNoPlan(location, PutBackFailure::system);
}

TEST_F(MacPutBack, aHomeThatIsNoneOrALinkGetsNothing) {
    const std::string location = trash("a");
    fs::create_directory_symlink(home, beside("linked"));
    fs::create_directory(beside("other"));
    for (const std::string& given : {std::string(), std::string("home"), beside("linked"), beside("other"),
                                     beside("none"), home + std::string(1, '\0')}) {
        EXPECT_FALSE(macTrash.planPutBack(given, location).ok()) << given;
    }
    EXPECT_TRUE(macTrash.planPutBack(home + "//./x/..", location).ok());
}

TEST_F(MacPutBack, anotherDiskIsNamedAndTheItemStays) {
    const TemporaryFolder memory("/dev/shm");
    const std::string volume = fs::canonical(memory.path()).string();
    fake_darwin::files().volumes = {{volume, true}};
    const std::string inTrash = volume + "/.Trashes/" + user();
    fs::create_directories(inTrash + "/a");
    fs::permissions(inTrash, fs::perms::owner_all);
    fs::create_directory(home + "/folder");
    giveRecord(inTrash + "/a", home + "/folder/a");
    expectNoPlan(inTrash + "/a", PutBackFailure::otherDisk, home + "/folder");
    EXPECT_TRUE(fs::exists(inTrash + "/a"));
}

TEST_F(MacPutBack, aRunWithoutFreeDescriptorsLeavesTheItemInTheTrash) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    int failures = 0;
    {
        TakenDescriptors taken;
        while (!putBack(confirmed).ok() && taken.release()) {
            ++failures;
            EXPECT_TRUE(fs::exists(location));
            EXPECT_NE(recordOf(location), "");
        }
    }
    EXPECT_GT(failures, 2);
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");
}

TEST_F(MacPutBack, aFileSystemThatCannotRenameWithoutReplacingIsNotPutBackOn) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    fake_darwin::files().renameError = ENOTSUP;
    const auto result = putBack(confirmed);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().message,
              "Couldn't put this item back: This system can't move items safely. Move it with your file manager "
              "instead.");
    EXPECT_EQ(contentOf(location + "/content"), "mine");
    for (const auto& [error, failure] :
         {std::pair(EXDEV, PutBackFailure::otherDisk), std::pair(EEXIST, PutBackFailure::inTheWay),
          std::pair(ENOENT, PutBackFailure::noFolder)}) {
        fake_darwin::files().renameError = error;
        const auto refused = putBack(confirmed);
        ASSERT_FALSE(refused.ok());
        EXPECT_EQ(refused.error().failure, failure);
    }
}

TEST_F(MacPutBack, anotherItemOfTheTrashThatMovedInsteadGoesBackToTheTrash) {
    const std::string location = trash("a", "confirmed");
    trash("other", "another");
    fake_darwin::files().beforeRename = [this, location] {
        ASSERT_EQ(::renameat2(AT_FDCWD, location.c_str(), AT_FDCWD, (trashFolder + "/other").c_str(), RENAME_EXCHANGE),
                  0);
    };
    expectNotPutBack(goodPlan(location), PutBackFailure::changed);
    EXPECT_EQ(contentOf(location + "/content"), "another");
    EXPECT_EQ(contentOf(trashFolder + "/other/content"), "confirmed");
    EXPECT_FALSE(fs::exists(home + "/a"));
}

TEST_F(MacPutBack, aFolderThatIsTakenAwayMeanwhileGivesTheItemBackToTheTrash) {
    const std::string location = trash("folder/a");
    fake_darwin::files().afterRename = [this] { fs::rename(home + "/folder", beside("away")); };
    expectNotPutBack(goodPlan(location), PutBackFailure::noFolder, home + "/folder");
    EXPECT_EQ(contentOf(location + "/content"), "mine");
    EXPECT_NE(recordOf(location), "");
    EXPECT_TRUE(fs::is_empty(beside("away")));
}

TEST_F(MacPutBack, whatSomebodyPutInTheItemsPlaceAfterItArrivedStaysThere) {
    const std::string location = trash("a");
    makeFolder("other", "another");
    fake_darwin::files().afterRename = [this] {
        ASSERT_EQ(::renameat2(AT_FDCWD, (home + "/a").c_str(), AT_FDCWD, (home + "/other").c_str(), RENAME_EXCHANGE),
                  0);
    };
    const auto result = putBack(goodPlan(location));
    ASSERT_FALSE(result.ok());
    EXPECT_THAT(result.error().message, StartsWith("This move couldn't be confirmed or undone."));
    EXPECT_EQ(contentOf(home + "/a/content"), "another");
    EXPECT_EQ(contentOf(home + "/other/content"), "mine");
    EXPECT_FALSE(fs::exists(location));
}

TEST_F(MacPutBack, aMoveThatTookPlaceThoughTheSystemReportsAFailureCounts) {
    const std::string location = trash("a");
    fake_darwin::files().renameError = EIO;
    fake_darwin::files().beforeRename = [this, location] { fs::rename(location, home + "/a"); };
    const auto result = putBack(goodPlan(location));
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");
}

}  // namespace
}  // namespace kestrune
