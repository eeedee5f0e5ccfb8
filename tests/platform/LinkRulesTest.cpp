#include "platform/LinkRules.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

class HelpPagesTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directory(folder.path("help")); }

    [[nodiscard]] std::optional<std::string> page(const std::string& name) const {
        return LinkRules::helpPage(folder.path("help"), name);
    }

    TemporaryFolder folder;
};

TEST(LinkRulesTest, onlyAWholeHttpsAddressIsAWebAddress) {
    EXPECT_TRUE(LinkRules::isWebAddress("https://kestrune.example/help?a=b#c"));
    for (const std::string& address : {std::string(), std::string("https://"), std::string("http://kestrune.example/"),
                                       std::string("file:///etc/passwd"), std::string(" https://kestrune.example/"),
                                       std::string("https://kestrune.example/a b"), std::string("https://a\nb"),
                                       std::string("https://a\x7f"), std::string("https://a\0b", 11)}) {
        EXPECT_FALSE(LinkRules::isWebAddress(address)) << address;
    }
}

TEST_F(HelpPagesTest, pageIsTheFileOfThatNameInTheFolder) {
    const std::string file = folder.write("help/whats-new.html", "<!doctype html>");
    EXPECT_EQ(page("whats-new"), file);
    EXPECT_EQ(LinkRules::helpPage(folder.path("bin/../help"), "whats-new"), file);
}

TEST_F(HelpPagesTest, whatIsMoreThanANameIsNoPage) {
    for (const char* const file : {"help/help.html", "outside.html", "help/a b.html", "help/.html", "help/a.b.html"}) {
        ASSERT_TRUE(std::filesystem::is_regular_file(folder.write(file, "")));
    }
    for (const std::string& name :
         {std::string(), std::string("../outside"), std::string("./help"), std::string("help.html"), std::string("a b"),
          std::string("a.b"), folder.path("help/help"), std::string("help\0", 5)}) {
        EXPECT_EQ(page(name), std::nullopt) << name;
    }
}

TEST_F(HelpPagesTest, pageThatIsMissingOrNoFileIsNoPage) {
    std::filesystem::create_directory(folder.path("help/updates.html"));
    EXPECT_EQ(page("updates"), std::nullopt);
    EXPECT_EQ(page("help"), std::nullopt);
}

}  // namespace
}  // namespace kestrune
