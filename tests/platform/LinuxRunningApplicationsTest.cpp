#include "platform/linux/LinuxRunningApplications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tests/fakes/FakeApplicationSource.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/ChildProgram.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

SourcedApplication sourced(std::int32_t pid, const std::string& hint, std::vector<std::int32_t> others = {}) {
    return {pid, std::move(others), {hint}, hint, ActivationPolicy::regular};
}

RunningApplication started(std::int32_t pid, std::uint64_t startTime) {
    RunningApplication application;
    application.processIdentifier = pid;
    application.startTime = startTime;
    return application;
}

std::vector<std::string> noThemes() {
    return {};
}

class LinuxRunningApplicationsTest : public testing::Test {
protected:
    /// Looks at processes below procRoot, and at two parts of the desktop.
    [[nodiscard]] std::unique_ptr<LinuxRunningApplications> looking(const std::string& procRoot) {
        std::vector<std::unique_ptr<ApplicationSource>> sources;
        sources.push_back(std::make_unique<FakeApplicationSource>(first));
        sources.push_back(std::make_unique<FakeApplicationSource>(second));
        DesktopApplications installed(DesktopEntryFolders({entries.path()}),
                                      IconFiles({}, noThemes, {pictures.path()}));
        auto made = std::make_unique<LinuxRunningApplications>(std::move(sources), std::move(installed), procRoot);
        // Waits for the reading that began, which could meet an entry that a test has written half.
        static_cast<void>(made->iconOf({}));
        return made;
    }

    void addProcess(std::int32_t pid, std::uint64_t startTime, char state = 'S', uid_t owner = ::getuid(),
                    int threads = 1) const {
        const std::string folder = std::to_string(pid);
        fs::create_directories(proc.path(folder));
        static_cast<void>(proc.write(folder + "/stat",
                                     folder + " (tool) " + state + " 1 1 1 0 -1 4194304 0 0 0 0 1 2 0 0 20 0 " +
                                         std::to_string(threads) + " 0 " + std::to_string(startTime) + " 1000 25 0\n"));
        static_cast<void>(
            proc.write(folder + "/status", "Name:\ttool\nUid:\t" + std::to_string(owner) + "\t0\t0\t0\n"));
        if (!fs::is_symlink(proc.path(folder + "/exe"))) {
            fs::create_symlink("/opt/tool" + folder, proc.path(folder + "/exe"));
        }
    }

    /// The process becomes another program.
    void exec(std::int32_t pid, const std::string& executable) const {
        const std::string link = proc.path(std::to_string(pid) + "/exe");
        fs::remove(link);
        fs::create_symlink(executable, link);
    }

    void addEntry(const std::string& id, const std::string& more) const {
        static_cast<void>(entries.write(id + ".desktop", "[Desktop Entry]\nType=Application\n" + more));
    }

    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> found;
        for (const RunningApplication& each : applications->runningApplications()) {
            found.push_back(std::to_string(each.processIdentifier) + " " + each.localizedName);
        }
        return found;
    }

    TemporaryFolder proc;
    TemporaryFolder entries;
    TemporaryFolder pictures;
    FakeDesktopPart first;
    FakeDesktopPart second;
    std::unique_ptr<LinuxRunningApplications> applications = looking(proc.path());
};

TEST_F(LinuxRunningApplicationsTest, applicationIsDescribedByItsEntry) {
    addProcess(100, 7);
    addEntry("org.example.Paint", "Name=Paint\nIcon=paint\nExec=paint %F\n");
    first.applications = {sourced(100, "org.example.Paint")};
    EXPECT_THAT(applications->runningApplications(),
                ElementsAre(RunningApplication{.processIdentifier = 100,
                                               .startTime = 7,
                                               .executable = "/opt/tool100",
                                               .localizedName = "Paint",
                                               .bundleIdentifier = "org.example.Paint",
                                               .iconNames = {"paint"},
                                               .activationPolicy = ActivationPolicy::regular}));
}

TEST_F(LinuxRunningApplicationsTest, iconIsLookedForWhenItIsAskedForAndOutlivesItsApplication) {
    addProcess(100, 7);
    addEntry("org.example.Paint", "Name=Paint\nIcon=paint\n");
    first.applications = {sourced(100, "org.example.Paint")};
    const RunningApplication paint = applications->runningApplications().at(0);
    // Had anybody looked before, nothing would have been found, and that would be kept.
    const std::string picture = pictures.write("paint.svg", "");
    first.applications = {};
    EXPECT_THAT(applications->runningApplications(), IsEmpty());
    EXPECT_EQ(applications->iconOf(paint), (ApplicationIcon{picture, nullptr}));
}

