#include "platform/macos/MacLoginItem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/macos/LaunchAgent.h"
#include "tests/fakes/FakeProcessRunner.h"
#include "tests/fakes/ManualQueues.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

class FakeLoginItemList final : public LoginItemList {
public:
    [[nodiscard]] bool isEnabled() const override { return enabled; }

    bool setRegistered(bool on) override {
        enabled = refuses ? enabled : on;
        return !refuses;
    }

    bool enabled = false;
    bool refuses = false;
};

/// Small files as simple as they can be.
class PlainFiles final : public FileStore {
public:
    [[nodiscard]] FileContent read(const std::string& path, std::size_t) const override {
        return {TemporaryFolder::contentOf(path), ReadFailure::missing};
    }

    [[nodiscard]] bool replace(const std::string& path, std::string_view bytes) override {
        std::error_code error;
        fs::create_directories(fs::path(path).parent_path(), error);
        std::ofstream file(path, std::ios::binary);
        file << bytes;
        return !fails && file.good();
    }

    [[nodiscard]] bool setAside(const std::string&) override { return false; }

    bool fails = false;
};

class MacLoginItemTest : public testing::Test {
protected:
    MacLoginItemTest() {
        folder.write("Kestrune", "");
        ::chmod(program.executable.c_str(), 0755);
        runner.answer("/bin/launchctl", [this](const FakeProcessRunner::Call& call) {
            fileWasThere.push_back(fs::exists(path));
            whenRunning(call);
            return ProcessResult{0, {}};
        });
    }

    [[nodiscard]] std::unique_ptr<MacLoginItem> item() {
        auto itsQueue = std::make_unique<ManualSerialQueue>();
        queue = itsQueue.get();
        auto itsList = std::make_unique<FakeLoginItemList>();
        list = itsList.get();
        return std::make_unique<MacLoginItem>(program, std::move(itsList), files, runner, std::move(itsQueue));
    }

    /// The first argument of every launchctl so far.
    [[nodiscard]] std::vector<std::string> commands() const {
        std::vector<std::string> result;
        for (const FakeProcessRunner::Call& call : runner.calls) {
            result.push_back(call.arguments.front());
        }
        return result;
    }

    using Commands = std::vector<std::string>;

    const TemporaryFolder folder;
    MacLoginItem::Program program{folder.path(), folder.path("Kestrune"), 501};
    const std::string path = folder.path("Library/LaunchAgents/com.torvandelsyn.kestrune.plist");
    PlainFiles files;
    FakeProcessRunner runner;
    std::vector<bool> fileWasThere;  ///< at each launchctl
    std::function<void(const FakeProcessRunner::Call&)> whenRunning = [](const FakeProcessRunner::Call&) {};
    ManualSerialQueue* queue = nullptr;
    FakeLoginItemList* list = nullptr;
};

TEST_F(MacLoginItemTest, theListIsTheSystemsOwn) {
    const auto login = item();
    EXPECT_FALSE(login->isRegistered());
    EXPECT_TRUE(login->setRegistered(true));
    EXPECT_TRUE(login->isRegistered());
    EXPECT_TRUE(list->enabled);
    EXPECT_TRUE(login->setRegistered(false));
    EXPECT_FALSE(login->isRegistered());
    list->refuses = true;
    EXPECT_FALSE(login->setRegistered(true));
    EXPECT_FALSE(login->isRegistered());
}

TEST_F(MacLoginItemTest, theAgentIsWrittenFirstAndThenMadeKnown) {
    const auto login = item();
    EXPECT_FALSE(login->isAgentInstalled());
    EXPECT_TRUE(login->setAgentInstalled(true));
    EXPECT_TRUE(login->isAgentInstalled());
    EXPECT_EQ(LaunchAgent::propertyList(program.executable), TemporaryFolder::contentOf(path));
    EXPECT_TRUE(runner.calls.empty());
    queue->runAll();
    ASSERT_EQ(1U, runner.calls.size());
    EXPECT_EQ("/bin/launchctl", runner.calls[0].executable);
    EXPECT_EQ((Commands{"bootstrap", "gui/501", path}), runner.calls[0].arguments);
    EXPECT_EQ(std::vector<bool>{true}, fileWasThere);
    EXPECT_TRUE(login->isAgentInstalled());
}

TEST_F(MacLoginItemTest, theAgentIsEndedFirstAndThenRemoved) {
    const auto login = item();
    ASSERT_TRUE(login->setAgentInstalled(true));
    queue->runAll();
    EXPECT_TRUE(login->setAgentInstalled(false));
    EXPECT_FALSE(login->isAgentInstalled());
    EXPECT_TRUE(fs::exists(path));
    queue->runAll();
    ASSERT_EQ(2U, runner.calls.size());
    EXPECT_EQ((Commands{"bootout", "gui/501/com.torvandelsyn.kestrune"}), runner.calls[1].arguments);
    EXPECT_EQ((std::vector<bool>{true, true}), fileWasThere);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(login->isAgentInstalled());
}

