#include "platform/macos/ApplicationIcons.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

RunningApplication named(const std::string& name, const std::string& executable) {
    RunningApplication application;
    application.localizedName = name;
    application.executable = executable;
    return application;
}

class ApplicationIconsTest : public testing::Test {
protected:
    [[nodiscard]] ApplicationIcon iconOf(const RunningApplication& application, const std::string& png) {
        return icons.of(application, [this, png] {
            ++encoded;
            return png;
        });
    }

    int encoded = 0;
    ApplicationIcons icons{2};
    const RunningApplication notes = named("Notes", "/n");
    const RunningApplication paint = named("Paint", "/p");
    const RunningApplication mail = named("Mail", "/m");
};

TEST_F(ApplicationIconsTest, aPictureIsEncodedOnce) {
    const ApplicationIcon first = iconOf(notes, "png");
    EXPECT_EQ(*first.png, "png");
    EXPECT_EQ(first.path, "");
    EXPECT_EQ(iconOf(notes, "other"), first);
    EXPECT_EQ(encoded, 1);
}

TEST_F(ApplicationIconsTest, aPictureOutlivesItsApplication) {
    const ApplicationIcon first = iconOf(notes, "png");
    EXPECT_EQ(iconOf(notes, ""), first);
}

TEST_F(ApplicationIconsTest, applicationsThatShareAnExecutableHaveTheirOwnPictures) {
    EXPECT_EQ(*iconOf(named("One", "/usr/bin/java"), "1").png, "1");
    EXPECT_EQ(*iconOf(named("Two", "/usr/bin/java"), "2").png, "2");
}

TEST_F(ApplicationIconsTest, whatWasNotAskedForLongestGoesFirst) {
    static_cast<void>(iconOf(notes, "n"));
    static_cast<void>(iconOf(paint, "p"));
    static_cast<void>(iconOf(notes, "n"));
    const ApplicationIcon third = iconOf(mail, "m");
    EXPECT_EQ(*third.png, "m");
    EXPECT_EQ(encoded, 3);
    static_cast<void>(iconOf(notes, "n"));
    EXPECT_EQ(encoded, 3);
    EXPECT_EQ(*iconOf(paint, "again").png, "again");
    EXPECT_EQ(encoded, 4);
}

TEST_F(ApplicationIconsTest, anApplicationWithoutAPictureIsAskedAgain) {
    EXPECT_TRUE(iconOf(notes, "").isEmpty());
    EXPECT_EQ(*iconOf(notes, "later").png, "later");
}

}  // namespace
}  // namespace kestrune
