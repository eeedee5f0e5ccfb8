#include "platform/linux/LinuxProcessListing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>

#include "platform/ProcessText.h"
#include "platform/linux/LinuxSocketDiagnosis.h"
#include "platform/linux/LinuxSystemTools.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/ChildProgram.h"
#include "tests/platform/TestListener.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;
using Endpoints = std::vector<std::string>;

const ProcessRecord* find(const std::vector<ProcessRecord>& records, pid_t pid) {
    const auto place =
        std::find_if(records.begin(), records.end(), [&](const ProcessRecord& r) { return r.pid == pid; });
    return place == records.end() ? nullptr : &*place;
}

std::string outputOf(const ToolCommand& tool) {
    std::vector<std::string> command{tool.executable};
    command.insert(command.end(), tool.arguments.begin(), tool.arguments.end());
    const ChildProgram program(command);
    std::string output;
    for (std::string line = program.readLine(); !line.empty(); line = program.readLine()) {
        output += line + "\n";
    }
    return output;
}

class LinuxProcessListingTest : public testing::Test {
protected:
    [[nodiscard]] std::string commandOf(pid_t pid) {
        const ProcessSnapshot snapshot = listing.snapshot();
        const ProcessRecord* const record = find(snapshot.processes, pid);
        return record == nullptr ? "not listed" : record->command;
    }

    [[nodiscard]] Endpoints endpointsOf(pid_t pid) {
        const ListeningPorts listeners = listing.snapshot().listeners;
        const auto place = listeners.find(pid);
        return place == listeners.end() ? Endpoints{} : place->second;
    }

    // A copy of a program that waits for input.
    [[nodiscard]] std::string programNamed(const std::string& name) const {
        fs::copy_file("/bin/cat", folder.path(name));
        return folder.path(name);
    }

    TemporaryFolder folder;
    LinuxProcessListing listing;
};

TEST_F(LinuxProcessListingTest, thisProcessIsListedAsItIs) {
    const ProcessSnapshot snapshot = listing.snapshot();
    const ProcessRecord* const record = find(snapshot.processes, ::getpid());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->command, fs::read_symlink("/proc/self/exe").string());
    EXPECT_GT(record->residentKilobytes, 0);
    EXPECT_GT(record->startTime, 0U);
    EXPECT_TRUE(
        std::is_sorted(snapshot.processes.begin(), snapshot.processes.end(),
                       [](const ProcessRecord& one, const ProcessRecord& other) { return one.pid < other.pid; }));
}

TEST_F(LinuxProcessListingTest, oddNamesAreWhole) {
    for (const std::string& name :
         {std::string("two words"), std::string("a) S 1 (b"), std::string("line\nend"), std::string("\xff\xfe bad")}) {
        const std::string path = programNamed(name);
        const ChildProgram child({path});
        EXPECT_EQ(commandOf(child.pid()), path);
        EXPECT_EQ(commandOf(child.pid()), path);
    }
}

TEST_F(LinuxProcessListingTest, deletedExecutableIsListedWithoutTheMark) {
    const std::string path = programNamed("server");
    const ChildProgram child({path});
    EXPECT_EQ(commandOf(child.pid()), path);
    fs::remove(path);
    EXPECT_EQ(commandOf(child.pid()), path);
    EXPECT_EQ(find(LinuxProcessListing().snapshot().processes, child.pid())->command, path);
}

TEST_F(LinuxProcessListingTest, processThatRunsAnotherProgramIsCalledByIt) {
    const std::string path = programNamed("server");
    const ChildProgram child({"/bin/sh", "-c", "read line; exec \"$0\"", path});
    EXPECT_EQ(commandOf(child.pid()), fs::canonical("/bin/sh").string());
    child.write("\n");
    EXPECT_TRUE(child.echoes());
    EXPECT_EQ(commandOf(child.pid()), path);
}

TEST_F(LinuxProcessListingTest, processThatEndedButIsNotReapedIsCalledByItsShortName) {
    const ChildProgram child({programNamed("server")});
    EXPECT_EQ(commandOf(child.pid()), folder.path("server"));
    child.endUnreaped();
    const ProcessSnapshot snapshot = listing.snapshot();
    const ProcessRecord* const record = find(snapshot.processes, child.pid());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->command, "server");
    EXPECT_EQ(record->residentKilobytes, 0);
}

