#include "platform/linux/LinuxTrash.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <ctime>
#include <thread>
#include <vector>

#include "platform/linux/TrashInfo.h"
#include "tests/platform/TakenDescriptors.h"
#include "tests/platform/TrashHome.h"

namespace kestrune {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class LinuxTrashTest : public TrashHome {};

TEST_F(LinuxTrashTest, movesAFolderWithItsContentAndARecord) {
    makeFolder(".cache/npm");
    const auto result = move(".cache/npm");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/files/npm");
    EXPECT_EQ(contentOf(trashFolder + "/files/npm/content"), "mine");
    EXPECT_FALSE(fs::exists(home + "/.cache/npm"));
    EXPECT_THAT(contentOf(trashFolder + "/info/npm.trashinfo"),
                MatchesRegex("\\[Trash Info\\]\nPath=" + percentEncoded(home + "/.cache/npm") +
                             "\nDeletionDate=....-..-..T..:..:..\n"));
}

TEST_F(LinuxTrashTest, recordDateIsLocalTime) {
    makeFolder("a");
    const std::time_t before = std::time(nullptr);
    ASSERT_TRUE(move("a").ok());
    const std::time_t after = std::time(nullptr);
    std::tm deleted = {};
    const std::string text = contentOf(trashFolder + "/info/a.trashinfo");
    ASSERT_NE(::strptime(text.substr(text.find("Date=") + 5).c_str(), "%Y-%m-%dT%H:%M:%S", &deleted), nullptr);
    deleted.tm_isdst = -1;
    const std::time_t recorded = std::mktime(&deleted);
    EXPECT_GE(recorded, before);
    EXPECT_LE(recorded, after);
}

TEST_F(LinuxTrashTest, movesARegularFile) {
    writeFile(home + "/log", "lines");
    ASSERT_TRUE(move("log").ok());
    EXPECT_EQ(contentOf(trashFolder + "/files/log"), "lines");
}

TEST_F(LinuxTrashTest, strangeNamesArriveByteForByteAndAreRecordedEncoded) {
    for (const std::string name : {"with space", "two\nlines", "100%", "caf\xC3\xA9", "not\xFFutf8", "-rf", "a'b\"c",
                                   "...", "\\134", "tab\there"}) {
        makeFolder(name, name);
        const auto result = move(name);
        ASSERT_TRUE(result.ok()) << name << result.error().message;
        EXPECT_EQ(contentOf(trashFolder + "/files/" + name + "/content"), name);
        EXPECT_THAT(contentOf(trashFolder + "/info/" + name + ".trashinfo"),
                    HasSubstr("Path=" + percentEncoded(home + "/" + name) + "\n"));
    }
}

TEST_F(LinuxTrashTest, theLongestNamesFitTogetherWithTheirRecord) {
    const std::string name(255, 'n');
    for (const std::string& arrives : {std::string(245, 'n'), std::string(243, 'n') + ".2"}) {
        makeFolder(name);
        const auto result = move(name);
        ASSERT_TRUE(result.ok()) << result.error().message;
        EXPECT_EQ(result.value().location, trashFolder + "/files/" + arrives);
        EXPECT_THAT(contentOf(trashFolder + "/info/" + arrives + ".trashinfo"), HasSubstr("/" + name + "\n"));
    }
}

TEST_F(LinuxTrashTest, aTakenNameIsNeverReplaced) {
    fs::create_directories(trashFolder + "/files/a");
    fs::create_directories(trashFolder + "/info");
    writeFile(trashFolder + "/files/a.2", "file without a record");
    writeFile(trashFolder + "/info/a.3.trashinfo", "record without an item");
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/files/a.4");
    EXPECT_TRUE(fs::is_empty(trashFolder + "/files/a"));
    EXPECT_EQ(contentOf(trashFolder + "/files/a.2"), "file without a record");
    EXPECT_EQ(contentOf(trashFolder + "/info/a.3.trashinfo"), "record without an item");
    EXPECT_EQ(recordCount(), 2U);
}

TEST_F(LinuxTrashTest, aYoungRecordWithoutAnItemMayBelongToAnotherProgramAndStays) {
    fs::create_directories(trashFolder + "/info");
    const std::string text =
        "[Trash Info]\nPath=" + percentEncoded(home + "/a") + "\nDeletionDate=2026-01-01T00:00:00\n";
    writeFile(trashFolder + "/info/a.trashinfo", text);
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/files/a.2");
    EXPECT_EQ(contentOf(trashFolder + "/info/a.trashinfo"), text);
}

TEST_F(LinuxTrashTest, theRecordThatAKilledMoveLeftIsReplaced) {
    fs::create_directories(trashFolder + "/info");
    const std::string record = trashFolder + "/info/a.trashinfo";
    writeFile(record, "[Trash Info]\nPath=" + percentEncoded(home + "/a") + "\nDeletionDate=2001-01-01T00:00:00\n");
    fs::last_write_time(record, fs::last_write_time(record) - std::chrono::minutes(2));
    makeFolder("a");
    const auto result = move("a");
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/files/a");
    EXPECT_EQ(contentOf(record).find("2001"), std::string::npos);
    EXPECT_EQ(recordCount(), 1U);
}

TEST_F(LinuxTrashTest, anOldRecordOfAnotherItemOrACutOneStays) {
    fs::create_directories(trashFolder + "/info");
    const std::string record = trashFolder + "/info/a.trashinfo";
    const std::string own = "[Trash Info]\nPath=" + percentEncoded(home + "/a");
    unsigned taken = 1;
    for (const std::string& text : {own + "b\nDeletionDate=2001-01-01T00:00:00\n", own, std::string()}) {
        writeFile(record, text);
        fs::last_write_time(record, fs::last_write_time(record) - std::chrono::minutes(2));
        makeFolder("a");
        const auto result = move("a");
        ASSERT_TRUE(result.ok()) << result.error().message;
        EXPECT_EQ(result.value().location, trashFolder + "/files/a." + std::to_string(++taken));
        EXPECT_EQ(contentOf(record), text);
    }
}

TEST_F(LinuxTrashTest, manyMovesAtTheSameTimeKeepEveryItemAndEveryRecord) {
    constexpr int threads = 4;
    constexpr int each = 25;
    for (int i = 0; i < threads * each; ++i) {
        makeFolder(std::to_string(i) + "/same", std::to_string(i));
    }
    std::array<int, threads> moved = {};
    std::vector<std::thread> movers;
    for (int thread = 0; thread < threads; ++thread) {
        movers.emplace_back([this, thread, &moved] {
            for (int i = 0; i < each; ++i) {
                moved[static_cast<std::size_t>(thread)] +=
                    move(std::to_string(thread * each + i) + "/same").ok() ? 1 : 0;
            }
        });
    }
    for (auto& mover : movers) {
        mover.join();
    }
    EXPECT_THAT(moved, testing::Each(each));
    EXPECT_EQ(recordCount(), static_cast<std::size_t>(threads * each));
    for (const auto& item : fs::directory_iterator(trashFolder + "/files")) {
        const std::string record = contentOf(trashFolder + "/info/" + item.path().filename().string() + ".trashinfo");
        EXPECT_THAT(record, HasSubstr("/" + contentOf(item.path() / "content") + "/same\n"));
    }
}

TEST_F(LinuxTrashTest, aMissingItemOrFolderIsMissing) {
    makeFolder("a");
    writeFile(home + "/file", "");
    expectFailure("b", TrashFailure::missing);
    expectFailure("a/b/c", TrashFailure::missing);
    expectFailure("file/b", TrashFailure::missing);
    LinuxTrash trash;
    EXPECT_EQ(trash.moveToTrash({home + "/none", "a", {}}).error().failure, TrashFailure::missing);
    EXPECT_FALSE(fs::exists(trashFolder));
}

TEST_F(LinuxTrashTest, pathsThatCouldLeaveTheHomeAreRefused) {
    fs::create_directory(beside("outside"));
    makeFolder("a");
    for (const std::string path : {"", ".", "..", "../outside", "a/../../outside", "a//content", "/a", "a/", "a/."}) {
        expectFailure(path, TrashFailure::protectedOrChanged);
    }
    expectFailure(beside("outside"), TrashFailure::protectedOrChanged);
    expectFailure(std::string("a\0b", 3), TrashFailure::protectedOrChanged);
    LinuxTrash trash;
    EXPECT_EQ(trash.moveToTrash({"home", "a", {}}).error().failure, TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::exists(beside("outside")));
    EXPECT_TRUE(fs::exists(home + "/a/content"));
}

TEST_F(LinuxTrashTest, aLinkAtTheItemIsRefused) {
    fs::create_directory(beside("victim"));
    fs::create_directory_symlink(beside("victim"), home + "/a");
    expectFailure("a", TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::is_symlink(home + "/a"));
    EXPECT_TRUE(fs::exists(beside("victim")));
}

TEST_F(LinuxTrashTest, aLinkAboveTheItemIsRefused) {
    fs::create_directories(beside("victim/a"));
    fs::create_directory_symlink(beside("victim"), home + "/folder");
    expectFailure("folder/a", TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::exists(beside("victim/a")));
}

TEST_F(LinuxTrashTest, aLinkInAGivenHomeIsRefused) {
    makeFolder("a");
    fs::create_directory_symlink(home, beside("linked"));
    LinuxTrash trash;
    EXPECT_EQ(trash.moveToTrash({beside("linked"), "a", {}}).error().failure, TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::exists(home + "/a"));
}

TEST_F(LinuxTrashTest, aHomeSpelledLooselyIsTheSameHome) {
    makeFolder("a");
    LinuxTrash trash;
    const auto result = trash.moveToTrash({home + "//./x/../", "a", {}});
    ASSERT_TRUE(result.ok()) << result.error().message;
    EXPECT_EQ(result.value().location, trashFolder + "/files/a");
}

TEST_F(LinuxTrashTest, anythingButAFolderOrAFileIsRefusedAtOnce) {
    ASSERT_EQ(::mkfifo((home + "/fifo").c_str(), S_IRUSR | S_IWUSR), 0);
    expectFailure("fifo", TrashFailure::protectedOrChanged);
    EXPECT_TRUE(fs::is_fifo(home + "/fifo"));
}

TEST_F(LinuxTrashTest, onlyTheExpectedItemMoves) {
    makeFolder("a", "confirmed");
    LinuxTrash trash;
    const auto confirmed = trash.identity(home, "a");
    ASSERT_TRUE(confirmed);
    fs::rename(home + "/a", home + "/kept");
    makeFolder("a", "another");
    const auto refused = move("a", confirmed);
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.error().failure, TrashFailure::protectedOrChanged);
    EXPECT_EQ(contentOf(home + "/a/content"), "another");

