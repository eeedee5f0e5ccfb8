#include "platform/macos/MacAccount.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

class MacAccountTest : public ::testing::Test {
protected:
    MacAccountTest() {
        if (const char* home = std::getenv("HOME")) {
            m_before = home;
        }
    }

    ~MacAccountTest() override {
        if (m_before) {
            ::setenv("HOME", m_before->c_str(), 1);
        } else {
            ::unsetenv("HOME");
        }
    }

    static std::string homeWith(const std::string& variable) {
        ::setenv("HOME", variable.c_str(), 1);
        return MacAccount::homeDirectory();
    }

    static std::string homeOfTheDatabase() {
        return std::filesystem::canonical(::getpwuid(::getuid())->pw_dir).string();
    }

    TemporaryFolder m_folder;
    std::string m_root = std::filesystem::canonical(m_folder.path()).string();

private:
    std::optional<std::string> m_before;
};

TEST_F(MacAccountTest, theHomeFolderIsTheOneOfTheEnvironment) {
    EXPECT_EQ(homeWith(m_root), m_root);
}

TEST_F(MacAccountTest, aLinkedHomeFolderIsResolvedOnce) {
    std::filesystem::create_directory(m_root + "/volume");
    std::filesystem::create_directory_symlink(m_root + "/volume", m_root + "/home");
    EXPECT_EQ(homeWith(m_root + "/home"), m_root + "/volume");
    EXPECT_EQ(homeWith(m_root + "/volume/"), m_root + "/volume");
}

TEST_F(MacAccountTest, whatIsNoFolderGivesWayToTheUserDatabase) {
    m_folder.write("file", "");
    EXPECT_EQ(homeWith(m_root + "/file"), homeOfTheDatabase());
    EXPECT_EQ(homeWith(m_root + "/missing"), homeOfTheDatabase());
    EXPECT_EQ(homeWith("."), homeOfTheDatabase());
    EXPECT_EQ(homeWith(""), homeOfTheDatabase());
}

}  // namespace
}  // namespace kestrune