TEST_F(LinuxRunningApplicationsTest, iconOfAnUnknownApplicationGoesByTheFirstOfItsNamesThatHasOne) {
    addProcess(100, 7);
    first.applications = {{100, {}, {"Window-Class", "Paint"}, "", ActivationPolicy::regular}};
    const std::string picture = pictures.write("paint.svg", "");
    EXPECT_EQ(applications->iconOf(applications->runningApplications().at(0)).path, picture);
    EXPECT_TRUE(applications->iconOf(started(100, 7)).isEmpty());
}

TEST_F(LinuxRunningApplicationsTest, entryIsFoundByTheExecutable) {
    addProcess(100, 7);
    addEntry("org.example.Paint", "Name=Paint\nExec=/opt/tool100 %F\n");
    first.applications = {sourced(100, "Whatever")};
    EXPECT_THAT(names(), ElementsAre("100 Paint"));
}

TEST_F(LinuxRunningApplicationsTest, unknownApplicationIsCalledByItsWindowElseByItsExecutable) {
    addProcess(100, 7);
    addProcess(101, 7);
    first.applications = {sourced(100, "Some Window"), sourced(101, "")};
    EXPECT_THAT(names(), ElementsAre("100 Some Window", "101 tool101"));
}

TEST_F(LinuxRunningApplicationsTest, namesAreLookedUpAgainWhenAnEntryComes) {
    addProcess(100, 7);
    first.applications = {sourced(100, "paint")};
    EXPECT_THAT(names(), ElementsAre("100 paint"));
    addEntry("paint", "Name=Paint\n");
    EXPECT_THAT(names(), ElementsAre("100 Paint"));
}

TEST_F(LinuxRunningApplicationsTest, sourcesAreMergedInTheirOrder) {
    for (const std::int32_t pid : {100, 101, 102, 103}) {
        addProcess(pid, 7);
    }
    first.applications = {sourced(102, "c"), sourced(100, "a")};
    second.applications = {sourced(101, "b"), sourced(100, "other"), sourced(103, "helper", {102})};
    EXPECT_THAT(names(), ElementsAre("102 c", "100 a", "101 b"));
}

TEST_F(LinuxRunningApplicationsTest, nothingIsAskedBehindACompleteSource) {
    addProcess(100, 7);
    first.applications = {sourced(100, "a")};
    first.isComplete = true;
    second.applications = {sourced(100, "b")};
    EXPECT_THAT(names(), ElementsAre("100 a"));
    EXPECT_EQ(second.reads, 0);
}

TEST_F(LinuxRunningApplicationsTest, processesThatAreNotHereOrNotTheUsersAreLeftOut) {
    addProcess(100, 7, 'S', ::getuid() + 1);
    addProcess(101, 7, 'Z');
    addProcess(102, 7);
    first.applications = {sourced(100, "foreign"), sourced(101, "ended"), sourced(99, "gone"), sourced(102, "mine")};
    EXPECT_THAT(names(), ElementsAre("102 mine"));
}

TEST_F(LinuxRunningApplicationsTest, anotherProcessUnderTheSameNumberIsAnotherApplication) {
    addProcess(100, 7);
    first.applications = {sourced(100, "a")};
    const RunningApplication before = applications->runningApplications().at(0);
    EXPECT_FALSE(applications->isTerminated(before));
    addProcess(100, 8);
    EXPECT_TRUE(applications->isTerminated(before));
    EXPECT_EQ(applications->runningApplications().at(0).startTime, 8U);
    EXPECT_FALSE(applications->isTerminated(applications->runningApplications().at(0)));
}

TEST_F(LinuxRunningApplicationsTest, endedProcessIsTerminatedReapedOrNot) {
    addProcess(100, 7, 'Z');
    EXPECT_TRUE(applications->isTerminated(started(100, 7)));
    EXPECT_TRUE(applications->isTerminated(started(101, 7)));
}

TEST_F(LinuxRunningApplicationsTest, processWhoseFirstThreadEndedRunsOn) {
    addProcess(100, 7, 'Z', ::getuid(), 2);
    first.applications = {sourced(100, "a")};
    EXPECT_FALSE(applications->isTerminated(applications->runningApplications().at(0)));
}

TEST_F(LinuxRunningApplicationsTest, anotherProgramInTheSameProcessIsAnotherApplication) {
    addProcess(100, 7);
    addEntry("org.example.Paint", "Name=Paint\nExec=paint\n");
    first.applications = {sourced(100, "")};
    const RunningApplication before = applications->runningApplications().at(0);
    EXPECT_EQ(before.executable, "/opt/tool100");
    exec(100, "/opt/paint");
    EXPECT_TRUE(applications->isTerminated(before));
    const RunningApplication after = applications->runningApplications().at(0);
    EXPECT_EQ(after.executable, "/opt/paint");
    EXPECT_EQ(after.localizedName, "Paint");
    EXPECT_FALSE(applications->isTerminated(after));
}

