#include "workspace/RunningRows.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

constexpr std::int32_t ownPID = 4711;

RunningApplication application(std::int32_t pid, const std::string& name, std::uint64_t startTime = 0) {
    RunningApplication made;
    made.processIdentifier = pid;
    made.startTime = startTime;
    made.localizedName = name;
    made.activationPolicy = ActivationPolicy::regular;
    return made;
}

ProcessRecord process(std::int32_t pid, const std::string& command, std::int64_t kilobytes = 0,
                      std::uint64_t startTime = 0) {
    return {pid, kilobytes, "0.0", command, startTime};
}

std::vector<std::string> namesOf(const std::vector<RunningItem>& rows) {
    std::vector<std::string> names;
    for (const auto& row : rows) {
        names.push_back(row.name);
    }
    return names;
}

using Names = std::vector<std::string>;

}  // namespace

TEST(RunningRows, anApplicationIsListedByItsNameWithItsFigures) {
    const auto firefox = application(200, "Firefox", 77);
    const auto rows = runningItems({{{200, 524'288, "12.5", "/usr/lib/firefox/firefox", 77}}, {}}, {firefox}, ownPID);
    ASSERT_EQ(rows.size(), 1U);
    RunningItem expected;
    expected.id = 200;
    expected.name = "Firefox";
    expected.executable = "/usr/lib/firefox/firefox";
    expected.memoryMB = 512;
    expected.cpu = "12.5";
    expected.app = firefox;
    expected.startTime = 77;
    EXPECT_EQ(rows[0], expected);
}

TEST(RunningRows, anApplicationWithoutANameGoesByItsCommand) {
    const auto rows = runningItems({{process(200, "/opt/viewer/image viewer")}, {}}, {application(200, "")}, ownPID);
    EXPECT_EQ(namesOf(rows), Names{"image viewer"});
    EXPECT_TRUE(rows.at(0).app.has_value());
}

TEST(RunningRows, anApplicationThatTheListingDoesNotHoldIsNoRow) {
    EXPECT_TRUE(runningItems({}, {application(200, "Firefox")}, ownPID).empty());
}

TEST(RunningRows, theProgramsOwnProcessNeverAppears) {
    const ProcessSnapshot snapshot{{process(ownPID, "/usr/bin/node"), process(200, "/usr/bin/node")},
                                   {{ownPID, {"*:3000"}}}};
    const auto rows = runningItems(snapshot, {application(ownPID, "Kestrune")}, ownPID);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].id, 200);
}

TEST(RunningRows, aBackgroundProcessNamedNodeInAnyLetterCaseIsListed) {
    const ProcessSnapshot snapshot{{process(1000, "/usr/bin/Node"), process(1001, "NODE"), process(1002, "node")}, {}};
    const auto rows = runningItems(snapshot, {}, ownPID);
    EXPECT_EQ(namesOf(rows), (Names{"Node", "NODE", "node"}));
    EXPECT_FALSE(rows.at(0).app.has_value());
}

TEST(RunningRows, aProcessNamedNodejsIsListedOnlyIfItListensOnAPort) {
    ProcessSnapshot snapshot{{process(1000, "/usr/bin/nodejs")}, {}};
    EXPECT_TRUE(runningItems(snapshot, {}, ownPID).empty());
    snapshot.listeners[1000] = {"*:3000"};
    const auto rows = runningItems(snapshot, {}, ownPID);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].name, "nodejs");
    EXPECT_EQ(rows[0].listeners, Names{"*:3000"});
}

TEST(RunningRows, everyDeveloperToolIsListed) {
    const Names tools{"node", "workerd", "vite",         "next-server", "esbuild", "bun",
                      "deno", "ollama",  "llama-server", "llmster",     "comfyui"};
    ProcessSnapshot snapshot;
    for (const auto& tool : tools) {
        snapshot.processes.push_back(process(static_cast<std::int32_t>(snapshot.processes.size()) + 100, tool));
    }
    snapshot.processes.push_back(process(99, "/usr/bin/python3"));
    EXPECT_EQ(namesOf(runningItems(snapshot, {}, ownPID)), tools);
}

TEST(RunningRows, aFolderNamedLikeADeveloperToolDoesNotCount) {
    EXPECT_TRUE(runningItems({{process(1000, "/opt/node/bin/npm")}, {}}, {}, ownPID).empty());
}

TEST(RunningRows, theMapOfPortsAddsNoProcess) {
    EXPECT_TRUE(runningItems({{}, {{1000, {"*:3000"}}}}, {}, ownPID).empty());
}

TEST(RunningRows, aProcessWithoutACommandIsNoRow) {
    EXPECT_TRUE(runningItems({{process(1000, "")}, {{1000, {"*:3000"}}}}, {}, ownPID).empty());
}

TEST(RunningRows, aCommandKeepsItsSpaces) {
    const auto rows =
        runningItems({{process(200, "/opt/LM Studio/LM Studio")}, {}}, {application(200, "LM Studio")}, ownPID);
    EXPECT_EQ(rows.at(0).executable, "/opt/LM Studio/LM Studio");
}

TEST(RunningRows, memoryIsCutOffToWholeMegabytes) {
    const ProcessSnapshot snapshot{
        {process(1, "node", 1023), process(2, "node", 1024), process(3, "node", 2047), process(4, "node", 0)}, {}};
    std::vector<std::int64_t> megabytes;
    for (const auto& row : runningItems(snapshot, {}, ownPID)) {
        megabytes.push_back(row.memoryMB);
    }
    EXPECT_EQ(megabytes, (std::vector<std::int64_t>{1, 1, 0, 0}));
}

TEST(RunningRows, theLargestComesFirstAndEqualOnesKeepTheOrderOfTheListing) {
    const ProcessSnapshot snapshot{{process(10, "bun", 5 * 1024), process(11, "node", 9 * 1024),
                                    process(12, "deno", 5 * 1024 + 900), process(13, "vite", 5 * 1024)},
                                   {}};
    EXPECT_EQ(namesOf(runningItems(snapshot, {}, ownPID)), (Names{"node", "bun", "deno", "vite"}));
}

TEST(RunningRows, aNumberHandedOutAgainIsNotThatApplication) {
    const auto gone = application(200, "Firefox", 77);
    EXPECT_TRUE(runningItems({{process(200, "/bin/sleep", 0, 78)}, {}}, {gone}, ownPID).empty());
    const auto rows = runningItems({{process(200, "/usr/bin/node", 0, 78)}, {}}, {gone}, ownPID);
    EXPECT_EQ(namesOf(rows), Names{"node"});
    EXPECT_FALSE(rows.at(0).app.has_value());
}

TEST(RunningRows, whereOneSideTellsNoStartTimeTheNumberDecides) {
    for (const auto& [ofApplication, ofProcess] : {std::pair<std::uint64_t, std::uint64_t>{0, 78}, {77, 0}, {0, 0}}) {
        const auto rows = runningItems({{process(200, "/usr/bin/firefox", 0, ofProcess)}, {}},
                                       {application(200, "Firefox", ofApplication)}, ownPID);
        EXPECT_EQ(namesOf(rows), Names{"Firefox"});
    }
}

TEST(RunningRows, anEmptyListingGivesNoRows) {
    EXPECT_TRUE(runningItems({}, {}, ownPID).empty());
}

}  // namespace kestrune
