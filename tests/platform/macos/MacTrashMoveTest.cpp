#include "platform/macos/MacTrashMove.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <stdio.h>

#include <cerrno>

#include "tests/platform/macos/MacTrashHome.h"

namespace kestrune {
namespace {

using testing::IsEmpty;
using testing::StartsWith;

/// A system that is slow enough for somebody to exchange what lies on the way.
class MacTrashMoveTest : public MacTrashHome {
protected:
    static void exchange(const std::string& one, const std::string& other) {
        ASSERT_EQ(::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE), 0);
    }

    void expectLeftInTrash(const std::string& relativePath) {
        const auto result = move(relativePath);
        ASSERT_FALSE(result.ok()) << result.value().location;
        EXPECT_EQ(result.error().failure, TrashFailure::system);
        EXPECT_THAT(result.error().message,
                    StartsWith("This item is in the Trash, but its move couldn't be confirmed or undone."));
    }
};

TEST_F(MacTrashMoveTest, theSystemsOwnErrorIsPassedOnUnchangedAndTheRecordIsGone) {
    makeFolder("a");
    system.failure = "\u201Ca\u201D couldn\u2019t be moved to the trash.";
    const auto result = move("a");
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error(), (TrashError{TrashFailure::system, *system.failure}));
    EXPECT_EQ(recordOf(home + "/a"), "");
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");
}

TEST_F(MacTrashMoveTest, anItemThatMovedWithoutALocationHasMoved) {
    makeFolder("a");
    system.tellsLocation = false;
    expectFailure("a", TrashFailure::locationUnknown);
    EXPECT_EQ(contentOf(trashFolder + "/a/content"), "mine");
    EXPECT_NE(recordOf(trashFolder + "/a"), "");
}

TEST_F(MacTrashMoveTest, anItemThatArrivesByAnotherNameIsReportedThere) {
    makeFolder("a");
    system.arrivesAs = "a 12.34.56";
    const auto renamed = move("a");
    ASSERT_TRUE(renamed.ok()) << renamed.error().message;
    EXPECT_EQ(renamed.value().location, trashFolder + "/a 12.34.56");

    makeFolder("b");
    system.arrivesAs.reset();
    system.saysInstead = trashFolder + "/nowhere";
    const auto misreported = move("b");
    ASSERT_TRUE(misreported.ok()) << misreported.error().message;
    EXPECT_EQ(misreported.value().location, trashFolder + "/b");
}

TEST_F(MacTrashMoveTest, anItemInTheTrashOfAVolumeIsReportedThere) {
    fs::create_directories(beside("volume/.Trashes"));
    fake_darwin::files().volumes = {{beside("volume"), true}};
    system.trash = beside("volume/.Trashes/" + user());
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, system.trash + "/a");
    makeFolder("b");
    system.tellsLocation = false;
    expectFailure("b", TrashFailure::locationUnknown);
}

TEST_F(MacTrashMoveTest, anItemThatWentOutsideAnyTrashIsReportedWhereItIs) {
    system.trash = beside("elsewhere");
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, beside("elsewhere/a"));
}

TEST_F(MacTrashMoveTest, aLocationBehindALinkIsReportedWithoutIt) {
    fs::create_directory(trashFolder);
    fs::create_directory_symlink(trashFolder, beside("linked"));
    system.trash = beside("linked");
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/a");
}

TEST_F(MacTrashMoveTest, anotherItemThatMovedInsteadGoesBack) {
    makeFolder("a", "confirmed");
    makeFolder("other", "another");
    system.beforeRename = [this] { exchange(home + "/a", home + "/other"); };
    expectFailure("a", TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(home + "/a/content"), "another");
    EXPECT_EQ(contentOf(home + "/other/content"), "confirmed");
    EXPECT_EQ(recordOf(home + "/other"), "");
    EXPECT_TRUE(fs::is_empty(trashFolder));
}

TEST_F(MacTrashMoveTest, aLinkThatMovedInsteadGoesBack) {
    makeFolder("a");
    fs::create_directory(beside("victim"));
    fs::create_directory_symlink(beside("victim"), home + "/link");
    system.beforeRename = [this] { exchange(home + "/a", home + "/link"); };
    expectFailure("a", TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::is_symlink(home + "/a"));
    EXPECT_TRUE(fs::exists(beside("victim")));
    EXPECT_TRUE(fs::is_empty(trashFolder));
}

