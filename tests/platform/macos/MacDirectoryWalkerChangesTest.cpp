#include "platform/macos/MacDirectoryWalker.h"

namespace kestrune {

using WalkerUnderTest = MacDirectoryWalker;

}  // namespace kestrune

#include "tests/platform/DirectoryWalkerChangesTests.h"

namespace kestrune {
namespace {

TEST(MacDirectoryWalkerChanges, aFileSwappedForALinkAfterItWasListedCountsAsItWasListed) {
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
    EXPECT_EQ(1, found.files);
    EXPECT_GE(found.bytes, 10000);
    EXPECT_LT(found.bytes, 100000);
}

}  // namespace
}  // namespace kestrune
