#include "platform/linux/DesktopEntryFolders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

std::string entryText(const std::string& name, const std::string& more = {}) {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more;
}

class DesktopEntryFoldersTest : public testing::Test {
protected:
    [[nodiscard]] std::vector<std::string> names() {
        static_cast<void>(folders.refresh());
        std::vector<std::string> found;
        for (const DesktopEntry& entry : folders.entries()) {
            found.push_back(entry.id + "=" + entry.localizedName);
        }
        return found;
    }

    TemporaryFolder own;
    TemporaryFolder shared;
    DesktopEntryFolders folders{{own.path(), "/does/not/exist", shared.path()}, {"de"}};
};

TEST_F(DesktopEntryFoldersTest, fileOfTheUserStandsInForTheSharedOne) {
    static_cast<void>(own.write("a.desktop", entryText("Mine")));
    static_cast<void>(shared.write("a.desktop", entryText("Theirs")));
    static_cast<void>(shared.write("b.desktop", entryText("Other", "Name[de]=Anderes\n")));
    EXPECT_EQ(names(), (std::vector<std::string>{"a=Mine", "b=Anderes"}));
}

TEST_F(DesktopEntryFoldersTest, fileOfTheUserThatCountsAsDeletedTakesTheSharedOneAway) {
    static_cast<void>(own.write("a.desktop", entryText("Mine", "Hidden=true\n")));
    static_cast<void>(shared.write("a.desktop", entryText("Theirs")));
    EXPECT_TRUE(names().empty());
}

TEST_F(DesktopEntryFoldersTest, nothingIsReadAgainWithoutAChange) {
    static_cast<void>(own.write("a.desktop", entryText("One")));
    EXPECT_TRUE(folders.refresh());
    EXPECT_FALSE(folders.refresh());
    static_cast<void>(own.write("b.desktop", entryText("Two")));
    EXPECT_TRUE(folders.refresh());
    EXPECT_EQ(names(), (std::vector<std::string>{"a=One", "b=Two"}));
}

TEST_F(DesktopEntryFoldersTest, whatOnlyLooksLikeAnEntryIsNotWaitedFor) {
    ASSERT_EQ(::mkfifo(own.path("a.desktop").c_str(), 0600), 0);
    fs::create_directory(own.path("b.desktop"));
    fs::create_symlink("/dev/zero", own.path("c.desktop"));
    fs::create_symlink("d.desktop", own.path("d.desktop"));
    static_cast<void>(own.write("e.desktop", std::string(3'000'000, '[')));
    static_cast<void>(own.write("f.desktop", std::string("\0\xff\n", 3) + entryText("Binary")));
    static_cast<void>(own.write(".desktop", entryText("No Id")));
    static_cast<void>(own.write("g.desktop", entryText("Large") + std::string(1 << 20, '#')));
    EXPECT_EQ(names(), (std::vector<std::string>{"f=Binary", "g=Large"}));
}

TEST_F(DesktopEntryFoldersTest, onlyFilesThatChangedAreReadAgain) {
    const std::string same = own.write("a.desktop", entryText("One"));
    const std::string other = own.write("b.desktop", entryText("Two"));
    ASSERT_EQ(names(), (std::vector<std::string>{"a=One", "b=Two"}));
    const auto time = fs::last_write_time(same);
    static_cast<void>(own.write("a.desktop", entryText("Ten")));
    static_cast<void>(own.write("b.desktop", entryText("Twenty")));
    static_cast<void>(own.write("c.desktop", entryText("Three")));
    fs::last_write_time(same, time);
    EXPECT_EQ(names(), (std::vector<std::string>{"a=One", "b=Twenty", "c=Three"}));
    fs::remove(other);
    EXPECT_EQ(names(), (std::vector<std::string>{"a=One", "c=Three"}));
}

TEST_F(DesktopEntryFoldersTest, ofMoreFilesThanAnyDesktopHasTheFirstAreKnown) {
    for (int i = 0; i < 4'100; ++i) {
        static_cast<void>(own.write(std::to_string(10'000 + i) + ".desktop", entryText("App")));
    }
    EXPECT_EQ(names().size(), 4'096U);
}

TEST_F(DesktopEntryFoldersTest, noMoreThanSixteenMebibytesAreReadAtOnce) {
    const std::string text = entryText("App");
    const std::string padded = text + std::string((1U << 18U) - text.size(), '#');
    for (int i = 0; i < 70; ++i) {
        static_cast<void>(own.write(std::to_string(100 + i) + ".desktop", padded));
    }
    EXPECT_EQ(names().size(), 64U);
}

TEST_F(DesktopEntryFoldersTest, usersOwnFolderComesFirst) {
    const std::vector<std::string> standard = DesktopEntryFolders::standard("/home/u");
    ASSERT_GE(standard.size(), 5U);
    EXPECT_NE(standard.front().find("/applications"), std::string::npos);
    EXPECT_EQ(standard.back(), "/var/lib/snapd/desktop/applications");
}

}  // namespace
}  // namespace kestrune