    const auto moved = move("kept", confirmed);
    ASSERT_TRUE(moved.ok()) << moved.error().message;
    EXPECT_EQ(contentOf(moved.value().location + "/content"), "confirmed");
}

TEST_F(LinuxTrashTest, anItemBornAtAnotherTimeIsAnotherItem) {
    makeFolder("a");
    LinuxTrash trash;
    auto expected = trash.identity(home, "a");
    ASSERT_TRUE(expected);
    ++expected->birthNanoseconds;
    EXPECT_FALSE(move("a", expected).ok());
    EXPECT_TRUE(fs::exists(home + "/a"));
}

TEST_F(LinuxTrashTest, nothingOrALinkHasNoIdentity) {
    makeFolder("a");
    fs::create_directory_symlink("a", home + "/link");
    LinuxTrash trash;
    EXPECT_FALSE(trash.identity(home, "b"));
    EXPECT_FALSE(trash.identity(home, "link"));
    EXPECT_FALSE(trash.identity(home, "link/content"));
    EXPECT_FALSE(trash.identity(home, "../home/a"));
    EXPECT_EQ(trash.identity(home, "a"), trash.identity(home, "a"));
    EXPECT_NE(trash.identity(home, "a"), trash.identity(home, "a/content"));
}

TEST_F(LinuxTrashTest, theFolderThatHoldsTheTrashIsRefused) {
    makeFolder(".local/share");
    for (const char* path : {".local", ".local/share", ".local/share/Trash"}) {
        fs::create_directories(trashFolder);
        const auto result = move(path);
        ASSERT_FALSE(result.ok());
        EXPECT_THAT(result.error().message, HasSubstr("It holds the Trash itself. Choose another item."));
    }
    expectFailure(".local/share/Trash", TrashFailure::system);
    EXPECT_TRUE(fs::exists(trashFolder));
}

