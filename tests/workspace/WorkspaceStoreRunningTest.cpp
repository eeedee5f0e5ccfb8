#include <gtest/gtest.h>

#include <map>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

class WorkspaceStoreRunning : public testing::Test {
protected:
    void list(std::int32_t pid, const std::string& command, std::int64_t kilobytes = 0) {
        fixture.processes.now.processes.push_back({pid, kilobytes, "1.0", command, 0});
    }

    void refresh() {
        fixture.store().refreshProcesses();
        fixture.settle();
    }

    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> result;
        for (const auto& row : fixture.store().running.get()) {
            result.push_back(row.name);
        }
        return result;
    }

    StoreFixture fixture;
};

using Names = std::vector<std::string>;

}  // namespace

TEST_F(WorkspaceStoreRunning, monitoringBeginsWithAListing) {
    list(100, "/usr/bin/node");
    fixture.store().startMonitoring();
    EXPECT_TRUE(fixture.store().running.get().empty());
    fixture.settle();
    EXPECT_EQ(names(), Names{"node"});
}

TEST_F(WorkspaceStoreRunning, aListingLooksForNoIcons) {
    fixture.applications.start(100, "Paint").iconNames = {"/icons/paint.svg"};
    list(100, "/usr/bin/paint");
    list(101, "/usr/bin/node");
    refresh();
    EXPECT_EQ(fixture.applications.iconQuestions, 0);
    std::map<std::string, std::string> icons;
    for (const RunningItem& row : fixture.store().running.get()) {
        icons[row.name] = fixture.store().iconOf(row).path;
    }
    EXPECT_EQ(icons, (std::map<std::string, std::string>{{"Paint", "/icons/paint.svg"}, {"node", ""}}));
    EXPECT_EQ(fixture.applications.iconQuestions, 1);
}

TEST_F(WorkspaceStoreRunning, anIconIsReadUnlessItIsTooLargeToBeOne) {
    fixture.fileStore.files["/icons/paint.svg"] = "<svg/>";
    fixture.fileStore.files["/icons/large.svg"] = std::string((1 << 20) + 1, ' ');
    EXPECT_EQ(fixture.store().iconFile("/icons/paint.svg"), "<svg/>");
    EXPECT_EQ(fixture.store().iconFile("/icons/large.svg"), std::nullopt);
    EXPECT_EQ(fixture.store().iconFile("/icons/missing.svg"), std::nullopt);
}

TEST_F(WorkspaceStoreRunning, aListingIsPublishedOnTheMainThread) {
    list(100, "/usr/bin/node");
    fixture.store().refreshProcesses();
    EXPECT_EQ(fixture.applications.reads, 1);
    EXPECT_EQ(fixture.processes.reads, 0);
    ASSERT_TRUE(fixture.actions().runOne());
    EXPECT_EQ(fixture.processes.reads, 1);
    EXPECT_TRUE(fixture.store().running.get().empty());
    fixture.mainQueue.runPosted();
    EXPECT_EQ(names(), Names{"node"});
}

TEST_F(WorkspaceStoreRunning, aSecondRefreshBeforeTheFirstPublishesDoesNothing) {
    fixture.store().refreshProcesses();
    fixture.store().refreshProcesses();
    EXPECT_EQ(fixture.actions().waiting(), 1U);
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.store().refreshProcesses();
    EXPECT_EQ(fixture.actions().waiting(), 0U);
    EXPECT_EQ(fixture.applications.reads, 1);
    fixture.settle();
    refresh();
    EXPECT_EQ(fixture.processes.reads, 2);
}

TEST_F(WorkspaceStoreRunning, theProgramsOwnProcessNeverAppears) {
    fixture.applications.start(StoreFixture::ownProcess, "Kestrune");
    list(StoreFixture::ownProcess, "/usr/bin/kestrune");
    refresh();
    EXPECT_TRUE(fixture.store().running.get().empty());
    EXPECT_TRUE(fixture.store().processesListed.get());
}

TEST_F(WorkspaceStoreRunning, anAccessoryApplicationIsListedOnlyAsDeveloperToolOrServer) {
    for (const std::int32_t pid : {100, 101, 102}) {
        fixture.applications.start(pid, "Applet").activationPolicy = ActivationPolicy::accessory;
    }
    list(100, "/usr/bin/applet");
    list(101, "/opt/agent/serving applet");
    list(102, "/usr/bin/ollama");
    fixture.processes.now.listeners[101] = {"127.0.0.1:8080"};
    refresh();
    EXPECT_EQ(names(), (Names{"serving applet", "ollama"}));
    for (const auto& row : fixture.store().running.get()) {
        EXPECT_FALSE(row.app.has_value());
    }
}