TEST_F(MacTrashMoveTest, whatLayInAnExchangedFolderGoesBackIntoThatFolder) {
    makeFolder("cache/npm", "confirmed");
    makeFolder("decoy/npm", "victim");
    system.beforeRename = [this] { exchange(home + "/cache", home + "/decoy"); };
    expectFailure("cache/npm", TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(home + "/cache/npm/content"), "victim");
    EXPECT_EQ(contentOf(home + "/decoy/npm/content"), "confirmed");
    EXPECT_TRUE(fs::is_empty(trashFolder));
}

TEST_F(MacTrashMoveTest, whatLayBehindALinkInTheFoldersPlaceGoesBackThere) {
    makeFolder("cache/npm", "confirmed");
    fs::create_directories(beside("victim/npm"));
    writeFile(beside("victim/npm/content"), "victim");
    fs::create_directory_symlink(beside("victim"), home + "/link");
    system.beforeRename = [this] { exchange(home + "/cache", home + "/link"); };
    expectFailure("cache/npm", TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(beside("victim/npm/content")), "victim");
    EXPECT_EQ(contentOf(home + "/link/npm/content"), "confirmed");
    EXPECT_TRUE(fs::is_empty(trashFolder));
}

TEST_F(MacTrashMoveTest, aFolderThatIsRenamedMeanwhileGivesTheSystemsErrorAndKeepsItsItem) {
    makeFolder("cache/npm");
    system.beforeRename = [this] { fs::rename(home + "/cache", home + "/away"); };
    const auto result = move("cache/npm");
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().message, "The system says: No such file or directory");
    EXPECT_EQ(contentOf(home + "/away/npm/content"), "mine");
    EXPECT_EQ(recordOf(home + "/away/npm"), "");
}

TEST_F(MacTrashMoveTest, whatCannotGoBackBecauseItsPlaceIsTakenIsToldToBeInTheTrash) {
    makeFolder("cache/npm", "confirmed");
    makeFolder("decoy/npm", "victim");
    system.beforeRename = [this] { exchange(home + "/cache", home + "/decoy"); };
    system.afterRename = system.beforeRename;
    expectLeftInTrash("cache/npm");
    EXPECT_EQ(contentOf(home + "/cache/npm/content"), "confirmed");
    EXPECT_EQ(contentOf(trashFolder + "/npm/content"), "victim");
    EXPECT_EQ(recordOf(home + "/cache/npm"), "");
}

TEST_F(MacTrashMoveTest, whatCannotGoBackOnThisFileSystemIsToldToBeInTheTrash) {
    for (const int error : {ENOTSUP, EXDEV, EPERM}) {
        makeFolder("a", "confirmed");
        makeFolder("other", "another");
        system.beforeRename = [this] { exchange(home + "/a", home + "/other"); };
        fake_darwin::files().renameError = error;
        expectLeftInTrash("a");
        EXPECT_EQ(contentOf(home + "/other/content"), "confirmed");
        EXPECT_EQ(contentOf(trashFolder + "/a/content"), "another");
        fs::remove_all(trashFolder);
        fs::remove_all(home + "/other");
    }
}

TEST_F(MacTrashMoveTest, anotherItemThatMovedNobodyKnowsWhereIsToldToBeInTheTrash) {
    makeFolder("a", "confirmed");
    makeFolder("other", "another");
    system.tellsLocation = false;
    system.beforeRename = [this] { exchange(home + "/a", home + "/other"); };
    expectLeftInTrash("a");
    EXPECT_EQ(contentOf(home + "/other/content"), "confirmed");
}

TEST_F(MacTrashMoveTest, whatWasExchangedInTheTrashIsNotTakenForTheItem) {
    makeFolder("a", "confirmed");
    makeFolder("other", "another");
    fs::create_directory(trashFolder);
    fs::rename(home + "/other", trashFolder + "/other");
    system.afterRename = [this] { exchange(trashFolder + "/a", trashFolder + "/other"); };
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(contentOf(result.value().location + "/content"), "confirmed");
    EXPECT_EQ(contentOf(trashFolder + "/a/content"), "another");
}

