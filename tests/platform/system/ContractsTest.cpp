#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <string>

#include "platform/PlatformServices.h"
#include "tests/fakes/TemporaryFolder.h"

/// What holds on every system, asked of this one through the services that the program itself uses. Nothing outside a
/// temporary folder is changed.
namespace kestrune {

namespace {

PlatformServices& services() {
    static PlatformServices all = makePlatformServices();
    return all;
}

std::int64_t secondsSince1970() {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

}  // namespace

TEST(Contracts, classesOfMemoryLieWithinWhatAMachineHas) {
    const std::optional<MemoryPages> memory = services().hostStatistics->memory();
    ASSERT_TRUE(memory);
    EXPECT_GE(memory->pageSize, 1024U);
    const std::uint64_t pages = memory->free + memory->active + memory->inactive + memory->wired;
    EXPECT_GT(pages * memory->pageSize, 256ULL * 1024 * 1024);
    EXPECT_LT(pages * memory->pageSize, 64ULL * 1024 * 1024 * 1024 * 1024);
}

TEST(Contracts, ticksOfTheProcessorsDoNotRunBackwards) {
    const std::optional<CpuTicks> first = services().hostStatistics->cpuTicks();
    const std::optional<CpuTicks> second = services().hostStatistics->cpuTicks();
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_GT(first->user + first->system, 0);
    EXPECT_GE(second->user + second->system + second->nice, first->user + first->system + first->nice);
}

TEST(Contracts, theMachineWasStartedInThePast) {
    const std::optional<std::int64_t> boot = services().hostStatistics->bootTime();
    ASSERT_TRUE(boot);
    EXPECT_GT(*boot, 1'000'000'000);
    EXPECT_LE(*boot, secondsSince1970() + 1);
}

TEST(Contracts, interfacesHaveNamesAndTheLoopIsNoAdapter) {
    const std::optional<std::vector<NetworkInterface>> interfaces = services().hostStatistics->networkInterfaces();
    ASSERT_TRUE(interfaces);
    for (const NetworkInterface& one : *interfaces) {
        EXPECT_FALSE(one.name.empty());
        if (one.name == "lo" || one.name == "lo0") {
            EXPECT_FALSE(one.isEthernetOrWiFi);
        }
    }
}

TEST(Contracts, batteriesHoldNoMoreThanTheyCan) {
    for (const PowerSource& battery : services().powerSources->sources()) {
        EXPECT_LE(battery.currentCapacity.value_or(0), battery.maxCapacity.value_or(0));
    }
}

TEST(Contracts, aVolumeHasNoMoreAvailableThanInTotal) {
    const std::optional<VolumeCapacity> volume = services().volumeInfo->capacity(services().homeDirectory);
    ASSERT_TRUE(volume);
    ASSERT_TRUE(volume->total);
    ASSERT_TRUE(volume->available);
    EXPECT_GT(*volume->total, 0);
    EXPECT_GE(*volume->available, 0);
    EXPECT_LE(*volume->available, *volume->total);
}

TEST(Contracts, theHomeFolderIsAFolderWithItsLinksResolved) {
    const std::string& home = services().homeDirectory;
    EXPECT_EQ(services().fileQueries->kind(home), FileKind::directory);
    EXPECT_EQ(services().fileQueries->resolvingLinks(home), home);
}

TEST(Contracts, aLinkIsWhatItLeadsTo) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "12345");
    ASSERT_EQ(0, ::symlink(file.c_str(), folder.path("link").c_str()));
    ASSERT_EQ(0, ::symlink("nowhere", folder.path("broken").c_str()));
    const FileQueries& queries = *services().fileQueries;
    EXPECT_EQ(queries.kind(folder.path("link")), FileKind::other);
    EXPECT_EQ(queries.fileSize(file), 5);
    EXPECT_EQ(queries.kind(folder.path("broken")), std::nullopt);
    EXPECT_EQ(queries.resolvingLinks(folder.path("link")), queries.resolvingLinks(file));
}

TEST(Contracts, aWalkMeasuresFilesAndFollowsNoLink) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, ::mkdir(folder.path("inner").c_str(), 0700));
    folder.write("inner/large", std::string(100'000, 'x'));
    folder.write("small", "x");
    ASSERT_EQ(0, ::symlink("inner", folder.path("link").c_str()));
    WalkRequest request;
    request.folder = folder.path();
    request.largestLimit = 1;
    const TreeWalk walk = services().directoryWalker->walk(request);
    EXPECT_TRUE(walk.opened);
    EXPECT_EQ(walk.end, WalkEnd::finished);
    EXPECT_EQ(walk.entries, 4);
    EXPECT_EQ(walk.files, 2);
    EXPECT_EQ(walk.links, 1);
    EXPECT_EQ(walk.unreadable, 0);
    EXPECT_GE(walk.bytes, 100'000);
    ASSERT_EQ(walk.largestFiles.size(), 1U);
    EXPECT_EQ(walk.largestFiles.front().path, "inner/large");
}

TEST(Contracts, aFileIsReplacedAsAWholeAndReadBack) {
    const TemporaryFolder folder;
    FileStore& store = *services().fileStore;
    const std::string path = folder.path("new/record.json");
    EXPECT_EQ(store.read(path, 100).failure, ReadFailure::missing);
    EXPECT_TRUE(store.replace(path, "first"));
    EXPECT_TRUE(store.replace(path, "second"));
    EXPECT_EQ(store.read(path, 100).bytes, "second");
    EXPECT_EQ(store.read(path, 3).failure, ReadFailure::tooLarge);
    EXPECT_TRUE(store.setAside(path));
    EXPECT_EQ(store.read(path, 100).failure, ReadFailure::missing);
}

TEST(Contracts, aToolGetsItsArgumentsAsTheyAre) {
    const ProcessResult result = services().processRunner->run("/bin/echo", {"a b", "*", "$HOME"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "a b * $HOME\n");
}

TEST(Contracts, aToolThatIsNotThereDoesNotStart) {
    EXPECT_EQ(services().processRunner->run("/nowhere/at all", {}).status, -1);
}

TEST(Contracts, theListingHasThisProcessOnceAndControlKnowsIt) {
    const ProcessSnapshot snapshot = services().processListing->snapshot();
    const auto isThisOne = [](const ProcessRecord& record) { return record.pid == ::getpid(); };
    ASSERT_EQ(std::count_if(snapshot.processes.begin(), snapshot.processes.end(), isThisOne), 1);
    const auto self = std::find_if(snapshot.processes.begin(), snapshot.processes.end(), isThisOne);
    EXPECT_GT(self->residentKilobytes, 1'000);
    EXPECT_NE(self->command.find("test_platform_system"), std::string::npos) << self->command;
    const std::optional<ProcessDetails> details =
        services().processControl->details({self->pid, self->command, self->startTime});
    ASSERT_TRUE(details);
    EXPECT_LE(details->secondsRunning.value_or(0), 3'600);
}

TEST(Contracts, processesThatAreTheSystemsAreNotEnded) {
    EXPECT_FALSE(services().processControl->requestTermination({0, "", 0}));
    EXPECT_FALSE(services().processControl->requestTermination({1, "", 0}));
}

TEST(Contracts, toolsAreNamedByAbsolutePaths) {
    const SystemTools& tools = *services().systemTools;
    std::vector<ToolCommand> commands{tools.diskFree(),      tools.topProcesses(),       tools.listeningSockets(),
                                      tools.userProcesses(), tools.processOwner(2),      tools.purgeMemory(),
                                      tools.emptyTrash(),    tools.thinLocalSnapshots(), tools.restartFileManager()};
    for (const ToolCommand& command : commands) {
        EXPECT_EQ(command.executable.front(), '/') << command.executable;
    }
    EXPECT_EQ(services().processRunner->run(tools.diskFree().executable, tools.diskFree().arguments).status, 0);
}

TEST(Contracts, programsThatRunHaveNamesEachOnce) {
    const std::vector<std::string> names = services().runningPrograms->names();
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    EXPECT_EQ(std::count(names.begin(), names.end(), ""), 0);
}

}  // namespace kestrune