TEST_F(LinuxProcessListingTest, endedProcessIsListedNoMore) {
    pid_t pid = -1;
    {
        const ChildProgram child;
        pid = child.pid();
        EXPECT_NE(commandOf(pid), "not listed");
    }
    EXPECT_EQ(commandOf(pid), "not listed");
}

TEST_F(LinuxProcessListingTest, listeningSocketsAreListedWhileTheyListen) {
    TestListener everywhere("0.0.0.0");
    TestListener everywhere6("::");
    TestListener local("127.0.0.1");
    TestListener local6("::1");
    TestListener mapped("::ffff:127.0.0.1");
    Endpoints expected{"*:" + everywhere.port(), "*:" + everywhere6.port(), "127.0.0.1:" + local.port(),
                       "[::1]:" + local6.port(), "127.0.0.1:" + mapped.port()};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(endpointsOf(::getpid()), expected);
    EXPECT_EQ(endpointsOf(::getpid()), expected);
    for (TestListener* listener : {&everywhere, &everywhere6, &local6, &mapped}) {
        listener->close();
    }
    EXPECT_EQ(endpointsOf(::getpid()), Endpoints{"127.0.0.1:" + local.port()});
    local.close();
    EXPECT_TRUE(endpointsOf(::getpid()).empty());
}

