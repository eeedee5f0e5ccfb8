#include "platform/linux/AppImageReplacement.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"
#include "tests/fakes/OrdinaryUser.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {

namespace {

namespace fs = std::filesystem;

const std::string oldBytes =
    "\x7F"
    "ELF old";
const std::string newBytes =
    "\x7F"
    "ELF new" +
    std::string(3'000'000, 'n');

class AppImageReplacementTest : public ::testing::Test {
protected:
    AppImageReplacementTest() {
        fs::create_directory(m_folder.path("programs"));
        fs::create_directory(m_folder.path("fetched"));
        m_image = m_folder.write("programs/Kestrune.AppImage", oldBytes);
        m_archive = m_folder.write("fetched/kestrune.AppImage", newBytes);
        ::chmod(m_image.c_str(), 0751);
    }

    /// The old one is whole, and nothing lies beside it.
    void expectOld() const {
        EXPECT_EQ(TemporaryFolder::contentOf(m_image), oldBytes);
        EXPECT_EQ(std::distance(fs::directory_iterator(m_folder.path("programs")), fs::directory_iterator()), 1);
    }

    void expectNew() const {
        EXPECT_EQ(TemporaryFolder::contentOf(m_image), newBytes);
        EXPECT_EQ(std::distance(fs::directory_iterator(m_folder.path("programs")), fs::directory_iterator()), 1);
    }

    TemporaryFolder m_folder;
    std::string m_image;
    std::string m_archive;
};

}  // namespace

TEST_F(AppImageReplacementTest, theNewOneTakesThePlaceAndThePermissionsOfTheOld) {
    EXPECT_EQ(replaceAppImage(m_image, m_archive), std::nullopt);
    expectNew();

    struct stat status {};

    ASSERT_EQ(::stat(m_image.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0751U);
}

TEST_F(AppImageReplacementTest, aRunningOneKeepsItsBytes) {
    const LinuxFileDescriptor running(::open(m_image.c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(replaceAppImage(m_image, m_archive), std::nullopt);
    std::string bytes(oldBytes.size() + 1, '\0');
    EXPECT_EQ(::pread(running.get(), bytes.data(), bytes.size(), 0), static_cast<ssize_t>(oldBytes.size()));
    bytes.pop_back();
    EXPECT_EQ(bytes, oldBytes);
}

TEST_F(AppImageReplacementTest, behindTheUsersOwnLinkTheFileIsReplacedAndTheLinkStays) {
    const std::string link = m_folder.path("link");
    fs::create_symlink(m_image, link);
    EXPECT_EQ(replaceAppImage(link, m_archive), std::nullopt);
    expectNew();
    EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(AppImageReplacementTest, whatIsNoProgramTakesNoPlace) {
    const UpdaterError expected{UpdaterError::install, "What was fetched is not a program, so the old version stays."};
    EXPECT_EQ(replaceAppImage(m_image, m_folder.write("fetched/text", "text")), expected);
    EXPECT_EQ(replaceAppImage(m_image, m_folder.write("fetched/empty", "")), expected);
    EXPECT_EQ(replaceAppImage(m_image, m_folder.path("fetched/nothing")), expected);
    EXPECT_EQ(replaceAppImage(m_image, m_folder.path("fetched")), expected);
    fs::create_symlink(m_archive, m_folder.path("fetched/link"));
    EXPECT_EQ(replaceAppImage(m_image, m_folder.path("fetched/link")), expected);
    expectOld();
}

TEST_F(AppImageReplacementTest, aProgramThatIsGoneIsNotMadeAnew) {
    fs::remove(m_image);
    EXPECT_EQ(
        replaceAppImage(m_image, m_archive),
        (UpdaterError{UpdaterError::install, "The running program, " + m_image + ", is no longer in its place."}));
    EXPECT_FALSE(fs::exists(m_image));
}

TEST_F(AppImageReplacementTest, whatTookTheProgramsPlaceIsLeftAlone) {
    const UpdaterError expected{UpdaterError::install,
                                "The running program, " + m_image + ", is no longer in its place."};
    m_folder.write("programs/Kestrune.AppImage", "a letter");
    EXPECT_EQ(replaceAppImage(m_image, m_archive), expected);
    EXPECT_EQ(TemporaryFolder::contentOf(m_image), "a letter");
    const std::string letter = m_folder.write("letter", "another letter");
    fs::remove(m_image);
    fs::create_symlink(letter, m_image);
    EXPECT_EQ(replaceAppImage(m_image, m_archive), expected);
    EXPECT_EQ(TemporaryFolder::contentOf(letter), "another letter");
}

TEST_F(AppImageReplacementTest, aFullDiskLeavesTheOldOne) {
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{1'000'000, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto error = replaceAppImage(m_image, m_archive);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    static_cast<void>(std::signal(SIGXFSZ, before));
    EXPECT_EQ(error, (UpdaterError{UpdaterError::install, "There is not enough space in " + m_folder.path("programs") +
                                                              " for the new version."}));
    expectOld();
}

TEST_F(AppImageReplacementTest, aFolderThatCannotBeWrittenToIsNamed) {
    fs::permissions(m_folder.path(), fs::perms::all);
    ::chmod(m_image.c_str(), 0755);
    fs::permissions(m_folder.path("programs"),
                    fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    const UpdaterError expected{
        UpdaterError::install,
        "The folder " + m_folder.path("programs") + " cannot be written to. Move Kestrune to a folder of your own."};
    EXPECT_TRUE(asOrdinaryUser([&] { return replaceAppImage(m_image, m_archive) == expected; }));
    fs::permissions(m_folder.path("programs"), fs::perms::owner_all);
    expectOld();
}

}  // namespace kestrune
