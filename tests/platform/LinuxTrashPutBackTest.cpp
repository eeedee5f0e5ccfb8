#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/PutBackHome.h"
#include "tests/platform/TakenDescriptors.h"

namespace kestrune {
namespace {

using testing::HasSubstr;

class LinuxTrashPutBack : public PutBackHome {};

TEST_F(LinuxTrashPutBack, aFolderIsBackByteForByteAndItsRecordIsGone) {
    const std::string location = trash(".cache/npm");
    const PutBackPlan confirmed = goodPlan(location);
    EXPECT_EQ(confirmed.location, location);
    EXPECT_EQ(confirmed.originalPath, home + "/.cache/npm");
    const auto result = putBack(confirmed);
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value(), home + "/.cache/npm");
    EXPECT_EQ(contentOf(home + "/.cache/npm/content"), "mine");
    EXPECT_EQ(LinuxTrash().identity(home, ".cache/npm"), confirmed.item);
    EXPECT_FALSE(fs::exists(location));
    EXPECT_TRUE(fs::is_empty(trashFolder + "/info"));
}

TEST_F(LinuxTrashPutBack, aRegularFileGoesBack) {
    writeFile(home + "/log", "lines");
    ASSERT_TRUE(move("log").ok());
    ASSERT_TRUE(putBack(goodPlan(trashFolder + "/files/log")).ok());
    EXPECT_EQ(contentOf(home + "/log"), "lines");
}

TEST_F(LinuxTrashPutBack, planningChangesNothing) {
    const std::string location = trash("a");
    const std::string record = contentOf(trashFolder + "/info/a.trashinfo");
    const PutBackPlan first = goodPlan(location);
    EXPECT_EQ(goodPlan(location), first);
    EXPECT_EQ(contentOf(trashFolder + "/info/a.trashinfo"), record);
    EXPECT_FALSE(fs::exists(home + "/a"));
}

TEST_F(LinuxTrashPutBack, strangeNamesComeBackByteForByte) {
    for (const std::string name : {"with space", "two\nlines", "100%", "%41", "caf\xC3\xA9", "not\xFFutf8", "-rf",
                                   "a'b\"c", "...", "\\134", "tab\there", "Path=x", ".trashinfo"}) {
        const std::string location = trash(name, name);
        const auto result = putBack(goodPlan(location));
        ASSERT_TRUE(result.ok()) << name << result.error().message;
        EXPECT_EQ(result.value(), home + "/" + name);
        EXPECT_EQ(contentOf(home + "/" + name + "/content"), name);
    }
    EXPECT_EQ(recordCount(), 0U);
}

TEST_F(LinuxTrashPutBack, theLongestNamesAndPathsComeBackWhole) {
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

TEST_F(LinuxTrashPutBack, aNumberedNameGoesBackToThePlaceItsRecordNames) {
    trash("a", "first");
    const std::string location = trash("a", "second");
    ASSERT_EQ(location, trashFolder + "/files/a.2");
    ASSERT_TRUE(putBack(goodPlan(location)).ok());
    EXPECT_EQ(contentOf(home + "/a/content"), "second");
    EXPECT_EQ(contentOf(trashFolder + "/files/a/content"), "first");
    EXPECT_TRUE(fs::exists(trashFolder + "/info/a.trashinfo"));
    EXPECT_EQ(recordCount(), 1U);
}

TEST_F(LinuxTrashPutBack, whatIsInTheWayStaysAndIsNamed) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    const std::string place = home + "/a";
    const auto refuseBoth = [&] {
        expectNoPlan(location, PutBackFailure::inTheWay, place);
        expectNotPutBack(confirmed, PutBackFailure::inTheWay, place);
        EXPECT_EQ(contentOf(location + "/content"), "mine");
        EXPECT_EQ(recordCount(), 1U);
    };
    writeFile(place, "file");
    refuseBoth();
    EXPECT_EQ(contentOf(place), "file");
    fs::remove(place);
    fs::create_directory(place);
    refuseBoth();
    EXPECT_TRUE(fs::is_empty(place));
    fs::remove(place);
    fs::create_symlink("/does/not/exist", place);
    refuseBoth();
    EXPECT_TRUE(fs::is_symlink(place));
    fs::remove(place);
    EXPECT_TRUE(putBack(confirmed).ok());
}

TEST_F(LinuxTrashPutBack, aMissingFolderIsNamedAndNotMade) {
    const std::string location = trash("deep/folder/a");
    const PutBackPlan confirmed = goodPlan(location);
    fs::remove_all(home + "/deep");
    expectNoPlan(location, PutBackFailure::noFolder, home + "/deep/folder");
    expectNotPutBack(confirmed, PutBackFailure::noFolder, home + "/deep/folder");
    EXPECT_FALSE(fs::exists(home + "/deep"));
    EXPECT_EQ(contentOf(location + "/content"), "mine");
    fs::create_directories(home + "/deep/folder");
    EXPECT_TRUE(putBack(confirmed).ok());
}

TEST_F(LinuxTrashPutBack, aFolderThatIsALinkOrAFileNowIsNotEntered) {
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

TEST_F(LinuxTrashPutBack, whatWasRestoredOrEmptiedMeanwhileIsMissing) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    fs::rename(location, home + "/a");
    expectNoPlan(location, PutBackFailure::missing);
    expectNotPutBack(confirmed, PutBackFailure::missing);
    fs::remove_all(trashFolder);
    expectNoPlan(location, PutBackFailure::missing);
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");
}

TEST_F(LinuxTrashPutBack, onlyTheItemThatWasPlannedGoesBack) {
    const std::string location = trash("a", "confirmed");
    const PutBackPlan confirmed = goodPlan(location);
    fs::rename(location, beside("kept"));
    makeFolder("other", "another");
    fs::rename(home + "/other", location);
    expectNotPutBack(confirmed, PutBackFailure::changed);
    EXPECT_EQ(contentOf(location + "/content"), "another");
    EXPECT_FALSE(fs::exists(home + "/a"));
    PutBackPlan born = goodPlan(location);
    ++born.item.birthNanoseconds;
    expectNotPutBack(born, PutBackFailure::changed);
}

TEST_F(LinuxTrashPutBack, onlyLocationsInTheUsersTrashAreLookedAt) {
    trash("a");
    fs::create_directories(beside("Trash/files/a"));
    fs::create_directories(beside("Trash/info"));
    writeFile(beside("Trash/info/a.trashinfo"), "[Trash Info]\nPath=" + home + "/a\n");
    expectNoPlan(beside("Trash/files/a"), PutBackFailure::changed);
    fs::create_directory(beside("elsewhere"));
    fs::rename(beside("Trash"), beside("elsewhere/.Trash-" + std::to_string(::geteuid())));
    expectNoPlan(beside("elsewhere/.Trash-" + std::to_string(::geteuid()) + "/files/a"), PutBackFailure::changed);
    makeFolder(".local/share/Trash/files/a/files/content");
    for (const std::string& location :
         {std::string(), std::string("a"), std::string("/"), std::string("/files/a"), trashFolder,
          trashFolder + "/files", trashFolder + "/files/", trashFolder + "/files/a/", trashFolder + "//files/a",
          trashFolder + "/files/../files/a", trashFolder + "/info/a.trashinfo", trashFolder + "/files/a/content",
          trashFolder + "/files/a/files/content", trashFolder + "/files/a" + std::string(1, '\0'),
          trashFolder.substr(1) + "/files/a"}) {
        expectNoPlan(location, PutBackFailure::changed);
    }
    EXPECT_TRUE(plan(trashFolder + "/files/a").ok());
}

TEST_F(LinuxTrashPutBack, aLocationBehindALinkIsRefused) {
    const std::string location = trash("a");
    fs::create_directory_symlink(trashFolder, beside("linked"));
    expectNoPlan(beside("linked/files/a"), PutBackFailure::changed);
    fs::rename(trashFolder + "/files", beside("files"));
    fs::create_directory_symlink(beside("files"), trashFolder + "/files");
    expectNoPlan(location, PutBackFailure::changed);
    EXPECT_TRUE(fs::exists(beside("files/a/content")));
}

TEST_F(LinuxTrashPutBack, aLinkOrAFifoInTheTrashIsNotPutBack) {
    const std::string location = trash("a");
    fs::rename(location, beside("kept"));
    fs::create_directory_symlink(beside("kept"), location);
    expectNoPlan(location, PutBackFailure::changed);
    fs::remove(location);
    ASSERT_EQ(::mkfifo(location.c_str(), S_IRWXU), 0);
    expectNoPlan(location, PutBackFailure::changed);
}

TEST_F(LinuxTrashPutBack, theTrashOfAGivenDataFolderIsTheUsersToo) {
    makeFolder("a");
    LinuxTrash given(beside("data"));
    const auto moved = given.moveToTrash({home, "a", {}});
    ASSERT_TRUE(moved.ok());
    expectNoPlan(moved.value().location, PutBackFailure::changed);
    const auto planned = given.planPutBack(home, moved.value().location);
    ASSERT_TRUE(planned.ok());
    EXPECT_TRUE(given.putBack(home, planned.value()).ok());
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");
}

TEST_F(LinuxTrashPutBack, theUsersOwnLinkedTrashIsFollowedOnce) {
    fs::create_directories(home + "/.local/share");
    fs::create_directory(beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), trashFolder);
    const std::string location = trash("a");
    ASSERT_EQ(location, beside("elsewhere/files/a"));
    const PutBackPlan confirmed = goodPlan(location);
    fs::permissions(beside("elsewhere"), fs::perms::others_write, fs::perm_options::add);
    const auto refused = putBack(confirmed);
    ASSERT_FALSE(refused.ok());
    EXPECT_THAT(refused.error().message, HasSubstr("isn't a folder of yours alone"));
    fs::permissions(beside("elsewhere"), fs::perms::others_write, fs::perm_options::remove);
    EXPECT_TRUE(putBack(confirmed).ok());
}