TEST_F(LinuxTrashTest, whatAnotherUserOwnsIsRefused) {
    if (::geteuid() != 0) {
        // Without the right to give files away the root folder is what another user owns.
        LinuxTrash trash;
        EXPECT_EQ(trash.moveToTrash({"/", "etc", {}}).error().failure, TrashFailure::protectedOrChanged);
        return;
    }
    constexpr uid_t another = 12345;
    makeFolder("a");
    makeFolder("theirs");
    ASSERT_EQ(::chown((home + "/theirs").c_str(), another, another), 0);
    expectFailure("theirs", TrashFailure::protectedOrChanged);
    fs::create_directories(trashFolder + "/files");
    fs::create_directories(trashFolder + "/info");
    for (const std::string& place : {trashFolder, trashFolder + "/files", trashFolder + "/info"}) {
        ASSERT_EQ(::chown(place.c_str(), another, another), 0);
        expectFailure("a", TrashFailure::system);
        ASSERT_EQ(::chown(place.c_str(), 0, 0), 0);
    }
    fs::rename(trashFolder, beside("elsewhere"));
    fs::create_directory_symlink(beside("elsewhere"), trashFolder);
    ASSERT_EQ(::lchown(trashFolder.c_str(), another, another), 0);
    expectFailure("a", TrashFailure::system);
    EXPECT_TRUE(fs::exists(home + "/a"));
}