TEST_F(WorkspaceStoreRunning, theLargestComesFirst) {
    fixture.applications.start(100, "Firefox");
    list(101, "/usr/bin/node", 2048);
    list(100, "/usr/lib/firefox/firefox", 4096);
    refresh();
    EXPECT_EQ(names(), (Names{"Firefox", "node"}));
}

TEST_F(WorkspaceStoreRunning, anEmptyListingEmptiesTheRowsWithoutAMessage) {
    list(100, "/usr/bin/node");
    refresh();
    fixture.processes.now = {};
    refresh();
    EXPECT_TRUE(fixture.store().running.get().empty());
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
}

TEST_F(WorkspaceStoreRunning, theFirstListingIsToldEvenWhenItIsEmpty) {
    int told = 0;
    const auto subscription = fixture.store().processesListed.observe([&] { ++told; });
    EXPECT_FALSE(fixture.store().processesListed.get());
    refresh();
    EXPECT_TRUE(fixture.store().processesListed.get());
    refresh();
    EXPECT_EQ(told, 1);
}

TEST_F(WorkspaceStoreRunning, anUnchangedListingTellsNobody) {
    fixture.applications.start(100, "Firefox");
    list(100, "/usr/lib/firefox/firefox");
    refresh();
    int told = 0;
    const auto subscription = fixture.store().running.observe([&] { ++told; });
    refresh();
    EXPECT_EQ(told, 0);
    fixture.processes.now.processes[0].cpu = "2.0";
    refresh();
    EXPECT_EQ(told, 1);
}

TEST_F(WorkspaceStoreRunning, aRefreshWaitsBehindAScan) {
    fixture.store().scan();
    fixture.store().refreshProcesses();
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.mainQueue.runPosted();
    EXPECT_EQ(fixture.processes.reads, 0);
    fixture.settle();
    EXPECT_EQ(fixture.processes.reads, 1);
}

TEST_F(WorkspaceStoreRunning, aListingThatEndsAfterTheStoreIsForgotten) {
    list(100, "/usr/bin/node");
    fixture.store().refreshProcesses();
    ASSERT_TRUE(fixture.actions().runOne());
    fixture.endStore();
    fixture.mainQueue.runPosted();
    EXPECT_EQ(fixture.processes.reads, 1);
}

TEST_F(WorkspaceStoreRunning, toolsAreRecognisedByNameOrExecutable) {
    EXPECT_TRUE(WorkspaceStore::isAIProcess("Ollama", "/usr/bin/other"));
    EXPECT_TRUE(WorkspaceStore::isAIProcess("helper", "/usr/local/bin/llama-server"));
    EXPECT_TRUE(WorkspaceStore::isAIProcess("helper", "LLMster"));
    EXPECT_TRUE(WorkspaceStore::isAIProcess("ComfyUI", ""));
    EXPECT_FALSE(WorkspaceStore::isAIProcess("Ollama Helper", "/usr/bin/ollama-runner"));
    EXPECT_FALSE(WorkspaceStore::isAIProcess("node", "/opt/ollama/node"));
    EXPECT_FALSE(WorkspaceStore::isAIProcess("", ""));
}

TEST_F(WorkspaceStoreRunning, aCommandWithSpacesIsRecognisedByItsLastPart) {
    EXPECT_TRUE(WorkspaceStore::isAIProcess("Chat", "/Applications/LM Studio.app/Contents/MacOS/LM Studio"));
    EXPECT_FALSE(WorkspaceStore::isAIProcess("Chat", "/Applications/LM Studio.app/Contents/MacOS/LM Studio Helper"));
}

TEST_F(WorkspaceStoreRunning, endpointsOfAProcessAreSortedAndListedOnce) {
    const ListeningPorts expected{{123, {"*:3000", "127.0.0.1:9229"}}};
    EXPECT_EQ(WorkspaceStore::listeningPorts("p123\nn*:3000\nn*:3000\nn127.0.0.1:9229\n"), expected);
}

TEST_F(WorkspaceStoreRunning, anEndpointBeforeAnyProcessIsIgnored) {
    EXPECT_EQ(WorkspaceStore::listeningPorts("n*:3000\np5\nn*:4000\n"), (ListeningPorts{{5, {"*:4000"}}}));
}

TEST_F(WorkspaceStoreRunning, aProcessThatIsNoNumberHasNoEndpoints) {
    EXPECT_EQ(WorkspaceStore::listeningPorts("p5\npabc\nn*:3000\np6\nf12\nn[::1]:5173\n"),
              (ListeningPorts{{6, {"[::1]:5173"}}}));
}

TEST_F(WorkspaceStoreRunning, emptyOutputHasNoEndpoints) {
    EXPECT_TRUE(WorkspaceStore::listeningPorts("").empty());
}

}  // namespace kestrune
