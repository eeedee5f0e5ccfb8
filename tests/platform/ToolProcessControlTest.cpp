#include "platform/ToolProcessControl.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/fakes/FakeProcessRunner.h"
#include "tests/fakes/FakeSystemTools.h"

namespace kestrune {
namespace {

const std::string processTool = "/bin/ps";

class ToolProcessControlTest : public testing::Test {
protected:
    [[nodiscard]] bool request(const std::string& owner, const std::string& command) {
        runner.answer(processTool, {0, owner});
        return control.requestTermination({4711, command, 0});
    }

    FakeProcessRunner runner;
    FakeSystemTools tools;
    std::vector<std::int32_t> signalled;
    bool isDelivered = true;
    ToolProcessControl control{runner, tools, 501, [this](std::int32_t pid) {
                                   signalled.push_back(pid);
                                   return isDelivered;
                               }};
};

TEST_F(ToolProcessControlTest, processOfThisUserWithThatCommandIsSignalled) {
    EXPECT_TRUE(request("  501 /usr/local/bin/node\n", "/usr/local/bin/node"));
    EXPECT_EQ(signalled, std::vector<std::int32_t>{4711});
    ASSERT_EQ(runner.calls.size(), 1U);
    EXPECT_EQ(runner.calls[0].executable, processTool);
    EXPECT_EQ(runner.calls[0].arguments, (std::vector<std::string>{"-p", "4711", "-o", "uid=,comm="}));
}

TEST_F(ToolProcessControlTest, namesWithSpacesCanBeStopped) {
    EXPECT_TRUE(request("501 /Applications/LM Studio.app/LM  Studio\n", "/Applications/LM Studio.app/LM  Studio"));
}

TEST_F(ToolProcessControlTest, anotherCommandUnderThatNumberIsNotSignalled) {
    for (const std::string owner :
         {"501 /usr/bin/node2\n", "501 /usr/bin/nod\n", "501 /usr/bin/Node\n", "501 /usr/bin/node \n",
          "501 /usr/bin/node\n501 /usr/bin/node\n", "501 node\n", "501\n", "", "/usr/bin/node\n"}) {
        EXPECT_FALSE(request(owner, "/usr/bin/node")) << owner;
    }
    EXPECT_TRUE(signalled.empty());
}

TEST_F(ToolProcessControlTest, anotherUsersProcessIsNotSignalled) {
    for (const std::string owner :
         {"0 node\n", "502 node\n", "5010 node\n", "-501 node\n", "root node\n", "5O1 node\n"}) {
        EXPECT_FALSE(request(owner, "node")) << owner;
    }
    EXPECT_TRUE(signalled.empty());
}

TEST_F(ToolProcessControlTest, toolThatFailsSignalsNothing) {
    EXPECT_FALSE(control.requestTermination({4711, "node", 0}));
    runner.answer(processTool, {1, "501 node\n"});
    EXPECT_FALSE(control.requestTermination({4711, "node", 0}));
    EXPECT_TRUE(signalled.empty());
}

TEST_F(ToolProcessControlTest, processWithoutACommandIsNotSignalled) {
    EXPECT_FALSE(request("501 \n", ""));
    EXPECT_TRUE(signalled.empty());
}

TEST_F(ToolProcessControlTest, signalThatWasNotDeliveredIsTold) {
    isDelivered = false;
    EXPECT_FALSE(request("501 node\n", "node"));
    EXPECT_EQ(signalled, std::vector<std::int32_t>{4711});
}

TEST_F(ToolProcessControlTest, numbersBelowTwoAreRefusedWithoutALook) {
    runner.answer(processTool, {0, "501 node\n"});
    for (const std::int32_t pid : {1, 0, -1, -4711, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_FALSE(control.requestTermination({pid, "node", 0})) << pid;
    }
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_TRUE(signalled.empty());
}

TEST_F(ToolProcessControlTest, nothingMoreIsToldOfAProcess) {
    EXPECT_EQ(control.details({4711, "node", 0}), std::nullopt);
    EXPECT_TRUE(runner.calls.empty());
}

}  // namespace
}  // namespace kestrune
