#include "platform/linux/LinuxLoginItem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

class LinuxLoginItemTest : public testing::Test {
protected:
    /// A program that tells by which path it was started, and with which arguments.
    std::string program(const std::string& name) {
        std::string path = folder.path("programs/" + name + "/kestrune");
        fs::create_directories(path.substr(0, path.rfind('/')));
        folder.write("programs/" + name + "/kestrune", "#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\"\n");
        ::chmod(path.c_str(), 0755);
        return path;
    }

    LinuxLoginItem item(const std::string& executable) { return {config, executable, files}; }

    void writeEntry(const std::string& text) {
        fs::create_directories(config + "/autostart");
        folder.write("config/autostart/com.torvandelsyn.kestrune.desktop", text);
    }

    std::string output(const std::string& tool, const std::vector<std::string>& arguments) {
        return LinuxProcessRunner().run(tool, arguments).output;
    }

    /// The command line of the unit as systemd itself has read it, quoted for a shell; empty when it refused the unit.
    std::string readBySystemd() {
        std::vector<std::string> command;
        if (::geteuid() == 0) {  // systemd does not try units out as root
            command = {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
            output("/bin/chown", {"-hR", "65534", folder.path()});
        }
        fs::create_directories(folder.path("run"));
        ::chmod(folder.path("run").c_str(), 0777);
        command.insert(command.end(), {"/usr/bin/env", "-i", "HOME=" + folder.path(), "XDG_CONFIG_HOME=" + config,
                                       "XDG_RUNTIME_DIR=" + folder.path("run"), "/lib/systemd/systemd", "--user",
                                       "--test", "--log-target=console", "--unit=com.torvandelsyn.kestrune.service"});
        const std::string units = output(command.front(), std::vector<std::string>(command.begin() + 1, command.end()));
        const std::size_t begin = units.find("-> Unit com.torvandelsyn.kestrune.service:");
        constexpr std::string_view label = "Command Line: ";
        const std::size_t line = begin == std::string::npos ? begin : units.find(label, begin);
        return line == std::string::npos
                   ? std::string()
                   : units.substr(line + label.size(), units.find('\n', line) - line - label.size());
    }

    TemporaryFolder folder;
    LinuxFileStore files;
    const std::string config = folder.path("config");
    const std::string entry = config + "/autostart/com.torvandelsyn.kestrune.desktop";
    const std::string unit = config + "/systemd/user/com.torvandelsyn.kestrune.service";
    const std::string link = config + "/systemd/user/graphical-session.target.wants/com.torvandelsyn.kestrune.service";
};

const std::vector<std::string> awkwardNames{"plain",    "two words", "it's",  "say \"so\"", "100%",  "%f and %%",
                                            "$HOME",    "`id`",      "a\\sb", "back\\",     "日本",  "a=b",
                                            "a;b&c|d>", "(p)*?[~]#", "!bang", "@at:+-",     "{x,y}", "%h"};

TEST_F(LinuxLoginItemTest, entryIsLaidDownAndTakenAwayAgain) {
    LinuxLoginItem login = item(program("plain"));
    EXPECT_FALSE(login.isRegistered());
    EXPECT_TRUE(login.setRegistered(true));
    EXPECT_TRUE(login.isRegistered());
    EXPECT_TRUE(login.setRegistered(true));
    EXPECT_TRUE(login.setRegistered(false));
    EXPECT_FALSE(login.isRegistered());
    EXPECT_FALSE(fs::exists(entry));
    EXPECT_TRUE(login.setRegistered(false));
}

TEST_F(LinuxLoginItemTest, entryThatTheDesktopSwitchedOffIsOff) {
    LinuxLoginItem login = item(program("plain"));
    ASSERT_TRUE(login.setRegistered(true));
    const std::string ours = TemporaryFolder::contentOf(entry);
    for (const char* const line : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n", "TryExec=/does/not/exist\n"}) {
        writeEntry(ours + line);
        EXPECT_FALSE(login.isRegistered()) << line;
        EXPECT_TRUE(login.setRegistered(true));
        EXPECT_TRUE(login.isRegistered()) << line;
    }
}

TEST_F(LinuxLoginItemTest, entryWhoseProgramIsGoneIsOff) {
    const std::string path = program("plain");
    LinuxLoginItem login = item(path);
    ASSERT_TRUE(login.setRegistered(true));
    ::unlink(path.c_str());
    EXPECT_FALSE(login.isRegistered());
    EXPECT_FALSE(login.setRegistered(true));
}

TEST_F(LinuxLoginItemTest, programThatMovedIsRegisteredAnew) {
    const std::string before = program("before");
    LinuxLoginItem old = item(before);
    ASSERT_TRUE(old.setRegistered(true));
    fs::remove_all(folder.path("programs/before"));
    LinuxLoginItem moved = item(program("after"));
    EXPECT_FALSE(moved.isRegistered());
    EXPECT_TRUE(moved.setRegistered(true));
    EXPECT_TRUE(moved.isRegistered());
    EXPECT_EQ(TemporaryFolder::contentOf(entry).find("before"), std::string::npos);
}

TEST_F(LinuxLoginItemTest, editedEntryIsOnlySwitched) {
    LinuxLoginItem login = item(program("plain"));
    writeEntry("[Desktop Entry]\nType=Application\nName=Mine\nExec=env A=1 sh\nTryExec=sh\n");
    EXPECT_TRUE(login.isRegistered());
    EXPECT_TRUE(login.setRegistered(false));
    EXPECT_FALSE(login.isRegistered());
    EXPECT_TRUE(login.setRegistered(true));
    EXPECT_TRUE(login.isRegistered());
    EXPECT_EQ(TemporaryFolder::contentOf(entry),
              "[Desktop Entry]\nX-GNOME-Autostart-enabled=true\nHidden=false\nType=Application\nName=Mine\n"
              "Exec=env A=1 sh\nTryExec=sh\n");
}

TEST_F(LinuxLoginItemTest, linkedEntryIsSwitchedWhereItLies) {
    LinuxLoginItem login = item(program("plain"));
    ASSERT_TRUE(login.setRegistered(true));
    const std::string kept = folder.path("kept.desktop");
    fs::rename(entry, kept);
    fs::create_symlink(kept, entry);
    EXPECT_TRUE(login.setRegistered(false));
    EXPECT_TRUE(fs::is_symlink(entry));
    EXPECT_NE(TemporaryFolder::contentOf(kept).find("Hidden=true"), std::string::npos);
}

TEST_F(LinuxLoginItemTest, fileThatIsNoEntryIsSetAsideAndNeverLost) {
    LinuxLoginItem login = item(program("plain"));
    writeEntry("my notes");
    EXPECT_FALSE(login.isRegistered());
    EXPECT_TRUE(login.setRegistered(false));
    EXPECT_EQ(TemporaryFolder::contentOf(entry), "my notes");
    EXPECT_TRUE(login.setRegistered(true));
    EXPECT_TRUE(login.isRegistered());
    EXPECT_EQ(TemporaryFolder::contentOf(entry + ".unreadable-1"), "my notes");
}

TEST_F(LinuxLoginItemTest, folderInTheWayIsARefusalThatChangesNothing) {
    LinuxLoginItem login = item(program("plain"));
    fs::create_directories(entry);
    EXPECT_FALSE(login.setRegistered(true));
    EXPECT_FALSE(login.setRegistered(false));
    EXPECT_FALSE(login.isRegistered());
    EXPECT_TRUE(fs::is_directory(entry));
    folder.write("config/systemd", "a file");
    EXPECT_FALSE(login.setAgentInstalled(true));
    EXPECT_FALSE(login.isAgentInstalled());
}

TEST_F(LinuxLoginItemTest, pathThatNoEntryCanHoldIsRefused) {
    for (const char* const name : {"new\nline", "not\xFFutf8"}) {
        LinuxLoginItem login = item(program(name));
        EXPECT_FALSE(login.setRegistered(true));
        EXPECT_FALSE(login.setAgentInstalled(true));
        EXPECT_FALSE(fs::exists(entry));
        EXPECT_FALSE(fs::exists(unit));
    }
}

TEST_F(LinuxLoginItemTest, unitForAProgramThatIsGoneIsRefused) {
    const std::string path = program("plain");
    LinuxLoginItem login = item(path);
    fs::remove(path);
    EXPECT_FALSE(login.setAgentInstalled(true));
    EXPECT_FALSE(login.isAgentInstalled());
    EXPECT_FALSE(fs::exists(unit));
}

TEST_F(LinuxLoginItemTest, unitIsLinkedAndTakenAwayAgain) {
    LinuxLoginItem login = item(program("plain"));
    EXPECT_FALSE(login.isAgentInstalled());
    EXPECT_TRUE(login.setAgentInstalled(true));
    EXPECT_TRUE(login.isAgentInstalled());
    EXPECT_TRUE(fs::equivalent(link, unit));
    EXPECT_TRUE(login.setAgentInstalled(true));
    folder.write("config/systemd/user/other.service", "[Unit]\n");
    EXPECT_TRUE(login.setAgentInstalled(false));
    EXPECT_FALSE(login.isAgentInstalled());
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
    EXPECT_FALSE(fs::exists(unit));
    EXPECT_TRUE(fs::exists(config + "/systemd/user/other.service"));
    EXPECT_TRUE(login.setAgentInstalled(false));
}

TEST_F(LinuxLoginItemTest, editedUnitIsOnlyUnlinked) {
    LinuxLoginItem login = item(program("plain"));
    ASSERT_TRUE(login.setAgentInstalled(true));
    const std::string edited = TemporaryFolder::contentOf(unit) + "# mine\n";
    folder.write("config/systemd/user/com.torvandelsyn.kestrune.service", edited);
    EXPECT_TRUE(login.setAgentInstalled(false));
    EXPECT_FALSE(login.isAgentInstalled());
    EXPECT_TRUE(login.setAgentInstalled(true));
    EXPECT_EQ(TemporaryFolder::contentOf(unit), edited);
}

TEST_F(LinuxLoginItemTest, whatIsNoLinkOfOursStays) {
    LinuxLoginItem login = item(program("plain"));
    fs::create_directories(link);
    EXPECT_FALSE(login.setAgentInstalled(true));
    EXPECT_FALSE(login.setAgentInstalled(false));
    EXPECT_TRUE(fs::is_directory(link));
}

// GLib reads the entry and starts the program; what it starts inherits its output.
TEST_F(LinuxLoginItemTest, desktopStartsTheProgramWhateverItsPath) {
    for (const std::string& name : awkwardNames) {
        const std::string path = program(name);
        ASSERT_TRUE(item(path).setRegistered(true)) << name;
        EXPECT_EQ(output("/usr/bin/gio", {"launch", entry}), path + "\n") << TemporaryFolder::contentOf(entry);
    }
}

// systemd reads the unit and tells the command line; a shell starts it as it stands.
TEST_F(LinuxLoginItemTest, systemdStartsTheProgramWhateverItsPath) {
    for (const std::string& name : awkwardNames) {
        const std::string path = program(name);
        ASSERT_TRUE(item(path).setAgentInstalled(true)) << name;
        EXPECT_EQ(output("/bin/sh", {"-c", readBySystemd()}), path + "\n") << TemporaryFolder::contentOf(unit);
    }
}

}  // namespace
}  // namespace kestrune
