#include "platform/linux/fetch/ArchiveFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/fetch/ArchiveSigner.h"

namespace kestrune {

namespace {

namespace fs = std::filesystem;

mode_t modeOf(const std::string& path) {
    struct stat status {};

    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

class ArchiveFileTest : public ::testing::Test {
protected:
    [[nodiscard]] std::vector<std::string> left() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(m_cache)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    TemporaryFolder m_folder;
    const std::string m_cache = m_folder.path("cache/kestrune/updates");
    const ArchiveSigner m_publisher;
};

}  // namespace

TEST_F(ArchiveFileTest, onlyTheUserCanEnterWhatIsKept) {
    std::string path;
    {
        ArchiveFile archive(m_cache, "AppImage");
        ASSERT_EQ(archive.failure(), std::nullopt);
        ASSERT_EQ(archive.write("by"), std::nullopt);
        ASSERT_EQ(archive.write("tes"), std::nullopt);
        EXPECT_EQ(archive.size(), 5);
        EXPECT_EQ(archive.verify(m_publisher.publicKey(), m_publisher.signature("bytes")), std::nullopt);
        path = archive.keep();
    }
    EXPECT_EQ(fs::path(path).filename(), "kestrune.AppImage");
    EXPECT_EQ(TemporaryFolder::contentOf(path), "bytes");
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(modeOf(fs::path(path).parent_path()), 0700U);
    EXPECT_EQ(modeOf(m_cache), 0700U);
}

TEST_F(ArchiveFileTest, whatIsNotKeptIsTakenAway) {
    {
        ArchiveFile archive(m_cache, "deb");
        EXPECT_EQ(archive.write("bytes"), std::nullopt);
        EXPECT_EQ(left().size(), 1U);
    }
    EXPECT_TRUE(left().empty());
}

TEST_F(ArchiveFileTest, onlyThePublishersSignatureOverTheseVeryBytesIsTaken) {
    ArchiveFile archive(m_cache, "deb");
    ASSERT_EQ(archive.write("bytes"), std::nullopt);
    const std::string key = m_publisher.publicKey();
    const std::string good = m_publisher.signature("bytes");
    const ArchiveSigner stranger;
    const FetchFailure wrong{FetchReason::signatureWrong, {}};
    EXPECT_EQ(archive.verify(key, m_publisher.signature("Bytes")), wrong);
    EXPECT_EQ(archive.verify(key, stranger.signature("bytes")), wrong);
    EXPECT_EQ(archive.verify(stranger.publicKey(), good), wrong);
    for (const std::string& text : {std::string(), std::string("x"), good.substr(4), good + "AAAA", " " + good,
                                    good + "\n", std::string(88, '=')}) {
        EXPECT_EQ(archive.verify(key, text), wrong) << text;
        EXPECT_EQ(archive.verify(text, good), wrong) << text;
    }
    EXPECT_EQ(archive.verify(key, good), std::nullopt);
    ASSERT_EQ(archive.write("!"), std::nullopt);
    EXPECT_EQ(archive.verify(key, good), wrong);
}

TEST_F(ArchiveFileTest, nothingIsNeverSigned) {
    const ArchiveFile archive(m_cache, "deb");
    EXPECT_EQ(archive.verify(m_publisher.publicKey(), m_publisher.signature("")),
              (FetchFailure{FetchReason::signatureWrong, {}}));
}

TEST_F(ArchiveFileTest, whatEndedRunsLeftIsRemovedAndNothingElse) {
    fs::create_directories(m_cache + "/fetch-aaaaaa");
    fs::create_directories(m_cache + "/fetch-other-name");
    m_folder.write("cache/kestrune/updates/fetch-aaaaaa/kestrune.deb", "left");
    m_folder.write("elsewhere", "kept");
    fs::create_directories(m_folder.path("linked"));
    m_folder.write("linked/file", "kept");
    fs::create_directory_symlink(m_folder.path("linked"), m_cache + "/fetch-bbbbbb");
    fs::create_symlink(m_folder.path("elsewhere"), m_cache + "/fetch-aaaaaa/link");
    const ArchiveFile running(m_cache, "deb");
    const ArchiveFile second(m_cache, "deb");
    EXPECT_EQ(second.failure(), std::nullopt);
    EXPECT_FALSE(fs::exists(m_cache + "/fetch-aaaaaa"));
    EXPECT_TRUE(fs::exists(m_cache + "/fetch-other-name"));
    EXPECT_TRUE(fs::exists(m_folder.path("linked/file")));
    EXPECT_TRUE(fs::exists(m_folder.path("elsewhere")));
    // Those two, the one with another name and the link.
    EXPECT_EQ(left().size(), 4U);
}

TEST_F(ArchiveFileTest, aFolderThatIsALinkOrNoneIsNotUsed) {
    const FetchFailure unusable{FetchReason::folderUnusable, m_cache};
    fs::create_directories(m_folder.path("cache/kestrune"));
    fs::create_directories(m_folder.path("other"));
    fs::create_directory_symlink(m_folder.path("other"), m_cache);
    EXPECT_EQ(ArchiveFile(m_cache, "deb").failure(), unusable);
    fs::remove(m_cache);
    m_folder.write("cache/kestrune/updates", "a file");
    EXPECT_EQ(ArchiveFile(m_cache, "deb").failure(), unusable);
}

TEST_F(ArchiveFileTest, othersCanNoLongerWriteIntoTheFolder) {
    fs::create_directories(m_cache);
    fs::permissions(m_cache, fs::perms::all);
    const ArchiveFile archive(m_cache, "deb");
    EXPECT_EQ(archive.failure(), std::nullopt);
    EXPECT_EQ(modeOf(m_cache), 0700U);
}

TEST_F(ArchiveFileTest, aFolderThatOthersCouldReplaceIsNotUsed) {
    fs::create_directories(m_cache);
    const std::string above = fs::path(m_cache).parent_path();
    ASSERT_EQ(::chmod(above.c_str(), 0777), 0);
    EXPECT_EQ(ArchiveFile(m_cache, "AppImage").failure()->reason, FetchReason::folderUnusable);
    ASSERT_EQ(::chmod(above.c_str(), 01777), 0);
    EXPECT_EQ(ArchiveFile(m_cache, "AppImage").failure(), std::nullopt);
    if (::geteuid() == 0) {
        constexpr uid_t nobody = 65'534;
        ASSERT_EQ(::chown(above.c_str(), nobody, nobody), 0);
        EXPECT_EQ(ArchiveFile(m_cache, "AppImage").failure()->reason, FetchReason::folderUnusable);
    }
}

TEST_F(ArchiveFileTest, aFullDiskIsTold) {
    ArchiveFile archive(m_cache, "deb");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1000, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto failure = archive.write(QByteArray(2000, 'x'));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(failure, (FetchFailure{FetchReason::diskFull, {}}));
}

}  // namespace kestrune
