#include "platform/macos/MacFileStore.h"

namespace kestrune {

using StoreUnderTest = MacFileStore;

}  // namespace kestrune

#include "tests/platform/FileStoreTests.h"

#include "tests/platform/macos/fake_darwin/FakeFiles.h"
#include "tests/platform/macos/fake_darwin/FakeSync.h"

namespace kestrune {
namespace {

class MacFileStoreTest : public FileStoreTest {
protected:
    ~MacFileStoreTest() override {
        fake_darwin::fullSyncError() = 0;
        fake_darwin::files().renameError = 0;
    }
};

TEST_F(MacFileStoreTest, theFileAndItsFolderAreSyncedToTheDiskItself) {
    fake_darwin::fullSyncs() = 0;
    EXPECT_TRUE(store.replace(file, "new"));
    EXPECT_EQ(2, fake_darwin::fullSyncs());
}

TEST_F(MacFileStoreTest, aFileSystemThatKnowsNoFullSyncIsSyncedTheOrdinaryWay) {
    for (const int error : {ENOTSUP, EINVAL, ENOTTY}) {
        fake_darwin::fullSyncError() = error;
        EXPECT_TRUE(store.replace(file, std::to_string(error)));
        EXPECT_EQ(std::to_string(error), TemporaryFolder::contentOf(file));
    }
}

TEST_F(MacFileStoreTest, aDiskThatCannotSyncLeavesTheOldFileWhole) {
    ASSERT_TRUE(store.replace(file, "old"));
    for (const int error : {EIO, ENOSPC}) {
        fake_darwin::fullSyncError() = error;
        EXPECT_FALSE(store.replace(file, "new"));
    }
    EXPECT_EQ("old", TemporaryFolder::contentOf(file));
    EXPECT_EQ(Names{"file"}, names(folder.path()));
}

TEST_F(MacFileStoreTest, whatCannotBeRenamedWithoutReplacingIsNotSetAside) {
    folder.write("file", "text");
    fake_darwin::files().renameError = ENOTSUP;
    EXPECT_FALSE(store.setAside(file));
    EXPECT_EQ("text", TemporaryFolder::contentOf(file));
}

}  // namespace
}  // namespace kestrune
