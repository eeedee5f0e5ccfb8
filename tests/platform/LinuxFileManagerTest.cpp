#include "platform/linux/LinuxFileManager.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune::LinuxFileManager {
namespace {

using Ids = std::vector<std::string>;

class LinuxFileManagerTest : public testing::Test {
protected:
    void install(const std::string& name) const {
        ASSERT_EQ(::chmod(folder.write(name, "#!/bin/sh\n").c_str(), 0755), 0);
    }

    /// The file manager that is told to end when the lists say this.
    std::string told(const std::vector<std::string>& lists) const {
        Places places{{}, folder.path()};
        for (std::size_t i = 0; i < lists.size(); ++i) {
            places.choices.push_back(folder.write("list" + std::to_string(i), lists[i]));
        }
        const ToolCommand command = quitCommand(places);
        EXPECT_EQ(command.arguments, std::vector<std::string>{"-q"});
        EXPECT_EQ(command.executable.rfind(folder.path() + "/", 0), 0U);
        return command.executable.substr(folder.path().size() + 1);
    }

    static std::string choosing(const std::string& ids) {
        return "[Default Applications]\ninode/directory=" + ids + "\n";
    }

    const TemporaryFolder folder;
};

/// An environment variable for as long as a test runs.
class Variable final {
public:
    Variable(const char* name, const char* value) : m_name(name) {
        if (const char* before = std::getenv(name)) {
            m_before = before;
        }
        value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
    }

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

    ~Variable() { m_before ? ::setenv(m_name, m_before->c_str(), 1) : ::unsetenv(m_name); }

private:
    const char* m_name;
    std::optional<std::string> m_before;
};

TEST_F(LinuxFileManagerTest, preferencesForFoldersStandUnderTheDefaultsAlone) {
    EXPECT_EQ(preferredForFolders("[Added Associations]\ninode/directory=code.desktop;\n"
                                  "[Default Applications]\ntext/plain=gedit.desktop\n"
                                  "inode/directory=nemo.desktop;org.gnome.Nautilus.desktop;\n"
                                  "[Removed Associations]\ninode/directory=thunar.desktop\n"),
              (Ids{"nemo.desktop", "org.gnome.Nautilus.desktop"}));
    EXPECT_TRUE(preferredForFolders("inode/directory=nemo.desktop\n").empty());
    EXPECT_TRUE(preferredForFolders("").empty());
}

TEST_F(LinuxFileManagerTest, everyKnownFileManagerIsRecognisedByItsIds) {
    for (const std::string name : {"nautilus", "nemo", "thunar", "caja"}) {
        install(name);
    }
    EXPECT_EQ(told({choosing("org.gnome.Nautilus.desktop")}), "nautilus");
    EXPECT_EQ(told({choosing("nautilus-folder-handler.desktop")}), "nautilus");
    EXPECT_EQ(told({choosing("nemo.desktop;")}), "nemo");
    EXPECT_EQ(told({choosing("Thunar.desktop")}), "thunar");
    EXPECT_EQ(told({choosing("thunar-folder-handler.desktop")}), "thunar");
    EXPECT_EQ(told({choosing("caja-folder-handler.desktop")}), "caja");
}

TEST_F(LinuxFileManagerTest, listThatCountsMoreWins) {
    install("nemo");
    install("thunar");
    EXPECT_EQ(told({"", choosing("thunar.desktop"), choosing("nemo.desktop")}), "thunar");
}

TEST_F(LinuxFileManagerTest, chosenOneThatIsNotThereGivesWayToTheNext) {
    install("thunar");
    EXPECT_EQ(told({choosing("nemo.desktop;thunar.desktop")}), "thunar");
}

TEST_F(LinuxFileManagerTest, withoutAKnownChoiceTheFirstOneThatIsThereIsTold) {
    install("thunar");
    install("nemo");
    EXPECT_EQ(told({choosing("org.kde.dolphin.desktop")}), "nemo");
    EXPECT_EQ(told({}), "nemo");
}

TEST_F(LinuxFileManagerTest, withoutAnyFileManagerOneIsNamedAllTheSame) {
    EXPECT_EQ(told({choosing("nemo.desktop")}), "nautilus");
}

TEST_F(LinuxFileManagerTest, standardPlacesFollowTheDesktopAndTheBaseFolders) {
    const Variable desktop("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    const Variable config("XDG_CONFIG_HOME", "/c");
    const Variable configs("XDG_CONFIG_DIRS", "/etc/a:relative:/etc/b");
    const Variable data("XDG_DATA_HOME", "/d");
    const Variable datas("XDG_DATA_DIRS", "/usr/share");
    std::vector<std::string> expected;
    for (const std::string place : {"/c", "/etc/a", "/etc/b", "/d/applications", "/usr/share/applications"}) {
        for (const std::string name : {"/ubuntu-mimeapps.list", "/gnome-mimeapps.list", "/mimeapps.list"}) {
            expected.push_back(place + name);
        }
    }
    EXPECT_EQ(standardPlaces(), (Places{expected, "/usr/bin"}));
}

TEST_F(LinuxFileManagerTest, standardPlacesWithoutAnyVariableAreBelowTheHomeFolderAndTheSystems) {
    const Variable home("HOME", folder.path().c_str());
    const Variable desktop("XDG_CURRENT_DESKTOP", nullptr);
    const Variable config("XDG_CONFIG_HOME", nullptr);
    const Variable configs("XDG_CONFIG_DIRS", nullptr);
    const Variable data("XDG_DATA_HOME", nullptr);
    const Variable datas("XDG_DATA_DIRS", "");
    EXPECT_EQ(standardPlaces().choices,
              (std::vector<std::string>{folder.path(".config/mimeapps.list"), "/etc/xdg/mimeapps.list",
                                        folder.path(".local/share/applications/mimeapps.list"),
                                        "/usr/local/share/applications/mimeapps.list",
                                        "/usr/share/applications/mimeapps.list"}));
}

}  // namespace
}  // namespace kestrune::LinuxFileManager