TEST_F(LinuxTrashPutBack, aTrashThatEverybodyMayWriteIsRefused) {
    const std::string location = trash("a");
    for (const char* open : {"", "/files", "/info"}) {
        fs::permissions(trashFolder + open, fs::perms::others_write, fs::perm_options::add);
        const auto planned = plan(location);
        ASSERT_FALSE(planned.ok()) << open;
        EXPECT_EQ(planned.error().message,
                  "Couldn't put this item back: The Trash folder isn't a folder of yours alone. Check its owner, its "
                  "permissions and links that lead to it, then try again.");
        fs::permissions(trashFolder + open, fs::perms::others_write, fs::perm_options::remove);
    }
    fs::permissions(trashFolder + "/info/a.trashinfo", fs::perms::others_write, fs::perm_options::add);
    expectNoPlan(location, PutBackFailure::noRecord);
}

TEST_F(LinuxTrashPutBack, whatAnotherUserOwnsIsRefused) {
    if (::geteuid() != 0) {
        // Without the right to give files away, what lies in root's own folder is another user's.
        expectNoPlan("/root/Trash/files/a", PutBackFailure::system);
        return;
    }
    constexpr uid_t another = 12345;
    const std::string location = trash("a");
    const auto given = [&](const std::string& path) {
        EXPECT_EQ(::lchown(path.c_str(), another, another), 0);
        const auto planned = plan(location);
        EXPECT_EQ(::lchown(path.c_str(), 0, 0), 0);
        EXPECT_FALSE(planned.ok()) << path;
        return planned.ok() ? PutBackFailure::missing : planned.error().failure;
    };
    EXPECT_EQ(given(location), PutBackFailure::changed);
    EXPECT_EQ(given(trashFolder + "/info/a.trashinfo"), PutBackFailure::noRecord);
    for (const char* folder : {"", "/files", "/info"}) {
        EXPECT_EQ(given(trashFolder + folder), PutBackFailure::system);
    }
    EXPECT_TRUE(plan(location).ok());
}