TEST_F(MacTrashMoveTest, whatIsExchangedInTheTrashBeforeItGoesBackStaysInTheTrash) {
    trash("x", "of the Trash");
    makeFolder("a", "confirmed");
    makeFolder("other", "another");
    system.beforeRename = [this] { exchange(home + "/a", home + "/other"); };
    fake_darwin::files().beforeRename = [this] { exchange(trashFolder + "/a", trashFolder + "/x"); };
    expectLeftInTrash("a");
    EXPECT_FALSE(fs::exists(home + "/a"));
    EXPECT_EQ(contentOf(trashFolder + "/a/content"), "of the Trash");
    EXPECT_EQ(contentOf(trashFolder + "/x/content"), "another");
}

TEST_F(MacTrashMoveTest, whatIsExchangedInItsPlaceAfterItWentBackStaysThere) {
    makeFolder("a", "confirmed");
    makeFolder("other", "another");
    system.beforeRename = [this] { exchange(home + "/a", home + "/other"); };
    fake_darwin::files().afterRename = [this] { exchange(home + "/a", home + "/other"); };
    expectFailure("a", TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(home + "/a/content"), "confirmed");
    EXPECT_EQ(contentOf(home + "/other/content"), "another");
    EXPECT_EQ(recordOf(home + "/a"), "");
    EXPECT_TRUE(fs::is_empty(trashFolder));
}

TEST_F(MacTrashMoveTest, theItemThatComesBackForALinkIsNotTakenToTheTrash) {
    makeFolder("a", "confirmed");
    fs::create_directory_symlink(beside("victim"), home + "/link");
    system.beforeRename = [this] { exchange(home + "/a", home + "/link"); };
    fake_darwin::files().afterRename = [this] { exchange(home + "/a", home + "/link"); };
    expectFailure("a", TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(home + "/a/content"), "confirmed");
    EXPECT_TRUE(fs::is_symlink(home + "/link"));
    EXPECT_TRUE(fs::is_empty(trashFolder));
}

TEST_F(MacTrashMoveTest, aThirdItemThatComesAfterItWentBackIsNotTakenToTheTrash) {
    makeFolder("a", "confirmed");
    makeFolder("other", "another");
    makeFolder("third", "never in the Trash");
    system.beforeRename = [this] { exchange(home + "/a", home + "/other"); };
    fake_darwin::files().afterRename = [this] { exchange(home + "/a", home + "/third"); };
    expectFailure("a", TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(home + "/a/content"), "never in the Trash");
    EXPECT_EQ(contentOf(home + "/third/content"), "another");
    EXPECT_TRUE(fs::is_empty(trashFolder));
}

TEST_F(MacTrashMoveTest, withoutTheKernelsWordForTheFolderNothingIsHandedToTheSystem) {
    makeFolder("a");
    fake_darwin::files().pathError = ENOENT;
    expectFailure("a", TrashFailure::protectedOrChanged);
    EXPECT_THAT(system.paths, IsEmpty());
    EXPECT_EQ(recordOf(home + "/a"), "");
}

TEST_F(MacTrashMoveTest, onAVolumeThatKeepsNoAttributesTheItemMovesWithoutARecord) {
    fake_darwin::files().attributeError = ENOTSUP;
    const std::string location = trash("a");
    EXPECT_EQ(contentOf(location + "/content"), "mine");
    const auto planned = macTrash.planPutBack(home, location);
    ASSERT_FALSE(planned.ok());
    EXPECT_EQ(planned.error().failure, PutBackFailure::noRecord);
}

TEST_F(MacTrashMoveTest, anItemThatTheSystemPassedOnAndOneThatIsGoneAreToldApart) {
    makeFolder("a");
    system.tellsLocation = false;
    system.afterRename = [this] { fs::remove_all(trashFolder + "/a"); };
    expectFailure("a", TrashFailure::locationUnknown);
    makeFolder("b");
    system.afterRename = [this] { fs::rename(trashFolder + "/b", beside("b")); };
    expectLeftInTrash("b");
}

}  // namespace
}  // namespace kestrune
