#include "platform/linux/LinuxRootOnly.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

TEST(LinuxRootOnly, systemProgramIsRootsAlone) {
    EXPECT_TRUE(onlyRootCanChangeProgram("/usr/bin/env"));
}

TEST(LinuxRootOnly, programInAFolderThatAnybodyMayWriteIsNot) {
    const TemporaryFolder folder;
    const std::string program = folder.write("program", "#!/bin/sh\n");
    ASSERT_EQ(::chmod(program.c_str(), 0755), 0);
    EXPECT_FALSE(onlyRootCanChangeProgram(program));
}

TEST(LinuxRootOnly, whatIsNoProgramIsNot) {
    EXPECT_FALSE(onlyRootCanChangeProgram("/etc/passwd"));
    EXPECT_FALSE(onlyRootCanChangeProgram("/usr/bin"));
    EXPECT_FALSE(onlyRootCanChangeProgram("/usr/bin/no-such-program"));
    EXPECT_FALSE(onlyRootCanChangeProgram("usr/bin/env"));
    EXPECT_FALSE(onlyRootCanChangeProgram(""));
}

TEST(LinuxRootOnly, linkToARootsProgramIsNot) {
    EXPECT_FALSE(onlyRootCanChangeProgram("/proc/1/root/usr/bin/env"));
    const TemporaryFolder folder;
    ASSERT_EQ(::symlink("/usr/bin/env", folder.path("env").c_str()), 0);
    EXPECT_FALSE(onlyRootCanChangeProgram(folder.path("env")));
}

}  // namespace
}  // namespace kestrune
