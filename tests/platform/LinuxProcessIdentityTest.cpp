#include "platform/linux/LinuxProcessIdentity.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/ChildProgram.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;
using LinuxProcessIdentity::Stat;

std::string statLine(const std::string& name) {
    return "4711 (" + name +
           ") S 4600 4711 4600 34816 4711 4194304 153 0 2 0 70 8 0 0 20 0 11 0 25130 24035328 5300 "
           "18446744073709551615 1 1 0 0 0 0 0 0 0 0 0 0 17 1 0 0 0 0 0 0 0 0 0 0 0 0 0\n";
}

TEST(LinuxProcessIdentity, statIsReadFromItsRecordedLine) {
    EXPECT_EQ(LinuxProcessIdentity::parseStat(statLine("node")), (Stat{"node", 'S', 78, 25130, 5300, 4600, 11}));
}

TEST(LinuxProcessIdentity, nameOfAProcessMayHoldAnything) {
    for (const std::string name : {"a) R 1 2 3", "(", ")", "a b", "a\nb", "", ") Z 1 1 1 1 1 1 1 1 1 1 1 1", "\xFF\xFE",
                                   "kworker/0:1H-kblockd"}) {
        EXPECT_EQ(LinuxProcessIdentity::parseStat(statLine(name)), (Stat{name, 'S', 78, 25130, 5300, 4600, 11}))
            << name;
    }
}

TEST(LinuxProcessIdentity, statThatLacksAFieldIsNone) {
    const std::string line = statLine("node");
    const std::size_t lastField = line.find(" 5300 ") + 1;
    EXPECT_TRUE(LinuxProcessIdentity::parseStat(line.substr(0, lastField + 4)));
    for (std::size_t length = 0; length < lastField; ++length) {
        EXPECT_EQ(LinuxProcessIdentity::parseStat(line.substr(0, length)), std::nullopt) << length;
    }
}

TEST(LinuxProcessIdentity, statWhoseNumbersAreNoneIsNone) {
    for (const std::string number : {"x", "-1", "18446744073709551616", "1.5"}) {
        for (const std::string field : {" 70 ", " 8 ", " 25130 "}) {
            std::string line = statLine("node");
            line.replace(line.find(field), field.size(), std::string(" ").append(number).append(" "));
            EXPECT_EQ(LinuxProcessIdentity::parseStat(line), std::nullopt) << line;
        }
    }
    EXPECT_EQ(LinuxProcessIdentity::parseStat(")("), std::nullopt);
    EXPECT_EQ(LinuxProcessIdentity::parseStat("1 (a) Sleeping 1 1"), std::nullopt);
}

TEST(LinuxProcessIdentity, damagedStatIsReadWithoutHarm) {
    std::mt19937 random(11);
    const std::string line = statLine("odd ) name");
    for (int i = 0; i < 20'000; ++i) {
        std::string text = line;
        for (int change = 0; change < 4; ++change) {
            text[random() % text.size()] = static_cast<char>(random() % 256);
        }
        const std::optional<Stat> stat = LinuxProcessIdentity::parseStat(text);
        ASSERT_TRUE(!stat || stat->name.size() < text.size());
    }
}

TEST(LinuxProcessIdentity, realOwnerIsTheFirstOfTheFour) {
    EXPECT_EQ(
        LinuxProcessIdentity::parseRealOwner("Name:\tsudo\nUmask:\t0022\nUid:\t1000\t0\t0\t0\nGid:\t1\t1\t1\t1\n"),
        1000U);
    EXPECT_EQ(LinuxProcessIdentity::parseRealOwner("Name:\tx\nUid:\t4294967294\t0\t0\t0\n"), 4294967294U);
}

TEST(LinuxProcessIdentity, nameDoesNotPassForTheOwnersLine) {
    EXPECT_EQ(LinuxProcessIdentity::parseRealOwner("Name:\tUid:\t0\nUid:\t1000\t0\t0\t0\n"), 1000U);
    EXPECT_EQ(LinuxProcessIdentity::parseRealOwner("Uid:\t0\t0\t0\t0\n"), std::nullopt);
    for (const std::string line : {"", "\nUid:", "\nUid:\t\n", "\nUid:\tx\n", "\nUid:\t4294967296\n", "\nUid:\t-1\n"}) {
        EXPECT_EQ(LinuxProcessIdentity::parseRealOwner(line), std::nullopt) << line;
    }
}

// A folder in the shape of /proc.
class LinuxProcessFolderTest : public testing::Test {
protected:
    LinuxProcessFolderTest() {
        fs::create_directories(proc.path("4711"));
        folder = LinuxProcessIdentity::openFolder(4711, proc.path());
    }

    void link(const std::string& name, const std::string& target) const {
        fs::create_symlink(target, proc.path("4711/" + name));
    }

    TemporaryFolder proc;
    LinuxFileDescriptor folder;
};

TEST_F(LinuxProcessFolderTest, commandIsTheExecutableEvenWhenItsFileWasDeleted) {
    link("exe", "/opt/my app/node (deleted)");
    static_cast<void>(proc.write("4711/stat", statLine("node")));
    EXPECT_EQ(LinuxProcessIdentity::commandOf(folder.get()), "/opt/my app/node");
}

