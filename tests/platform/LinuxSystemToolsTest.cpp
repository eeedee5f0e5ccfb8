#include "platform/linux/LinuxSystemTools.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

using Tools = std::vector<ToolCommand>;

TEST(LinuxSystemTools, toolsHaveTheirAgreedPathsAndArguments) {
    const LinuxSystemTools tools;
    EXPECT_EQ(tools.diskFree(), (ToolCommand{"/bin/df", {"-k", "/"}}));
    EXPECT_EQ(tools.deleteUnavailableSimulators(),
              (ToolCommand{"/usr/bin/xcrun", {"simctl", "delete", "unavailable"}}));
    EXPECT_EQ(tools.topProcesses(), (ToolCommand{"/bin/ps", {"-eo", "%mem,comm", "--sort=-pcpu"}}));
    EXPECT_EQ(tools.listeningSockets(), (ToolCommand{"/usr/bin/lsof", {"-nP", "-iTCP", "-sTCP:LISTEN", "-Fpn"}}));
    EXPECT_EQ(tools.userProcesses(),
              (ToolCommand{"/bin/ps", {"-U", std::to_string(::getuid()), "-o", "pid=,rss=,pcpu=,exe="}}));
    EXPECT_EQ(tools.processOwner(42), (ToolCommand{"/bin/ps", {"-p", "42", "-o", "uid=,exe="}}));
    EXPECT_EQ(tools.purgeMemory(), (ToolCommand{"/usr/sbin/sysctl", {"-w", "vm.drop_caches=3"}}));
    EXPECT_EQ(tools.thinLocalSnapshots(), (ToolCommand{"/usr/bin/snapper", {"cleanup", "number"}}));
    EXPECT_EQ(tools.emptyTrash(), (ToolCommand{"/usr/bin/gio", {"trash", "--empty"}}));
    EXPECT_EQ(tools.flushNameCache(), (Tools{{"/usr/bin/resolvectl", {"flush-caches"}}}));
}

TEST(LinuxSystemTools, reducedAnimationsAreSwitchedOff) {
    const LinuxSystemTools tools;
    const std::string tool = "/usr/bin/gsettings";
    EXPECT_EQ(tools.reduceAnimations(true),
              (Tools{{tool, {"set", "org.gnome.desktop.interface", "enable-animations", "false"}}}));
    EXPECT_EQ(tools.reduceAnimations(false),
              (Tools{{tool, {"set", "org.gnome.desktop.interface", "enable-animations", "true"}}}));
}

TEST(LinuxSystemTools, administratorRightsAreAskedForWithoutATerminal) {
    const LinuxSystemTools tools("/does/not/exist");
    EXPECT_EQ(tools.withAdministratorRights({"/bin/echo", {"it's", "\"\\"}}),
              (ToolCommand{"/usr/bin/pkexec", {"--disable-internal-agent", "/bin/echo", "it's", "\"\\"}}));
}

TEST(LinuxSystemTools, withoutTheHelperMemoryIsClearedByTheSystemsOwnTool) {
    const LinuxSystemTools tools("/does/not/exist");
    EXPECT_EQ(
        tools.withAdministratorRights(tools.purgeMemory()),
        (ToolCommand{"/usr/bin/pkexec", {"--disable-internal-agent", "/usr/sbin/sysctl", "-w", "vm.drop_caches=3"}}));
}

// A system program stands for the installed helper: root owns it and everything above it.
TEST(LinuxSystemTools, installedHelperClearsMemoryAndNothingElse) {
    const LinuxSystemTools tools("/usr/bin/env");
    EXPECT_EQ(tools.withAdministratorRights(tools.purgeMemory()),
              (ToolCommand{"/usr/bin/pkexec", {"--disable-internal-agent", "/usr/bin/env"}}));
    EXPECT_EQ(tools.withAdministratorRights({"/usr/sbin/sysctl", {"-w", "vm.drop_caches=1"}}).arguments.at(1),
              "/usr/sbin/sysctl");
}

TEST(LinuxSystemTools, helperThatOthersCouldHaveWrittenIsNotUsed) {
    const TemporaryFolder folder;
    const std::string helper = folder.write("helper", "#!/bin/sh\n");
    ASSERT_EQ(::chmod(helper.c_str(), 0755), 0);
    const LinuxSystemTools tools(helper);
    EXPECT_EQ(tools.withAdministratorRights(tools.purgeMemory()).arguments.at(1), "/usr/sbin/sysctl");
}

}  // namespace
}  // namespace kestrune