TEST_F(LinuxProcessListingTest, connectedSocketsAreNotListed) {
    const TestListener listener("127.0.0.1");
    const LinuxFileDescriptor client(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(static_cast<std::uint16_t>(std::stoi(listener.port())));
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(::connect(client.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
    EXPECT_EQ(endpointsOf(::getpid()), Endpoints{"127.0.0.1:" + listener.port()});
}

TEST_F(LinuxProcessListingTest, inheritedSocketBelongsToEachOfItsHolders) {
    TestListener listener("127.0.0.1");
    const Endpoints expected{"127.0.0.1:" + listener.port()};
    EXPECT_EQ(endpointsOf(::getpid()), expected);
    const ChildProgram worker;
    EXPECT_EQ(endpointsOf(::getpid()), expected);
    EXPECT_EQ(endpointsOf(worker.pid()), expected);
    listener.close();
    EXPECT_TRUE(endpointsOf(::getpid()).empty());
    EXPECT_EQ(endpointsOf(worker.pid()), expected);
}

TEST_F(LinuxProcessListingTest, allOfManyListenersAreOwned) {
    constexpr std::size_t count = 200;
    std::vector<TestListener> listeners;
    Endpoints expected;
    for (std::size_t i = 0; i < count; ++i) {
        expected.push_back("127.0.0.1:" + listeners.emplace_back("127.0.0.1").port());
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(endpointsOf(::getpid()), expected);
    // A hole and a new one far above it.
    listeners.front().close();
    const LinuxFileDescriptor high(::fcntl(listeners.back().descriptor(), F_DUPFD_CLOEXEC, 900));
    expected.erase(std::find(expected.begin(), expected.end(), "127.0.0.1:" + listeners.front().port()));
    listeners.back().close();
    EXPECT_EQ(endpointsOf(::getpid()), expected);
    EXPECT_EQ(LinuxProcessListing().snapshot().listeners.at(::getpid()), expected);
}

TEST_F(LinuxProcessListingTest, tablesAreReadWhereTheKernelDoesNotAnswer) {
    const TestListener four("127.0.0.1");
    const TestListener six("::1");
    LinuxProcessListing byTables("/proc", ::getuid(), [](bool) { return std::nullopt; });
    EXPECT_EQ(byTables.snapshot().listeners.at(::getpid()), endpointsOf(::getpid()));
}

TEST_F(LinuxProcessListingTest, nobodyElsesProcessesAndSocketsAreListed) {
    const TestListener listener("127.0.0.1");
    LinuxProcessListing others("/proc", ::getuid() + 12'345, LinuxSocketDiagnosis::listeningSockets);
    EXPECT_EQ(others.snapshot(), ProcessSnapshot{});
}

TEST_F(LinuxProcessListingTest, systemWithoutProcListsNothing) {
    LinuxProcessListing none("/does/not/exist", ::getuid(), LinuxSocketDiagnosis::listeningSockets);
    EXPECT_EQ(none.snapshot(), ProcessSnapshot{});
}

TEST_F(LinuxProcessListingTest, thoroughLooksChangeNothingThatHolds) {
    const TestListener listener("127.0.0.1");
    const ChildProgram child;
    child.stop();
    for (int i = 0; i < 30; ++i) {
        const ProcessSnapshot snapshot = listing.snapshot();
        ASSERT_NE(find(snapshot.processes, child.pid()), nullptr);
        EXPECT_EQ(snapshot.listeners.at(child.pid()), Endpoints{"127.0.0.1:" + listener.port()});
        EXPECT_EQ(snapshot.listeners.at(::getpid()), Endpoints{"127.0.0.1:" + listener.port()});
    }
}

// Beside the tools, over children that stand still: what they use is known, and their share of the processor only
// shrinks.
class LinuxProcessListingBesideTools : public LinuxProcessListingTest {
protected:
    LinuxProcessListingBesideTools() {
        const std::string busy = "i=0; while [ $i -lt 30000 ]; do i=$((i+1)); done; echo; read line";
        children.push_back(std::make_unique<ChildProgram>(std::vector<std::string>{"/bin/sh", "-c", busy}));
        // The loop is over when it answers.
        EXPECT_EQ(children.front()->readLine(), "");
        for (const char* name : {"plain", "two words", "a) S 1 (b"}) {
            children.push_back(std::make_unique<ChildProgram>(std::vector<std::string>{programNamed(name)}));
        }
        for (const auto& child : children) {
            child->stop();
        }
        fs::remove(folder.path("plain"));
    }

    static std::string withoutMark(const std::string& path) { return path.substr(0, path.find(" (deleted)")); }

    TestListener four{"127.0.0.1"};
    TestListener everywhere{"0.0.0.0"};
    TestListener six{"::1"};
    TestListener everywhere6{"::"};
    TestListener mapped{"::ffff:127.0.0.1"};
    std::vector<std::unique_ptr<ChildProgram>> children;
};

TEST_F(LinuxProcessListingBesideTools, psPrintsTheSameFigures) {
    for (int turn = 0; turn < 5; ++turn) {
        const ProcessSnapshot before = listing.snapshot();
        const std::vector<ProcessRecord> printed = ProcessText::processes(outputOf(LinuxSystemTools().userProcesses()));
        const ProcessSnapshot after = listing.snapshot();
        for (const auto& child : children) {
            const ProcessRecord* const tool = find(printed, child->pid());
            const ProcessRecord* const earlier = find(before.processes, child->pid());
            const ProcessRecord* const later = find(after.processes, child->pid());
            ASSERT_TRUE(tool != nullptr && earlier != nullptr && later != nullptr);
            EXPECT_EQ(later->command, withoutMark(tool->command));
            EXPECT_EQ(later->residentKilobytes, tool->residentKilobytes);
            EXPECT_LE(std::stod(tool->cpu), std::stod(earlier->cpu));
            EXPECT_GE(std::stod(tool->cpu), std::stod(later->cpu));
        }
    }
}

TEST_F(LinuxProcessListingBesideTools, psListsTheSameProcesses) {
    const auto pids = [](const std::vector<ProcessRecord>& records) {
        std::vector<std::int32_t> numbers;
        for (const ProcessRecord& record : records) {
            numbers.push_back(record.pid);
        }
        return numbers;
    };
    const std::vector<std::int32_t> before = pids(listing.snapshot().processes);
    const std::vector<std::int32_t> printed =
        pids(ProcessText::processes(outputOf(LinuxSystemTools().userProcesses())));
    const std::vector<std::int32_t> after = pids(LinuxProcessListing().snapshot().processes);
    // What ran all the while.
    std::vector<std::int32_t> lasting;
    std::set_intersection(before.begin(), before.end(), after.begin(), after.end(), std::back_inserter(lasting));
    EXPECT_TRUE(std::includes(printed.begin(), printed.end(), lasting.begin(), lasting.end()));
    for (const auto& child : children) {
        EXPECT_TRUE(std::binary_search(lasting.begin(), lasting.end(), child->pid()));
    }
}

TEST_F(LinuxProcessListingBesideTools, lsofPrintsTheSameEndpoints) {
    for (int turn = 0; turn < 5; ++turn) {
        const ListeningPorts listeners = listing.snapshot().listeners;
        const ListeningPorts printed = ProcessText::listeningPorts(outputOf(LinuxSystemTools().listeningSockets()));
        for (const auto& child : children) {
            EXPECT_EQ(listeners.at(child->pid()), printed.at(child->pid()));
            EXPECT_EQ(listeners.at(child->pid()).size(), 5U);
        }
        EXPECT_EQ(listeners.at(::getpid()), printed.at(::getpid()));
    }
}

}  // namespace
}  // namespace kestrune