TEST_F(LinuxProcessFolderTest, onlyTheKernelsOwnMarkIsTakenOff) {
    link("exe", "/opt/node (deleted) (deleted)");
    EXPECT_EQ(LinuxProcessIdentity::executableOf(folder.get()), "/opt/node (deleted)");
    link("cwd", " (deleted)");
    EXPECT_EQ(LinuxProcessIdentity::workingDirectoryOf(folder.get()), " (deleted)");
}

TEST_F(LinuxProcessFolderTest, processThatShowsNoExecutableGoesByItsName) {
    static_cast<void>(proc.write("4711/stat", statLine("kthreadd")));
    EXPECT_EQ(LinuxProcessIdentity::executableOf(folder.get()), std::nullopt);
    EXPECT_EQ(LinuxProcessIdentity::commandOf(folder.get()), "kthreadd");
}

TEST_F(LinuxProcessFolderTest, processWhoseFirstThreadEndedGoesByWhatItsOthersRun) {
    std::string line = statLine("server");
    line.replace(line.find(" S "), 3, " Z ");
    static_cast<void>(proc.write("4711/stat", line));
    fs::create_directories(proc.path("4711/task/4711"));
    EXPECT_EQ(LinuxProcessIdentity::commandOf(folder.get()), "server");
    fs::create_directories(proc.path("4711/task/4720"));
    link("task/4720/exe", "/opt/server");
    EXPECT_EQ(LinuxProcessIdentity::commandOf(folder.get()), "/opt/server");
}

TEST(LinuxProcessIdentity, processHasEndedWhenNoneOfItsThreadsRunsOn) {
    Stat stat;
    stat.state = 'Z';
    EXPECT_TRUE(LinuxProcessIdentity::hasEnded(stat));
    stat.threads = 2;
    EXPECT_FALSE(LinuxProcessIdentity::hasEnded(stat));
    stat.state = 'X';
    EXPECT_TRUE(LinuxProcessIdentity::hasEnded(stat));
    stat.state = 'S';
    EXPECT_FALSE(LinuxProcessIdentity::hasEnded(stat));
}

TEST_F(LinuxProcessFolderTest, processThatShowsNothingHasNoFacts) {
    EXPECT_EQ(LinuxProcessIdentity::commandOf(folder.get()), std::nullopt);
    EXPECT_EQ(LinuxProcessIdentity::startTimeOf(folder.get()), std::nullopt);
    EXPECT_EQ(LinuxProcessIdentity::realOwnerOf(folder.get()), std::nullopt);
    EXPECT_EQ(LinuxProcessIdentity::workingDirectoryOf(folder.get()), std::nullopt);
}

TEST_F(LinuxProcessFolderTest, processThatIsNotThereHasNoFolder) {
    EXPECT_FALSE(LinuxProcessIdentity::openFolder(4712, proc.path()));
    static_cast<void>(proc.write("4713", "a file"));
    EXPECT_FALSE(LinuxProcessIdentity::openFolder(4713, proc.path()));
}

TEST(LinuxProcessIdentity, realProcessIsRead) {
    const ChildProgram child;
    const LinuxFileDescriptor folder = LinuxProcessIdentity::openFolder(child.pid());
    ASSERT_TRUE(folder);
    EXPECT_EQ(LinuxProcessIdentity::commandOf(folder.get()), fs::canonical("/bin/cat").string());
    EXPECT_EQ(LinuxProcessIdentity::realOwnerOf(folder.get()), ::getuid());
    EXPECT_EQ(LinuxProcessIdentity::workingDirectoryOf(folder.get()), fs::current_path().string());
    const std::optional<Stat> stat = LinuxProcessIdentity::statOf(folder.get());
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->name, "cat");
    EXPECT_GT(stat->startTime, 0U);
    const LinuxFileDescriptor ownFolder = LinuxProcessIdentity::openFolder(::getpid());
    EXPECT_GT(LinuxProcessIdentity::statOf(ownFolder.get()).value().residentPages, 0);
}

TEST(LinuxProcessIdentity, executableKeepsItsOddNameAfterItWasDeleted) {
    const TemporaryFolder folder;
    const std::string odd = fs::canonical(folder.path()).string() + "/odd ) \n\xFFname";
    fs::copy_file("/bin/cat", odd);
    const ChildProgram child({odd});
    EXPECT_EQ(child.command(), odd);
    fs::remove(odd);
    EXPECT_EQ(child.command(), odd);
}

TEST(LinuxProcessIdentity, folderOfAReapedProcessTellsNothing) {
    ChildProgram child;
    const LinuxFileDescriptor folder = LinuxProcessIdentity::openFolder(child.pid());
    child.endUnreaped();
    EXPECT_EQ(LinuxProcessIdentity::executableOf(folder.get()), std::nullopt);
    EXPECT_EQ(LinuxProcessIdentity::statOf(folder.get()).value().state, 'Z');
    EXPECT_EQ(child.endingSignal(), SIGKILL);
    EXPECT_EQ(LinuxProcessIdentity::commandOf(folder.get()), std::nullopt);
    EXPECT_EQ(LinuxProcessIdentity::realOwnerOf(folder.get()), std::nullopt);
}

}  // namespace
}  // namespace kestrune
