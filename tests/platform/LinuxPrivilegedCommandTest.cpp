#include <gtest/gtest.h>

#include <random>

#include "engine/SystemEngine.h"
#include "platform/PrivilegedCommand.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "platform/linux/LinuxSystemTools.h"
#include "tests/fakes/FakeHostStatistics.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakePowerSources.h"
#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/FakeRunningApplications.h"
#include "tests/fakes/FakeTrash.h"
#include "tests/fakes/FakeVolumeInfo.h"
#include "tests/fakes/ManualQueues.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

using Words = std::vector<std::string>;

// Any byte but NUL, with those a shell treats specially much more often than the rest.
std::string randomWord(std::mt19937& random) {
    constexpr std::string_view special = "'\"\\$`!*?[]{}()<>|&;#~ \t\n-=%^";
    std::string word(random() % 13, ' ');
    for (char& c : word) {
        c = random() % 3 == 0 ? static_cast<char>(1 + random() % 255) : special[random() % special.size()];
    }
    return word;
}

TEST(LinuxPrivilegedCommand, aHundredThousandRandomArgumentListsPassARealShellUnchanged) {
    constexpr int scripts = 50;
    constexpr int listsAScript = 2000;
    std::mt19937 random(99);
    LinuxProcessRunner runner;
    const TemporaryFolder folder;
    for (int script = 0; script < scripts; ++script) {
        std::string text;
        std::string expected;
        for (int list = 0; list < listsAScript; ++list) {
            Words words(1 + random() % 4);
            for (std::string& word : words) {
                word = randomWord(random);
                expected += word;
                expected += '\0';
            }
            text += "printf '%s\\0' " + PrivilegedCommand::shellQuoted(words) + "\nprintf '|'\n";
            expected += '|';
        }
        const ProcessResult result = runner.run("/bin/sh", {folder.write("script", text)});
        ASSERT_EQ(result.status, 0);
        ASSERT_TRUE(result.output == expected) << "script " << script;
    }
}

// The engine with real tools: what the two layers make of a command together.
class LinuxSystemEngineTest : public testing::Test {
protected:
    FakeHostStatistics host;
    FakePowerSources power;
    FakeVolumeInfo volumes;
    LinuxProcessRunner runner;
    LinuxSystemTools tools;
    FakePreferences preferences;
    FakeNotificationCenter center;
    ManualClock clock;
    ManualMainQueue mainQueue;
    FakeRunningApplications applications;
    FakeTrash trash;
    FakeLoginItem loginItem;
    SystemEngine engine{SystemEngineParts{host, power, volumes, runner, tools, preferences, center, clock, mainQueue,
                                          applications, trash, loginItem, "/home/anna", 4711}};
};

TEST_F(LinuxSystemEngineTest, invalidUtf8YieldsEmptyOutputButTheRealExitStatus) {
    EXPECT_EQ(engine.runProc("/bin/sh", {"-c", "printf 'ab\\377'; exit 3"}), (SystemEngine::CommandResult{3, ""}));
    EXPECT_EQ(engine.runProc("/bin/sh", {"-c", "printf 'gr\\303\\274n'; exit 3"}),
              (SystemEngine::CommandResult{3, "gr\xC3\xBCn"}));
}

TEST_F(LinuxSystemEngineTest, missingToolYieldsMinusOne) {
    EXPECT_EQ(engine.runProc("/does/not/exist", {}), (SystemEngine::CommandResult{-1, ""}));
    EXPECT_EQ(engine.shell("/does/not/exist", {}), "");
}

TEST_F(LinuxSystemEngineTest, commandThatSucceedsUnprivilegedRunsExactlyOnce) {
    const TemporaryFolder folder;
    EXPECT_TRUE(engine.runPrivileged("/bin/sh", {"-c", "echo run >> " + folder.path("log")}));
    EXPECT_EQ(TemporaryFolder::contentOf(folder.path("log")), "run\n");
}

TEST_F(LinuxSystemEngineTest, dfFallbackReadsTheRealTool) {
    const DiskSummary summary = engine.getDiskSummary();
    EXPECT_GT(summary.totalGB, 0);
    EXPECT_GE(summary.pct, 0);
    EXPECT_LE(summary.pct, 100);
}

}  // namespace
}  // namespace kestrune
