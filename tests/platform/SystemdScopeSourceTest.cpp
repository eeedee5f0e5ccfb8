#include "platform/linux/SystemdScopeSource.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {

namespace {

namespace fs = std::filesystem;

class SystemdScopeSourceTest : public ::testing::Test {
protected:
    SystemdScopeSourceTest() { fs::create_directories(m_folder.path(slice)); }

    // A unit of the user's with these processes.
    void run(const std::string& unit, const std::string& pids) {
        fs::create_directories(m_folder.path(slice + unit));
        m_folder.write(slice + unit + "/cgroup.procs", pids);
    }

    void addProcess(int pid, int parent, int startTime, const std::string& name = "app") {
        const std::string folder = "proc/" + std::to_string(pid);
        fs::create_directories(m_folder.path(folder));
        m_folder.write(folder + "/stat", std::to_string(pid) + " (" + name + ") S " + std::to_string(parent) +
                                             " 1 1 0 -1 4194560 1 0 0 0 5 6 0 0 20 0 1 0 " + std::to_string(startTime) +
                                             " 4096 120 0\n");
    }

    std::vector<std::int32_t> pids() {
        std::vector<std::int32_t> pids;
        for (const SourcedApplication& application : m_source.applications()) {
            pids.push_back(application.pid);
        }
        return pids;
    }

    const std::string slice = "cgroup/user.slice/user-1000.slice/user@1000.service/app.slice/";
    const TemporaryFolder m_folder;
    SystemdScopeSource m_source{m_folder.path("cgroup"), m_folder.path("proc"), 1000,
                                [](const std::string& id) { return id.find("hidden") == std::string::npos; }};
};

}  // namespace

TEST_F(SystemdScopeSourceTest, listsWhatTheDesktopStartedInTheOrderOfTheirNumbers) {
    run("app-gnome-org.gnome.Maps-200.scope", "200\n");
    run(R"(app-gnome-google\x2dchrome-100.scope)", "100\n");
    addProcess(200, 1, 20);
    addProcess(100, 1, 10);
    const std::vector<SourcedApplication> applications = m_source.applications();
    ASSERT_EQ(applications.size(), 2U);
    EXPECT_EQ(applications[0].pid, 100);
    EXPECT_EQ(applications[0].hints, std::vector<std::string>{"google-chrome"});
    EXPECT_EQ(applications[0].policy, ActivationPolicy::regular);
    EXPECT_EQ(applications[1].pid, 200);
    EXPECT_EQ(applications[1].hints, std::vector<std::string>{"org.gnome.Maps"});
    EXPECT_TRUE(m_source.isAvailable());
}

TEST_F(SystemdScopeSourceTest, theMainProcessIsTheOldestThatNoneOfTheOthersStarted) {
    run("app-gnome-code-9.scope", "310\n300\n305\n90\n");
    addProcess(300, 2, 50);
    addProcess(305, 300, 10);
    addProcess(310, 305, 70);
    addProcess(90, 2, 60);
    EXPECT_EQ(pids(), std::vector<std::int32_t>{300});
    EXPECT_TRUE(m_source.applications().front().otherPids.empty());
}

TEST_F(SystemdScopeSourceTest, aSandboxAndTheProgramInItAreOneApplication) {
    run("app-flatpak-org.gimp.GIMP-9.scope", "400\n401\n402\n");
    addProcess(400, 2, 50, "bwrap");
    addProcess(401, 400, 51, "bwrap");
    addProcess(402, 401, 52, "gimp");
    const std::vector<SourcedApplication> applications = m_source.applications();
    ASSERT_EQ(applications.size(), 1U);
    EXPECT_EQ(applications[0].pid, 400);
    EXPECT_EQ(applications[0].otherPids, (std::vector<std::int32_t>{401, 402}));
}

TEST_F(SystemdScopeSourceTest, unitsWithinSlicesAreFoundUnlessTheyLieTooDeep) {
    run(R"(app-dbus\x2d:1.2\x2dorg.gnome.Maps.slice/dbus-:1.2-org.gnome.Maps@0.service)", "500\n");
    run("a.slice/b.slice/c.slice/d.slice/app-deep-1.scope", "501\n");
    addProcess(500, 1, 1);
    addProcess(501, 1, 1);
    EXPECT_EQ(pids(), std::vector<std::int32_t>{500});
}

TEST_F(SystemdScopeSourceTest, whatStartedWithTheSessionIsAnAgent) {
    run("app-steam@autostart.service", "600\n");
    addProcess(600, 1, 1);
    ASSERT_EQ(pids(), std::vector<std::int32_t>{600});
    EXPECT_EQ(m_source.applications().front().policy, ActivationPolicy::accessory);
}

TEST_F(SystemdScopeSourceTest, whatMenusDoNotShowIsLeftOut) {
    run("app-gnome-hidden-1.scope", "700\n");
    run("at-spi-dbus-bus.service", "701\n");
    run("vte-spawn-1.scope", "702\n");
    for (const int pid : {700, 701, 702}) {
        addProcess(pid, 1, 1);
    }
    EXPECT_TRUE(pids().empty());
}

TEST_F(SystemdScopeSourceTest, aProcessMayCallItselfWhatItLikes) {
    run("app-gnome-firefox-1.scope", "800\n801\n");
    addProcess(800, 801, 10, ") S 1 1 1\n(");
    addProcess(801, 2, 20);
    EXPECT_EQ(pids(), std::vector<std::int32_t>{801});
}

TEST_F(SystemdScopeSourceTest, unitsThatHaveEndedOrSayNonsenseAreLeftOut) {
    run("app-gnome-empty-1.scope", "");
    run("app-gnome-gone-1.scope", "900\n");
    run("app-gnome-odd-1.scope", "x\n-5\n0\n99999999999\n12 13\n");
    run("app-gnome-broken-1.scope", "901\n");
    fs::create_directories(m_folder.path("proc/901"));
    m_folder.write("proc/901/stat", "901 (app");
    EXPECT_TRUE(pids().empty());
}

TEST_F(SystemdScopeSourceTest, linksAreNotFollowed) {
    run("elsewhere/app-gnome-firefox-1.scope", "950\n");
    addProcess(950, 1, 1);
    fs::create_directory_symlink(m_folder.path(slice + "elsewhere"), m_folder.path(slice + "link.slice"));
    EXPECT_TRUE(pids().empty());
}

TEST_F(SystemdScopeSourceTest, tellsNeitherWhoIsInFrontNorClosesAnything) {
    run("app-gnome-firefox-1.scope", "200\n");
    addProcess(200, 1, 20);
    EXPECT_FALSE(m_source.tellsFrontmost());
    EXPECT_EQ(m_source.frontmost(), std::nullopt);
    EXPECT_FALSE(m_source.isComplete());
    EXPECT_FALSE(m_source.close(200, [] { return true; }));
}

TEST(SystemdScopeSource, withoutSystemdThereIsNothing) {
    const TemporaryFolder folder;
    SystemdScopeSource source(folder.path("cgroup"), folder.path("proc"), 1000,
                              [](const std::string&) { return true; });
    EXPECT_FALSE(source.isAvailable());
    EXPECT_TRUE(source.applications().empty());
}

}  // namespace kestrune