TEST_F(LinuxTrashPutBack, aHomeThatIsNoneOrALinkGetsNothing) {
    const std::string location = trash("a");
    fs::create_directory_symlink(home, beside("linked"));
    fs::create_directory(beside("other"));
    for (const std::string& given : {std::string(), std::string("home"), beside("linked"), beside("other"),
                                     beside("none"), home + std::string(1, '\0')}) {
        EXPECT_FALSE(LinuxTrash().planPutBack(given, location).ok()) << given;
    }
    EXPECT_TRUE(LinuxTrash().planPutBack(home + "//./x/..", location).ok());
}

TEST_F(LinuxTrashPutBack, theNextMoveReplacesTheRecordThatAKilledPutBackLeft) {
    const std::string location = trash("a");
    fs::rename(location, home + "/a");
    const std::string record = trashFolder + "/info/a.trashinfo";
    fs::last_write_time(record, fs::last_write_time(record) - std::chrono::minutes(2));
    const auto moved = move("a");
    ASSERT_TRUE(moved.ok());
    EXPECT_EQ(moved.value().location, location);
    EXPECT_EQ(recordCount(), 1U);
}

TEST_F(LinuxTrashPutBack, aRunWithoutFreeDescriptorsLeavesTheItemInTheTrash) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    int failures = 0;
    {
        TakenDescriptors taken;
        while (!putBack(confirmed).ok() && taken.release()) {
            ++failures;
            EXPECT_TRUE(fs::exists(location));
            EXPECT_TRUE(fs::exists(trashFolder + "/info/a.trashinfo"));
        }
    }
    EXPECT_GT(failures, 5);
    EXPECT_EQ(contentOf(home + "/a/content"), "mine");
    EXPECT_EQ(recordCount(), 0U);
}

