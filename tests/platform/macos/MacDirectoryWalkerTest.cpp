#include "platform/macos/MacDirectoryWalker.h"

#include "platform/macos/MacWalkSystem.h"

namespace kestrune {

using WalkerUnderTest = MacDirectoryWalker;

}  // namespace kestrune

#include "tests/platform/DirectoryWalkerTests.h"

#include <sys/resource.h>

#include <thread>

#include "tests/platform/macos/fake_darwin/FakeAttributes.h"
#include "tests/platform/macos/fake_darwin/FakeIoPolicy.h"

namespace kestrune {
namespace {

using fake_darwin::attributes;
using fake_darwin::Entry;

/// The system behaves as it does by default before and after each test.
class MacDirectoryWalkerTest : public testing::Test {
protected:
    MacDirectoryWalkerTest() { reset(); }

    ~MacDirectoryWalkerTest() override { reset(); }

    static void reset() {
        attributes() = {};
        fake_darwin::callsOfBulk() = 0;
        fake_darwin::fetchingCallsOfBulk() = 0;
        fake_darwin::refusesIoPolicies() = false;
    }

    [[nodiscard]] TreeWalk walked() const {
        WalkRequest request;
        request.folder = root.path();
        return MacDirectoryWalker().walk(request);
    }

    /// A folder with a file in it.
    void makeFolder(const std::string& name) const {
        std::filesystem::create_directory(root.path(name));
        root.write(name + "/file", std::string(5000, 'x'));
    }

