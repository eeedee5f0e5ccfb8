#include "platform/linux/XcbGuestServer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/ChildProgram.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

TEST(XcbGuestServer, runningServerIsFoundByItsName) {
    const TemporaryFolder folder;
    fs::copy_file("/bin/cat", folder.path("Xwayland"));
    const ChildProgram server({folder.path("Xwayland")});
    EXPECT_TRUE(guestServerRuns());
}

TEST(XcbGuestServer, otherProgramsAreNotTheServer) {
    const TemporaryFolder proc;
    EXPECT_FALSE(guestServerRuns(proc.path()));
    EXPECT_FALSE(guestServerRuns(proc.path("missing")));
    for (const std::string folder : {"100", "101", "bus"}) {
        fs::create_directories(proc.path(folder));
    }
    static_cast<void>(proc.write("100/comm", "Xwayland-old\n"));
    static_cast<void>(proc.write("bus/comm", "Xwayland\n"));
    EXPECT_FALSE(guestServerRuns(proc.path()));
    static_cast<void>(proc.write("101/comm", "Xwayland\n"));
    EXPECT_TRUE(guestServerRuns(proc.path()));
}

}  // namespace
}  // namespace kestrune
