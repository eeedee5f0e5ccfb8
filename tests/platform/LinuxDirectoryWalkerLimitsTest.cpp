#include "platform/linux/LinuxDirectoryWalker.h"

namespace kestrune {

using WalkerUnderTest = LinuxDirectoryWalker;

}  // namespace kestrune

#include "tests/platform/DirectoryWalkerLimitsTests.h"

namespace kestrune {
namespace {

TEST(LinuxDirectoryWalkerLimits, veryFullFoldersAreSharedAmongThreads) {
    constexpr int files = 20000;
    const TemporaryFolder root(TemporaryFolder::fastBase());
    makeFiles(root.path(), files);
    WalkRequest request = requestFor(root.path());
    request.childLimit = 3;
    std::mutex lock;
    std::vector<std::thread::id> askers;
    request.cancelled = [&] {
        const std::scoped_lock guard(lock);
        if (std::find(askers.begin(), askers.end(), std::this_thread::get_id()) == askers.end()) {
            askers.push_back(std::this_thread::get_id());
        }
        return false;
    };
    const TreeWalk found = walked(request);
    EXPECT_EQ(files, found.entries);
    EXPECT_EQ(files, found.files);
    EXPECT_EQ(3U, found.children.size());
    EXPECT_EQ(files - 3, found.otherChildren);
    EXPECT_GT(askers.size(), 1U);
}

}  // namespace
}  // namespace kestrune