    TemporaryFolder root{TemporaryFolder::fastBase()};
};

TEST_F(MacDirectoryWalkerTest, aFileIsMeasuredByWhatItsForksTakeOnDisk) {
    root.write("file", "x");
    attributes().change = [](Entry& entry) { entry.allocatedBytes = (std::int64_t{3} << 40) + 512; };
    const TreeWalk found = walked();
    EXPECT_EQ((std::int64_t{3} << 40) + 512, found.bytes);
    EXPECT_EQ((std::vector<WalkedItem>{{"file", found.bytes, false}}), found.children);
}

TEST_F(MacDirectoryWalkerTest, mountPointsAndTriggersAreSeenAndNotEntered) {
    for (const char* name : {"mounted", "trigger", "plain"}) {
        makeFolder(name);
    }
    attributes().change = [](Entry& entry) {
        entry.mountStatus = entry.name == "mounted" ? 1U : entry.name == "trigger" ? 2U : 0U;
    };
    const TreeWalk found = walked();
    EXPECT_EQ(2, found.elsewhere);
    EXPECT_EQ(4, found.entries);
    EXPECT_EQ(1, found.files);
    EXPECT_EQ(0, found.unreadable);
}

TEST_F(MacDirectoryWalkerTest, aFolderOnAnotherDeviceIsNotEnteredEvenWhereTheListingDoesNotSay) {
    const auto device = MacWalkSystem::around(MacWalkSystem::openRoot("/proc").get());
    ASSERT_TRUE(device);
    const MacFileDescriptor folder = MacWalkSystem::openRoot(root.path());
    errno = 0;
    EXPECT_FALSE(device->openAgain(folder.get()));
    EXPECT_EQ(EXDEV, errno);
    EXPECT_TRUE(MacWalkSystem::around(folder.get())->openAgain(folder.get()));
}

TEST_F(MacDirectoryWalkerTest, whatLiesInTheCloudIsNotFetched) {
    makeFolder("cloud");
    makeFolder("here");
    root.write("evicted", "x");
    attributes().change = [](Entry& entry) {
        if (entry.name == "cloud" || entry.name == "evicted") {
            entry.flags = 0x40000000;
            entry.allocatedBytes = 0;
        }
    };
    const TreeWalk found = walked();
    EXPECT_EQ(4, found.entries);
    EXPECT_EQ(2, found.files);
    EXPECT_EQ(1, found.unreadable);
    EXPECT_EQ(4, fake_darwin::callsOfBulk());  // two of the root and two of "here"
    EXPECT_EQ(0, fake_darwin::fetchingCallsOfBulk());
}

TEST_F(MacDirectoryWalkerTest, everyThreadOfAWalkLooksWithoutFetching) {
    for (int folder = 0; folder < 60; ++folder) {
        makeFolder(std::to_string(folder));
    }
    makeChain(root.path(), 60, makeTeethWithFiles);
    EXPECT_EQ(0, walked().unreadable);
    EXPECT_GT(fake_darwin::callsOfBulk(), 120);
    EXPECT_EQ(0, fake_darwin::fetchingCallsOfBulk());
}

TEST_F(MacDirectoryWalkerTest, theCallersThreadKeepsItsPolicies) {
    static constexpr int fetching = 2;
    static constexpr int type = IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES;
    root.write("file", "x");
    std::thread([this] {
        ASSERT_EQ(0, ::setiopolicy_np(type, IOPOL_SCOPE_THREAD, fetching));
        EXPECT_EQ(1, walked().entries);
        EXPECT_EQ(fetching, fake_darwin::ioPolicyOfThisThread(type));
        EXPECT_EQ(0, fake_darwin::ioPolicyOfThisThread(IOPOL_TYPE_VFS_ATIME_UPDATES));
    }).join();
    EXPECT_EQ(0, fake_darwin::fetchingCallsOfBulk());
}

TEST_F(MacDirectoryWalkerTest, aSystemThatRefusesPoliciesIsWalkedAllTheSame) {
    makeFolder("folder");
    fake_darwin::refusesIoPolicies() = true;
    EXPECT_EQ(2, walked().entries);
    EXPECT_EQ(0, fake_darwin::ioPolicyOfThisThread(IOPOL_TYPE_VFS_ATIME_UPDATES));
}

TEST_F(MacDirectoryWalkerTest, aFolderThatMayBeReadButNotSearchedIsCounted) {
    ASSERT_EQ(0, ::chmod(root.path().c_str(), 0755));
    makeFolder("noEntry");
    ASSERT_EQ(0, ::chmod(root.path("noEntry").c_str(), 0744));
    attributes().needsSearch = true;
    EXPECT_TRUE(asOrdinaryUser([this] {
        const TreeWalk found = walked();
        return found.opened && found.entries == 1 && found.unreadable == 1 && found.files == 0;
    }));
}

TEST_F(MacDirectoryWalkerTest, aFolderThatFailsHalfWayCountsOnceWithWhatWasSeen) {
    for (int file = 0; file < 10; ++file) {
        root.write(std::to_string(file), "x");
    }
    attributes().entriesOfCall = 4;
    attributes().failingCall = 3;
    attributes().error = EIO;
    const TreeWalk found = walked();
    EXPECT_TRUE(found.opened);
    EXPECT_EQ(8, found.entries);
    EXPECT_EQ(1, found.unreadable);
}

TEST_F(MacDirectoryWalkerTest, aRootThatCannotBeListedIsNotOpened) {
    root.write("file", "x");
    attributes().failingCall = 1;
    attributes().error = EIO;
    const TreeWalk found = walked();
    EXPECT_TRUE(found.exists);
    EXPECT_FALSE(found.opened);
    EXPECT_EQ(0, found.entries);
}

TEST_F(MacDirectoryWalkerTest, anInterruptedCallIsMadeAgain) {
    root.write("file", "x");
    attributes().failingCall = 1;
    attributes().error = EINTR;
    EXPECT_EQ(1, walked().files);
    EXPECT_EQ(3, fake_darwin::callsOfBulk());
}

TEST_F(MacDirectoryWalkerTest, entriesThatCannotBeToldApartEndTheFolder) {
    for (int file = 0; file < 10; ++file) {
        root.write(std::to_string(file), "x");
    }
    attributes().entriesOfCall = 4;
    attributes().spoil = [](char* buffer, std::size_t bytes) {
        if (bytes > 0) {
            std::uint32_t length = 0;
            std::memcpy(&length, buffer, sizeof length);
            std::memset(buffer + length, 0xFF, 4);  // the length of the second entry
        }
    };
    const TreeWalk found = walked();
    EXPECT_TRUE(found.opened);
    EXPECT_EQ(1, found.entries);
    EXPECT_EQ(1, found.files);
    EXPECT_EQ(1, found.unreadable);
    EXPECT_EQ(1, fake_darwin::callsOfBulk());
}

TEST_F(MacDirectoryWalkerTest, oneEntryACallIsAsGoodAsMany) {
    makeFolder("one");
    makeFolder("two");
    const TreeWalk expected = walked();
    attributes().entriesOfCall = 1;
    EXPECT_EQ(expected, walked());
    EXPECT_EQ(4, expected.entries);
}

TEST_F(MacDirectoryWalkerTest, aFolderOfManyFilesTakesFewCalls) {
    constexpr int files = 5000;
    for (int file = 0; file < files; ++file) {
        ASSERT_EQ(0, ::mknod(root.path(std::to_string(file)).c_str(), S_IFREG | 0600, 0));
    }
    EXPECT_EQ(files, walked().files);
    EXPECT_LE(fake_darwin::callsOfBulk(), files / 300);
}

}  // namespace
}  // namespace kestrune
