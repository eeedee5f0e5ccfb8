#include "platform/macos/MacTrashFolders.h"

#include "tests/fakes/OrdinaryUser.h"
#include "tests/platform/macos/MacTrashHome.h"

namespace kestrune {
namespace {

class MacTrashFoldersTest : public MacTrashHome {
protected:
    /// A volume whose top is a new folder beside the home.
    std::string mountVolume(const std::string& name, bool isLocal = true) const {
        fs::create_directory(beside(name));
        fake_darwin::files().volumes.push_back({beside(name), isLocal});
        return beside(name);
    }

    static void fill(const std::string& trash) {
        fs::create_directories(trash);
        writeFile(trash + "/item", "content");
    }
};

TEST_F(MacTrashFoldersTest, trashThatWasNeverMadeIsEmpty) {
    EXPECT_EQ(macTrash.isEmpty(home), true);
    EXPECT_FALSE(fs::exists(trashFolder));
}

TEST_F(MacTrashFoldersTest, theFindersOwnNotesAreNothing) {
    fs::create_directory(trashFolder);
    EXPECT_EQ(macTrash.isEmpty(home), true);
    writeFile(trashFolder + "/.DS_Store", "notes");
    EXPECT_EQ(macTrash.isEmpty(home), true);
}

TEST_F(MacTrashFoldersTest, whatWasMovedThereLiesThere) {
    const std::string location = trash("cache");
    EXPECT_EQ(macTrash.isEmpty(home), false);
    fs::remove_all(location);
    EXPECT_EQ(macTrash.isEmpty(home), true);
}

TEST_F(MacTrashFoldersTest, hiddenAndLinkedItemsCount) {
    fs::create_directory(trashFolder);
    writeFile(trashFolder + "/.hidden", "");
    EXPECT_EQ(macTrash.isEmpty(home), false);
    fs::remove(trashFolder + "/.hidden");
    fs::create_symlink("/does/not/exist", trashFolder + "/link");
    EXPECT_EQ(macTrash.isEmpty(home), false);
}

TEST_F(MacTrashFoldersTest, theUsersTrashOnAnyLocalVolumeCounts) {
    const std::string first = mountVolume("first");
    const std::string second = mountVolume("second");
    EXPECT_EQ(macTrash.isEmpty(home), true);
    fill(second + "/.Trashes/" + user());
    EXPECT_EQ(macTrash.isEmpty(home), false);
    fs::remove_all(second + "/.Trashes");
    fill(first + "/.Trashes/" + user() + "1");
    EXPECT_EQ(macTrash.isEmpty(home), true);
}

TEST_F(MacTrashFoldersTest, aServersVolumeIsNotAsked) {
    fill(mountVolume("server", false) + "/.Trashes/" + user());
    EXPECT_EQ(macTrash.isEmpty(home), true);
}

TEST_F(MacTrashFoldersTest, aTrashBehindALinkTellsNothing) {
    fill(beside("elsewhere/" + user()));
    fs::create_directory_symlink(beside("elsewhere"), trashFolder);
    EXPECT_EQ(macTrash.isEmpty(home), std::nullopt);
    fs::remove(trashFolder);
    fs::create_directory_symlink(beside("elsewhere"), mountVolume("volume") + "/.Trashes");
    EXPECT_EQ(macTrash.isEmpty(home), std::nullopt);
}

TEST_F(MacTrashFoldersTest, somethingThatIsSeenCountsMoreThanWhatCannotBeSeen) {
    fs::create_directory(beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), trashFolder);
    fill(mountVolume("volume") + "/.Trashes/" + user());
    EXPECT_EQ(macTrash.isEmpty(home), false);
}

TEST_F(MacTrashFoldersTest, aTrashThatMayNotBeEnteredTellsNothing) {
    EXPECT_TRUE(asOrdinaryUser([] {
        const TemporaryFolder root;
        const std::string own = fs::canonical(root.path()).string();
        FakeMacTrashItem mover(own + "/.Trash");
        fs::create_directory(own + "/.Trash");
        fs::permissions(own + "/.Trash", fs::perms::none);
        const auto seen = MacTrash(mover).isEmpty(own);
        fs::permissions(own + "/.Trash", fs::perms::owner_all);
        return !seen && MacTrash(mover).isEmpty(own) == true;
    }));
}

TEST_F(MacTrashFoldersTest, aHomeOrVolumesThatCannotBeSeenTellNothing) {
    EXPECT_EQ(macTrash.isEmpty(beside("none")), std::nullopt);
    fake_darwin::files().volumesError = EIO;
    EXPECT_EQ(macTrash.isEmpty(home), std::nullopt);
}

TEST_F(MacTrashFoldersTest, onlyWhatLiesDirectlyInATrashIsHeldByIt) {
    const std::string ann = "/Users/ann";
    const std::vector<MacVolume> volumes = {{"/", true}, {"/Volumes/X", true}};
    const MacTrashFolders folders(ann, volumes);
    EXPECT_TRUE(folders.holds("/Users/ann/.Trash/a"));
    EXPECT_TRUE(folders.holds("/Volumes/X/.Trashes/" + user() + "/a"));
    EXPECT_TRUE(folders.holds("/.Trashes/" + user() + "/a"));
    for (const std::string path : {"/Users/ann/.Trash", "/Users/ann/.Trash/a/b", "/Users/bob/.Trash/a",
                                   "/Volumes/X/.Trashes/a", "/Volumes/Y/.Trashes/501/a", "/a"}) {
        EXPECT_FALSE(folders.holds(path)) << path;
    }
}

}  // namespace
}  // namespace kestrune