TEST_F(LinuxTrashPutBack, anotherDiskIsNamedAndTheItemStays) {
    const TemporaryFolder memory("/dev/shm");
    LinuxTrash given(beside("data"));
    fs::create_directories(beside("data/Trash/files/a"));
    fs::create_directories(beside("data/Trash/info"));
    fs::permissions(beside("data/Trash"), fs::perms::owner_all);
    writeFile(beside("data/Trash/info/a.trashinfo"), "[Trash Info]\nPath=" + memory.path("folder/a") + "\n");
    fs::create_directory(memory.path("folder"));
    const auto planned = given.planPutBack(memory.path(), beside("data/Trash/files/a"));
    ASSERT_FALSE(planned.ok());
    EXPECT_EQ(planned.error().failure, PutBackFailure::otherDisk);
    EXPECT_EQ(planned.error().path, memory.path("folder"));
    EXPECT_TRUE(fs::exists(beside("data/Trash/files/a")));
}

TEST_F(LinuxTrashPutBack, otherProgramsSeeNothingLeftAndWhatTheyRestoreIsMissing) {
    for (const char* tool : {"/usr/bin/trash-list", "/usr/bin/trash-put", "/usr/bin/trash-restore", "/usr/bin/gio"}) {
        if (::access(tool, X_OK) != 0) {
            GTEST_FAIL() << tool << " is needed to see that other programs understand the Trash.";
        }
    }
    const std::string data = "cd '" + home + "' && XDG_DATA_HOME='" + home + "/.local/share' ";
    const auto run = [&](const std::string& command) {
        const std::string out = beside("out");
        EXPECT_EQ(std::system((data + command + " > '" + out + "' 2>&1").c_str()), 0) << contentOf(out);
        return contentOf(out);
    };
    const std::string name = "caf\xC3\xA9 100% #1";
    const std::string location = trash(name);
    ASSERT_THAT(run("/usr/bin/trash-list"), HasSubstr(home + "/" + name + "\n"));
    ASSERT_TRUE(putBack(goodPlan(location)).ok());
    EXPECT_THAT(run("/usr/bin/trash-list"), testing::Not(HasSubstr(home)));
    EXPECT_THAT(run("/usr/bin/trash-restore < /dev/null"), HasSubstr("No files trashed"));

    run("/usr/bin/trash-put '" + name + "'");
    ASSERT_TRUE(putBack(goodPlan(location)).ok());
    EXPECT_EQ(contentOf(home + "/" + name + "/content"), "mine");

    ASSERT_TRUE(move(name).ok());
    run("/bin/sh -c 'echo 0 | /usr/bin/trash-restore'");
    expectNoPlan(location, PutBackFailure::missing);
    EXPECT_EQ(contentOf(home + "/" + name + "/content"), "mine");
}

}  // namespace
}  // namespace kestrune
