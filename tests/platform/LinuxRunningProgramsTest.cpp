#include "platform/linux/LinuxRunningPrograms.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

std::string entryText(const std::string& name, const std::string& exec, const std::string& more = {}) {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nName[de]=Anders\nExec=" + exec + "\n" + more;
}

class ApplicationNamesTest : public testing::Test {
protected:
    void know(const std::string& name, const std::string& exec, const std::string& more = {}) {
        names.add(parseDesktopEntry(entryText(name, exec, more)).value());
    }

    ApplicationNames names;
};

TEST_F(ApplicationNamesTest, entryThatMenusDoNotShowNamesNothing) {
    know("Handler", "tool %U", "NoDisplay=true\n");
    EXPECT_EQ(names.nameOf({"/usr/bin/tool", {}, ""}), "tool");
}

TEST_F(ApplicationNamesTest, desktopEntryNamesTheExecutable) {
    know("Visual Studio Code", "/usr/share/code/code %F");
    EXPECT_EQ(names.nameOf({"/usr/share/code/code", {"/usr/share/code/code", "--type=renderer"}, ""}),
              "Visual Studio Code");
}

TEST_F(ApplicationNamesTest, desktopEntryNamesTheFirstArgumentToo) {
    know("Firefox", "firefox %u");
    EXPECT_EQ(names.nameOf({"/usr/lib/firefox-esr/firefox-esr", {"/usr/bin/firefox"}, ""}), "Firefox");
}

TEST_F(ApplicationNamesTest, scriptOfAnInterpreterIsLookedUp) {
    know("Terminator", "terminator");
    EXPECT_EQ(names.nameOf({"/usr/bin/python3.11", {"/usr/bin/python3", "-u", "/usr/bin/terminator"}, "/"}),
              "Terminator");
    EXPECT_EQ(names.nameOf({"/usr/bin/python3.11", {"python3", "-c", "terminator"}, "/"}), "python3.11");
}

TEST_F(ApplicationNamesTest, unknownProgramKeepsTheNameOfItsExecutable) {
    EXPECT_EQ(names.nameOf({"/usr/local/bin/ollama", {"ollama", "serve"}, ""}), "ollama");
    EXPECT_EQ(names.nameOf({"", {"/opt/a/tool", "x"}, ""}), "tool");
    EXPECT_EQ(names.nameOf({"", {}, ""}), "");
}

TEST_F(ApplicationNamesTest, plainEntryComesBeforeOneWithArguments) {
    know("Some Game", "steam steam://rungameid/1");
    know("Steam", "/usr/bin/steam %U");
    know("Another Game", "steam steam://rungameid/2");
    EXPECT_EQ(names.nameOf({"/home/u/.steam/steam", {}, ""}), "Steam");
}

TEST_F(ApplicationNamesTest, virtualMachineIsNamedByItsFolder) {
    know("OpenJDK", "/usr/bin/jshell");
    EXPECT_EQ(names.nameOf({"/opt/android-studio/jbr/bin/java", {"java", "-Xmx2g"}, ""}), "Android Studio");
    EXPECT_EQ(names.nameOf({"/opt/idea-IU-241.15989/jbr/bin/java", {}, ""}), "IntelliJ IDEA");
    EXPECT_EQ(names.nameOf({"/opt/idea/bin/idea", {}, ""}), "IntelliJ IDEA");
    EXPECT_EQ(names.nameOf({"/snap/intellij-idea-community/511/jbr/bin/java", {}, ""}), "IntelliJ IDEA");
    EXPECT_EQ(names.nameOf({"/usr/lib/jvm/java-17/bin/java", {"java", "-jar", "x.jar"}, ""}), "java");
}

TEST_F(ApplicationNamesTest, folderNamesThatOnlyBeginAlikeAreNotTaken) {
    EXPECT_EQ(names.nameOf({"/home/clionel/bin/tool", {}, ""}), "tool");
    EXPECT_EQ(names.nameOf({"/home/u/PycharmProjects/venv/bin/tool", {}, ""}), "tool");
    EXPECT_EQ(names.nameOf({"/home/u/AndroidStudioProjects/tool", {}, ""}), "tool");
    EXPECT_EQ(names.nameOf({"/usr/bin/ideamaker", {}, ""}), "ideamaker");
}

TEST_F(ApplicationNamesTest, lmStudioIsKnownAsImageAndAsMountedProgram) {
    EXPECT_EQ(names.nameOf({"/home/u/Apps/LM-Studio-0.3.5-x64.AppImage", {}, ""}), "LM Studio");
    EXPECT_EQ(names.nameOf({"/tmp/.mount_LM-StuAbCdEf/lm-studio", {}, ""}), "LM Studio");
}

