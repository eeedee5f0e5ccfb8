#include "platform/linux/LinuxAccount.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace kestrune {
namespace {

namespace fs = std::filesystem;

class LinuxAccountTest : public testing::Test {
protected:
    LinuxAccountTest() {
        if (const char* value = std::getenv("XDG_DATA_HOME")) {
            m_before = value;
        }
        std::string pattern = (fs::temp_directory_path() / "kestrune-account-XXXXXX").string();
        root = fs::canonical(::mkdtemp(pattern.data())).string();
    }

    ~LinuxAccountTest() override {
        if (m_before) {
            ::setenv("XDG_DATA_HOME", m_before->c_str(), 1);
        } else {
            ::unsetenv("XDG_DATA_HOME");
        }
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }

    static std::optional<std::string> dataHomeFor(const std::string& value) {
        ::setenv("XDG_DATA_HOME", value.c_str(), 1);
        return LinuxAccount::dataHome();
    }

    std::string root;

private:
    std::optional<std::string> m_before;
};

TEST_F(LinuxAccountTest, aDataHomeIsTakenAsItIs) {
    EXPECT_EQ(dataHomeFor(root), root);
    EXPECT_EQ(dataHomeFor(root + "/not/there"), root + "/not/there");
}

TEST_F(LinuxAccountTest, aDataHomeBehindALinkIsResolved) {
    fs::create_directory(root + "/home");
    fs::create_directory_symlink(root + "/home", root + "/linked");
    EXPECT_EQ(dataHomeFor(root + "/linked"), root + "/home");
    EXPECT_EQ(dataHomeFor(root + "/linked/.local/share"), root + "/home/.local/share");
}

TEST_F(LinuxAccountTest, aDataHomeThatIsNotAbsoluteCountsAsNone) {
    EXPECT_EQ(dataHomeFor(""), std::nullopt);
    EXPECT_EQ(dataHomeFor("data"), std::nullopt);
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(LinuxAccount::dataHome(), std::nullopt);
}

TEST_F(LinuxAccountTest, theAppImageCountsOnlyForAProgramInsideIt) {
    const std::string executable = LinuxAccount::executablePath();
    EXPECT_EQ(LinuxAccount::startedFile(), executable);
    ::setenv("APPIMAGE", "/home/anna/Kestrune.AppImage", 1);
    EXPECT_EQ(LinuxAccount::startedFile(), executable);
    ::setenv("APPDIR", root.c_str(), 1);
    EXPECT_EQ(LinuxAccount::startedFile(), executable);
    fs::create_directory_symlink(executable.substr(0, executable.rfind('/')), root + "/mount");
    ::setenv("APPDIR", (root + "/mount").c_str(), 1);
    EXPECT_EQ(LinuxAccount::startedFile(), "/home/anna/Kestrune.AppImage");
    ::unsetenv("APPDIR");
    ::unsetenv("APPIMAGE");
}

}  // namespace
}  // namespace kestrune