TEST_F(LinuxRunningApplicationsTest, programIsNamedByTheEntryThatStartsIt) {
    addEntry("org.example.Paint", "Name=Paint\nExec=/usr/bin/paint %F\n");
    addEntry("org.example.Script", "Name=Script\nExec=python3 /opt/script.py\n");
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(applications->namesOfProgram("/usr/bin/paint"), ElementsAre("Paint"));
    EXPECT_THAT(applications->namesOfProgram("/usr/bin/python3.11"), IsEmpty());
    EXPECT_THAT(applications->namesOfProgram("/usr/bin/other"), IsEmpty());
    EXPECT_THAT(applications->namesOfProgram(""), IsEmpty());
    addEntry("org.example.Other", "Name=Other\nExec=other\n");
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(applications->namesOfProgram("/usr/bin/other"), ElementsAre("Other"));
}

TEST_F(LinuxRunningApplicationsTest, programKeepsTheNamesItsWindowsHad) {
    addProcess(100, 7);
    EXPECT_THAT(applications->namesOfProgram("/opt/tool100"), IsEmpty());
    addEntry("org.example.Paint", "Name=Paint\nExec=paint\n");
    addEntry("org.example.Tool", "Name=Tool\nExec=tool100\n");
    first.applications = {sourced(100, "org.example.Paint")};
    EXPECT_THAT(names(), ElementsAre("100 Paint"));
    first.applications = {};
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(applications->namesOfProgram("/opt/tool100"), ElementsAre("Paint", "Tool"));
    EXPECT_THAT(applications->namesOfProgram("/elsewhere/tool"), IsEmpty());
}

TEST_F(LinuxRunningApplicationsTest, interpreterDoesNotKeepTheNameOfWhatItRan) {
    addProcess(100, 7);
    exec(100, "/usr/bin/python3.11");
    first.applications = {sourced(100, "Music")};
    EXPECT_THAT(names(), ElementsAre("100 Music"));
    EXPECT_THAT(applications->namesOfProgram("/usr/bin/python3.11"), IsEmpty());
}

TEST_F(LinuxRunningApplicationsTest, applicationIsFoundByAnyOfItsProcesses) {
    addProcess(100, 7);
    addProcess(101, 7);
    first.applications = {sourced(100, "a", {101})};
    EXPECT_EQ(applications->application(101).value().processIdentifier, 100);
    EXPECT_EQ(applications->application(100).value().processIdentifier, 100);
    EXPECT_EQ(applications->application(102), std::nullopt);
    EXPECT_EQ(applications->application(0), std::nullopt);
}

TEST_F(LinuxRunningApplicationsTest, firstSourceThatKnowsTellsTheFront) {
    addProcess(100, 7);
    addProcess(101, 7);
    EXPECT_FALSE(applications->tellsFrontmost());
    EXPECT_EQ(applications->frontmostApplication(), std::nullopt);
    second.tellsFrontmost = true;
    second.applications = {sourced(100, "a")};
    second.frontmost = 100;
    EXPECT_TRUE(applications->tellsFrontmost());
    EXPECT_EQ(applications->frontmostApplication().value().localizedName, "a");
    first.frontmost = 101;
    // Not listed yet: it is told all the same.
    EXPECT_EQ(applications->frontmostApplication().value().localizedName, "tool101");
}

TEST_F(LinuxRunningApplicationsTest, changeThatTwoSourcesSeeIsToldOnce) {
    for (const std::int32_t pid : {100, 101}) {
        addProcess(pid, 7);
    }
    first.applications = {sourced(100, "a"), sourced(101, "b")};
    std::vector<std::int32_t> told;
    applications->observeActivation([&](const RunningApplication& each) { told.push_back(each.processIdentifier); });
    first.handler(100);
    second.handler(100);
    second.handler(101);
    first.handler(101);
    first.handler(100);
    first.handler(99);
    first.handler(100);
    EXPECT_THAT(told, ElementsAre(100, 101, 100));
}

/// Real processes stand for the applications: requests and signals go to nobody else.
class RealApplicationsTest : public LinuxRunningApplicationsTest {
protected:
    RealApplicationsTest() { applications = looking("/proc"); }

    [[nodiscard]] RunningApplication listed(std::vector<std::int32_t> others = {}) {
        first.applications = {sourced(program.pid(), "a", std::move(others))};
        return applications->runningApplications().at(0);
    }

    ChildProgram program;
};