TEST_F(MacLoginItemTest, theAgentOfAnEarlierSessionIsFoundAndTakenAway) {
    ASSERT_TRUE(files.replace(path, "of an earlier session"));
    const auto login = item();
    EXPECT_TRUE(login->isAgentInstalled());
    EXPECT_TRUE(login->setAgentInstalled(false));
    queue->runAll();
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(MacLoginItemTest, whatLaunchctlAnswersIsOfNoConsequence) {
    for (const std::int32_t status : {-1, 1, 5, 36}) {
        runner.answer("/bin/launchctl", ProcessResult{status, "Bootstrap failed: 5: Input/output error"});
        const auto login = item();
        EXPECT_TRUE(login->setAgentInstalled(true));
        queue->runAll();
        EXPECT_TRUE(login->isAgentInstalled());
        EXPECT_TRUE(login->setAgentInstalled(false));
        queue->runAll();
        EXPECT_FALSE(fs::exists(path));
    }
}

TEST_F(MacLoginItemTest, whatWasAskedForLastHoldsHoweverFastOneFollowsTheOther) {
    const auto login = item();
    for (const bool on : {true, false, true, false, true}) {
        EXPECT_TRUE(login->setAgentInstalled(on));
        EXPECT_EQ(on, login->isAgentInstalled());
    }
    while (queue->runOne()) {
        EXPECT_TRUE(login->isAgentInstalled());
    }
    EXPECT_EQ(LaunchAgent::propertyList(program.executable), TemporaryFolder::contentOf(path));
    EXPECT_EQ("bootstrap", commands().back());
    for (const bool on : {false, true, false}) {
        EXPECT_TRUE(login->setAgentInstalled(on));
        EXPECT_EQ(on, login->isAgentInstalled());
    }
    while (queue->runOne()) {
        EXPECT_FALSE(login->isAgentInstalled());
    }
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ("bootout", commands().back());
}

TEST_F(MacLoginItemTest, anAgentThatIsWrittenAnewWhileItIsEndedStays) {
    const auto login = item();
    ASSERT_TRUE(login->setAgentInstalled(true));
    queue->runAll();
    whenRunning = [&login](const FakeProcessRunner::Call& call) {
        if (call.arguments.front() == "bootout") {
            EXPECT_TRUE(login->setAgentInstalled(true));
        }
    };
    EXPECT_TRUE(login->setAgentInstalled(false));
    queue->runAll();
    EXPECT_TRUE(login->isAgentInstalled());
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ((Commands{"bootstrap", "bootout", "bootstrap"}), commands());
}

TEST_F(MacLoginItemTest, launchctlIsNotWaitedForUntilLaunchdKills) {
    const auto login = item();
    ASSERT_TRUE(login->setAgentInstalled(true));
    ASSERT_TRUE(login->setAgentInstalled(false));
    queue->runAll();
    constexpr double secondsUntilLaunchdKills = 20;
    ASSERT_EQ(2U, runner.calls.size());
    for (const FakeProcessRunner::Call& call : runner.calls) {
        EXPECT_LT(call.limits.abandonAfterSeconds, secondsUntilLaunchdKills / 2);
        EXPECT_LE(call.limits.terminateAfterSeconds, call.limits.killAfterSeconds);
        EXPECT_LE(call.limits.killAfterSeconds, call.limits.abandonAfterSeconds);
    }
}

TEST_F(MacLoginItemTest, theAgentItselfIsNotEndedByTakingItsFileAway) {
    program.isTheAgent = true;
    ASSERT_TRUE(files.replace(path, "of an earlier session"));
    const auto login = item();
    EXPECT_TRUE(login->setAgentInstalled(false));
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(login->isAgentInstalled());
    queue->runAll();
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_TRUE(login->setAgentInstalled(true));
    queue->runAll();
    EXPECT_EQ(Commands{"bootstrap"}, commands());
}

TEST_F(MacLoginItemTest, whatWasAskedForIsDoneWhenTheProgramEnds) {
    {
        MacLoginItem login(program, std::make_unique<FakeLoginItemList>(), files, runner,
                           std::make_unique<ThreadSerialQueue>("launchctl"));
        EXPECT_TRUE(login.setAgentInstalled(true));
        EXPECT_TRUE(login.setAgentInstalled(false));
    }
    EXPECT_EQ((Commands{"bootstrap", "bootout"}), commands());
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(MacLoginItemTest, aHomeFolderThatCannotBeWrittenTakesNoAgent) {
    program.homeDirectory = folder.write("a file", "") + "/home";
    const auto login = item();
    EXPECT_FALSE(login->setAgentInstalled(true));
    EXPECT_FALSE(login->isAgentInstalled());
    EXPECT_EQ(0U, queue->waiting());
}

TEST_F(MacLoginItemTest, anAgentThatCannotBeWrittenLeavesAPendingRemovalInForce) {
    const auto login = item();
    ASSERT_TRUE(login->setAgentInstalled(true));
    ASSERT_TRUE(login->setAgentInstalled(false));
    files.fails = true;
    EXPECT_FALSE(login->setAgentInstalled(true));
    EXPECT_FALSE(login->isAgentInstalled());
    queue->runAll();
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(MacLoginItemTest, aProgramThatIsGoneOrAtAnImpossiblePathTakesNoAgent) {
    const std::string present = program.executable;
    for (const std::string& executable :
         {folder.path("gone"), folder.path(), present + "\n", std::string("Kestrune")}) {
        program.executable = executable;
        const auto login = item();
        EXPECT_FALSE(login->setAgentInstalled(true)) << executable;
        EXPECT_FALSE(fs::exists(path)) << executable;
    }
    ::chmod(present.c_str(), 0644);
    program.executable = present;
    EXPECT_FALSE(item()->setAgentInstalled(true));
}

TEST_F(MacLoginItemTest, aFileThatCannotBeRemovedIsNotReportedAndStillCounts) {
    fs::create_directories(path);
    const auto login = item();
    EXPECT_TRUE(login->isAgentInstalled());
    EXPECT_TRUE(login->setAgentInstalled(false));
    EXPECT_FALSE(login->isAgentInstalled());
    queue->runAll();
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_TRUE(login->isAgentInstalled());
}

}  // namespace
}  // namespace kestrune
