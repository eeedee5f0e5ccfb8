#include "platform/linux/LinuxDirectoryWalker.h"

namespace kestrune {

using WalkerUnderTest = LinuxDirectoryWalker;

}  // namespace kestrune

#include "tests/platform/DirectoryWalkerChangesTests.h"

namespace kestrune {
namespace {

TEST(LinuxDirectoryWalkerChanges, aFileSwappedForALinkIsSeenAsOne) {
    const TemporaryFolder root;
    root.write("file", std::string(10000, 'x'));
    int asked = 0;
    const TreeWalk found = walked(root.path(), [&] {
        if (++asked == 1) {
            EXPECT_EQ(0, ::unlink(root.path("file").c_str()));
            EXPECT_EQ(0, ::symlink("/etc", root.path("file").c_str()));
        }
        return false;
    });
    EXPECT_EQ(1, found.entries);
    EXPECT_EQ(1, found.links);
    EXPECT_EQ(0, found.files);
}

}  // namespace
}  // namespace kestrune