TEST_F(RealApplicationsTest, sourcesAreAskedToCloseUntilOneDelivers) {
    const RunningApplication application = listed();
    EXPECT_FALSE(applications->terminate(application));
    EXPECT_THAT(first.asked, ElementsAre(program.pid()));
    EXPECT_THAT(second.asked, ElementsAre(program.pid()));
    first.closable = {program.pid()};
    second.closable = {program.pid()};
    EXPECT_TRUE(applications->terminate(application));
    EXPECT_THAT(first.closed, ElementsAre(program.pid()));
    EXPECT_THAT(second.closed, IsEmpty());
    EXPECT_TRUE(program.echoes());
}

TEST_F(RealApplicationsTest, applicationMayAnswerThroughAnotherOfItsProcesses) {
    const ChildProgram helper;
    const RunningApplication application = listed({helper.pid()});
    second.closable = {helper.pid()};
    EXPECT_TRUE(applications->terminate(application));
    EXPECT_THAT(second.closed, ElementsAre(helper.pid()));
}

TEST_F(RealApplicationsTest, processThatEndsWhileTheRequestIsPreparedIsSentNothing) {
    const RunningApplication application = listed();
    first.closable = {program.pid()};
    first.beforeClosing = [this] { program.endUnreaped(); };
    EXPECT_FALSE(applications->terminate(application));
    EXPECT_THAT(first.closed, IsEmpty());
}

TEST_F(RealApplicationsTest, anotherProcessUnderTheNumberIsLeftAlone) {
    RunningApplication application = listed();
    first.closable = {program.pid()};
    ++application.startTime;
    EXPECT_FALSE(applications->terminate(application));
    EXPECT_FALSE(applications->forceTerminate(application));
    application.startTime = 0;
    EXPECT_FALSE(applications->terminate(application));
    EXPECT_FALSE(applications->forceTerminate(application));
    EXPECT_THAT(first.asked, IsEmpty());
    EXPECT_TRUE(program.echoes());
}

TEST_F(RealApplicationsTest, forcedEndTakesThatProcessAndNoOther) {
    const ChildProgram bystander;
    const RunningApplication application = listed();
    EXPECT_TRUE(applications->forceTerminate(application));
    EXPECT_EQ(program.endingSignal(), SIGKILL);
    EXPECT_TRUE(applications->isTerminated(application));
    EXPECT_FALSE(applications->forceTerminate(application));
    EXPECT_TRUE(bystander.echoes());
}

TEST_F(RealApplicationsTest, programThatBecameAnotherIsNotForced) {
    // It becomes another program when it is told to.
    const ChildProgram changing({"/bin/sh", "-c", "read line; exec /bin/cat"});
    first.applications = {sourced(changing.pid(), "a")};
    const RunningApplication application = applications->runningApplications().at(0);
    changing.write("now\n");
    ASSERT_TRUE(changing.echoes());
    EXPECT_EQ(changing.startTime(), application.startTime);
    first.closable = {changing.pid()};
    for (const bool isRefreshed : {false, true}) {
        EXPECT_TRUE(applications->isTerminated(application)) << isRefreshed;
        EXPECT_FALSE(applications->terminate(application)) << isRefreshed;
        EXPECT_FALSE(applications->forceTerminate(application)) << isRefreshed;
        EXPECT_EQ(applications->runningApplications().at(0).executable, changing.command());
    }
    EXPECT_THAT(first.asked, IsEmpty());
    EXPECT_TRUE(changing.echoes());
    EXPECT_TRUE(applications->forceTerminate(applications->runningApplications().at(0)));
}

TEST_F(RealApplicationsTest, applicationWhoseProgramIsUnknownIsLeftAlone) {
    RunningApplication application = listed();
    first.closable = {program.pid()};
    application.executable.clear();
    EXPECT_FALSE(applications->isTerminated(application));
    EXPECT_FALSE(applications->terminate(application));
    EXPECT_FALSE(applications->forceTerminate(application));
    EXPECT_TRUE(program.echoes());
}

TEST_F(RealApplicationsTest, thisProgramAndTheSystemsFirstOnesAreNeverEnded) {
    const auto ownStart = LinuxProcessIdentity::startTimeOf(LinuxProcessIdentity::openFolder(::getpid()).get());
    first.closable = {::getpid(), 1, 0, -1};
    RunningApplication application = started(::getpid(), ownStart.value());
    EXPECT_FALSE(applications->isTerminated(application));
    for (const std::int32_t pid : {::getpid(), 1, 0, -1, -::getpid()}) {
        application.processIdentifier = pid;
        EXPECT_FALSE(applications->terminate(application)) << pid;
        EXPECT_FALSE(applications->forceTerminate(application)) << pid;
    }
    EXPECT_THAT(first.asked, IsEmpty());
}

TEST_F(RealApplicationsTest, thisProgramIsListedLikeAnyOther) {
    first.applications = {sourced(::getpid(), "this one")};
    EXPECT_THAT(names(), ElementsAre(std::to_string(::getpid()) + " this one"));
}

}  // namespace
}  // namespace kestrune