TEST_F(LinuxTrashTest, aRunWithoutFreeDescriptorsLeavesTheItemInPlace) {
    makeFolder("a");
    int failures = 0;
    {
        TakenDescriptors taken;
        while (!move("a").ok() && taken.release()) {
            ++failures;
            EXPECT_TRUE(fs::exists(home + "/a"));
        }
    }
    EXPECT_GT(failures, 5);
    EXPECT_FALSE(fs::exists(home + "/a"));
    EXPECT_EQ(recordCount(), 1U);
}

TEST_F(LinuxTrashTest, theTrashToolListsAndRestoresWhatWasMoved) {
    if (::access("/usr/bin/trash-list", X_OK) != 0 || ::access("/usr/bin/trash-restore", X_OK) != 0) {
        GTEST_FAIL() << "The package trash-cli is needed to see that other programs understand the Trash.";
    }
    const std::string name = "caf\xC3\xA9 100% #1";
    makeFolder(name, "restored");
    ASSERT_TRUE(move(name).ok());
    const std::string data = "XDG_DATA_HOME='" + home + "/.local/share' ";
    const std::string list = beside("list");
    ASSERT_EQ(std::system((data + "/usr/bin/trash-list > '" + list + "'").c_str()), 0);
    EXPECT_THAT(contentOf(list), HasSubstr(" " + home + "/" + name + "\n"));
    const std::string restore =
        "cd '" + home + "' && echo 0 | " + data + "/usr/bin/trash-restore > '" + list + "' 2>&1";
    ASSERT_EQ(std::system(restore.c_str()), 0) << contentOf(list);
    EXPECT_EQ(contentOf(home + "/" + name + "/content"), "restored");
    EXPECT_EQ(recordCount(), 0U);
}

}  // namespace
}  // namespace kestrune
