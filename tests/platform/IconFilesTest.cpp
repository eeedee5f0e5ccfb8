#include "platform/linux/IconFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

class IconFilesTest : public testing::Test {
protected:
    std::string picture(const std::string& relative) const {
        fs::create_directories(fs::path(root.path(relative)).parent_path());
        return root.write(relative, "");
    }

    void theme(const std::string& name, const std::string& head, const std::vector<std::string>& folders) const {
        std::string text = "[Icon Theme]\n" + head + "\n";
        for (const std::string& folder : folders) {
            text += folder + "\n";
        }
        fs::create_directories(root.path(name));
        static_cast<void>(root.write(name + "/index.theme", text));
    }

    TemporaryFolder root;
    TemporaryFolder loose;
    std::string chosen = "Mine";
    IconFiles icons{{"/does/not/exist", root.path()},
                    [this] {
                        return std::vector<std::string>{chosen, ""};
                    },
                    {loose.path()}};
};

const std::vector<std::string> sizes{"[16x16/apps]\nSize=16", "[256x256/apps]\nSize=256", "[64x64/apps]\nSize=64",
                                     "[scalable/apps]\nSize=128\nType=Scalable"};

TEST_F(IconFilesTest, pictureThatScalesComesFirstThenTheNearestThatIsLargeEnough) {
    theme("hicolor", "", sizes);
    const std::string small = picture("hicolor/16x16/apps/one.png");
    EXPECT_EQ(icons.find("one"), small);
    static_cast<void>(picture("hicolor/16x16/apps/two.png"));
    static_cast<void>(picture("hicolor/256x256/apps/two.png"));
    const std::string near = picture("hicolor/64x64/apps/two.png");
    icons.forget();
    EXPECT_EQ(icons.find("two"), near);
    const std::string scaling = picture("hicolor/scalable/apps/two.svg");
    EXPECT_EQ(icons.find("two"), near);
    icons.forget();
    EXPECT_EQ(icons.find("two"), scaling);
}

TEST_F(IconFilesTest, themeOfTheUserComesBeforeWhatItInheritsAndTheCommonOne) {
    theme("Mine", "Inherits=Parent,Mine,../Outside", sizes);
    theme("Parent", "Inherits=Mine", sizes);
    theme("hicolor", "", sizes);
    const std::string common = picture("hicolor/scalable/apps/a.svg");
    EXPECT_EQ(icons.find("a"), common);
    const std::string inherited = picture("Parent/16x16/apps/a.png");
    icons.forget();
    EXPECT_EQ(icons.find("a"), inherited);
    const std::string own = picture("Mine/16x16/apps/a.png");
    icons.forget();
    EXPECT_EQ(icons.find("a"), own);
}

TEST_F(IconFilesTest, themeIsTheOneChosenWhenTheFirstIconIsLookedFor) {
    theme("Mine", "", sizes);
    theme("Other", "", sizes);
    const std::string mine = picture("Mine/16x16/apps/a.png");
    const std::string other = picture("Other/16x16/apps/a.png");
    chosen = "Other";
    EXPECT_EQ(icons.find("a"), other);
    chosen = "Mine";
    EXPECT_EQ(icons.find("a"), other);
    icons.forget();
    EXPECT_EQ(icons.find("a"), mine);
}

TEST_F(IconFilesTest, loosePicturesAreTheLastPlace) {
    const std::string path = loose.write("tool.png", "");
    static_cast<void>(loose.write("other.xpm", ""));
    EXPECT_EQ(icons.find("tool"), path);
    EXPECT_EQ(icons.find("tool.png"), path);
    EXPECT_EQ(icons.find("other"), "");
    EXPECT_EQ(icons.find("missing"), "");
}

TEST_F(IconFilesTest, absolutePathIsTakenWhenItIsAPicture) {
    const std::string path = loose.write("tool.svg", "");
    EXPECT_EQ(icons.find(path), path);
    EXPECT_EQ(icons.find(loose.path("./tool.svg")), path);
    EXPECT_EQ(icons.find(loose.path("none.svg")), "");
    EXPECT_EQ(icons.find(loose.write("tool.xpm", "")), "");
    ASSERT_EQ(::mkfifo(loose.path("pipe.png").c_str(), 0600), 0);
    EXPECT_EQ(icons.find(loose.path("pipe.png")), "");
    EXPECT_EQ(icons.find("/etc/passwd"), "");
}

TEST_F(IconFilesTest, nameDoesNotLeadOutOfTheFolders) {
    static_cast<void>(root.write("outside.png", ""));
    theme("hicolor", "", {"[../x]\nSize=48", "[/etc]\nSize=48", "[]", "["});
    for (const std::string name : {"../outside", "..", ".", "", "a/b",
                                   "../"
                                   "../etc/passwd",
                                   ".svg", "\n"}) {
        EXPECT_EQ(icons.find(name), "") << name;
    }
}

TEST_F(IconFilesTest, brokenIndexOfAThemeDoesNoHarm) {
    fs::create_directories(root.path("Mine"));
    ASSERT_EQ(::mkfifo(root.path("Mine/index.theme").c_str(), 0600), 0);
    theme("hicolor", "Inherits=,,", {"[a]\nSize=99999999999999999999\nScale=-5", "[b]\nSize=x\nScale=1000000000"});
    const std::string path = picture("hicolor/a/tool.png");
    EXPECT_EQ(icons.find("tool"), path);
}

}  // namespace
}  // namespace kestrune