TEST_F(ApplicationNamesTest, comfyUIIsAScriptOfPython) {
    const std::string python = "/home/u/ComfyUI/venv/bin/python3.11";
    EXPECT_EQ(names.nameOf({python, {"python", "main.py", "--listen"}, "/home/u/ComfyUI"}), "ComfyUI");
    EXPECT_EQ(names.nameOf({python, {"python", "-u", "/srv/ComfyUI/main.py"}, "/"}), "ComfyUI");
    EXPECT_EQ(names.nameOf({python, {"python", "ComfyUI/main.py"}, "/home/u"}), "ComfyUI");
    EXPECT_EQ(names.nameOf({python, {"python", "-m", "comfyui"}, "/"}), "ComfyUI");
    EXPECT_EQ(names.nameOf({python, {"python", "/usr/bin/comfyui"}, "/"}), "ComfyUI");
    EXPECT_EQ(names.nameOf({python, {"python", "main.py"}, "/home/u/other"}), "python3.11");
    EXPECT_EQ(names.nameOf({"/usr/bin/vim", {"vim", "ComfyUI/main.py"}, ""}), "vim");
    EXPECT_EQ(names.nameOf({python, {"python", "server.py", "--root", "/home/u/ComfyUI/main.py"}, "/"}), "python3.11");
}

// A tree in the shape of /proc, whose links lead nowhere.
class LinuxRunningProgramsTest : public testing::Test {
protected:
    void addProcess(const std::string& number, const std::string& executable, const std::string& commandLine) const {
        fs::create_directories(proc.path(number));
        fs::create_symlink(executable, proc.path(number + "/exe"));
        static_cast<void>(proc.write(number + "/cmdline", commandLine));
    }

    TemporaryFolder proc;
    TemporaryFolder entries;
    LinuxRunningPrograms applications{proc.path(), {entries.path(), "/does/not/exist"}};
};

TEST_F(LinuxRunningProgramsTest, eachNameIsToldOnceAndThisProgramNot) {
    using namespace std::string_literals;
    static_cast<void>(entries.write("firefox.desktop", entryText("Firefox", "firefox %u")));
    addProcess("100", "/usr/lib/firefox/firefox", "/usr/lib/firefox/firefox\0"s);
    addProcess("101", "/usr/lib/firefox/firefox", "/usr/lib/firefox/firefox\0-contentproc\0"s);
    addProcess("102", "/usr/local/bin/ollama", "ollama\0serve\0"s);
    addProcess(std::to_string(::getpid()), "/usr/bin/kestrune", "kestrune\0"s);
    fs::create_directories(proc.path("sys"));
    fs::create_directories(proc.path("103"));
    EXPECT_EQ(applications.names(), (std::vector<std::string>{"Firefox", "ollama"}));
}

TEST_F(LinuxRunningProgramsTest, entriesAreReadAgainWhenTheirFolderChanges) {
    addProcess("100", "/opt/tool/tool", "");
    EXPECT_EQ(applications.names(), std::vector<std::string>{"tool"});
    static_cast<void>(entries.write("tool.desktop", entryText("The Tool", "tool")));
    static_cast<void>(entries.write("notes.txt", entryText("No Entry", "tool")));
    EXPECT_EQ(applications.names(), std::vector<std::string>{"The Tool"});
}

TEST_F(LinuxRunningProgramsTest, interpreterIsJudgedByItsWorkingFolderToo) {
    using namespace std::string_literals;
    addProcess("100", "/usr/bin/python3.11", "python3\0main.py\0"s);
    fs::create_symlink("/home/u/ComfyUI", proc.path("100/cwd"));
    EXPECT_EQ(applications.names(), std::vector<std::string>{"ComfyUI"});
}

TEST_F(LinuxRunningProgramsTest, aProgramThatWasReplacedWhileItRunsKeepsItsName) {
    static_cast<void>(entries.write("code.desktop", entryText("Visual Studio Code", "/usr/share/code/code %F")));
    addProcess("100", "/usr/share/code/code (deleted)", "");
    EXPECT_EQ(applications.names(), std::vector<std::string>{"Visual Studio Code"});
}

TEST_F(LinuxRunningProgramsTest, systemWithoutProcHasNoApplications) {
    LinuxRunningPrograms none("/does/not/exist", {});
    EXPECT_TRUE(none.names().empty());
}

TEST_F(LinuxRunningProgramsTest, realProcessesAreFound) {
    LinuxRunningPrograms real("/proc", {});
    const std::vector<std::string> names = real.names();
    // Whoever started this test, at least.
    EXPECT_FALSE(names.empty());
    for (const std::string& name : names) {
        EXPECT_FALSE(name.empty());
        EXPECT_EQ(name.find('/'), std::string::npos) << name;
    }
}

}  // namespace
}  // namespace kestrune
