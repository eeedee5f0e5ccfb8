#include "platform/macos/LaunchAgent.h"

#include <gtest/gtest.h>

#include "platform/macos/MacProcessRunner.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

using Arguments = std::vector<std::string>;

/// What a reader of property lists that is not ours makes of text.
std::string readBack(const std::string& text) {
    const TemporaryFolder folder;
    const std::string reader =
        "import json, plistlib, sys\n"
        "print(json.dumps(plistlib.load(open(sys.argv[1], 'rb'), fmt=plistlib.FMT_XML)))\n";
    return MacProcessRunner().run("/usr/bin/python3", {"-c", reader, folder.write("agent.plist", text)}).output;
}

std::string expected(const std::string& executableInJson) {
    return "{\"Label\": \"com.torvandelsyn.kestrune\", \"ProgramArguments\": [\"" + executableInJson +
           "\"], \"RunAtLoad\": true, \"KeepAlive\": false, \"ProcessType\": \"Background\"}\n";
}

TEST(LaunchAgent, itsPropertyListHasFiveKeysOfTheRightTypes) {
    const auto text = LaunchAgent::propertyList("/Applications/Kestrune.app/Contents/MacOS/Kestrune");
    ASSERT_TRUE(text);
    EXPECT_EQ(expected("/Applications/Kestrune.app/Contents/MacOS/Kestrune"), readBack(*text));
}

TEST(LaunchAgent, itsPropertyListIsThisXml) {
    EXPECT_EQ(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n"
        "<dict>\n"
        "\t<key>Label</key>\n"
        "\t<string>com.torvandelsyn.kestrune</string>\n"
        "\t<key>ProgramArguments</key>\n"
        "\t<array>\n"
        "\t\t<string>/a/b</string>\n"
        "\t</array>\n"
        "\t<key>RunAtLoad</key>\n"
        "\t<true/>\n"
        "\t<key>KeepAlive</key>\n"
        "\t<false/>\n"
        "\t<key>ProcessType</key>\n"
        "\t<string>Background</string>\n"
        "</dict>\n"
        "</plist>\n",
        LaunchAgent::propertyList("/a/b"));
}

TEST(LaunchAgent, anAwkwardPathComesBackUnchanged) {
    const auto text = LaunchAgent::propertyList("/Users/me/R&D <old> \"it's\" ]]> &amp; 日本/  two  /Kestrune");
    ASSERT_TRUE(text);
    EXPECT_EQ(expected(R"(/Users/me/R&D <old> \"it's\" ]]> &amp; \u65e5\u672c/  two  /Kestrune)"), readBack(*text));
}

TEST(LaunchAgent, aPathThatXmlCannotHoldIsRefused) {
    for (const std::string& path :
         {std::string(), std::string("Kestrune"), std::string("/two\nlines"), std::string("/return\r"),
          std::string("/tab\t"), std::string("/a\0b", 4), std::string("/\x1B"), std::string("/\x7F"),
          std::string("/\xFF"), std::string("/\xED\xA0\x80"), std::string("/\xEF\xBF\xBE"),
          std::string("/\xEF\xBF\xBF")}) {
        EXPECT_EQ(std::nullopt, LaunchAgent::propertyList(path)) << testing::PrintToString(path);
    }
}

TEST(LaunchAgent, itLiesAmongTheUsersAgents) {
    EXPECT_EQ("/Users/me/Library/LaunchAgents/com.torvandelsyn.kestrune.plist", LaunchAgent::path("/Users/me"));
}

TEST(LaunchAgent, itsProcessIsTheOneThatLaunchdStartedUnderItsLabel) {
    EXPECT_TRUE(LaunchAgent::isProcess("com.torvandelsyn.kestrune", 1));
    EXPECT_FALSE(LaunchAgent::isProcess("application.com.torvandelsyn.kestrune.1152921500311", 1));
    EXPECT_FALSE(LaunchAgent::isProcess("com.torvandelsyn.kestrune", 4711));
    EXPECT_FALSE(LaunchAgent::isProcess("0", 1));
    EXPECT_FALSE(LaunchAgent::isProcess("", 1));
}

TEST(LaunchAgent, launchctlIsToldTheUsersDesktopSession) {
    EXPECT_EQ((ToolCommand{"/bin/launchctl", {"bootstrap", "gui/501", "/Users/me/agent of mine.plist"}}),
              LaunchAgent::bootstrap(501, "/Users/me/agent of mine.plist"));
    EXPECT_EQ((ToolCommand{"/bin/launchctl", {"bootout", "gui/501/com.torvandelsyn.kestrune"}}),
              LaunchAgent::bootout(501));
}

TEST(LaunchAgent, aUsersNumberMayBeLarge) {
    EXPECT_EQ((Arguments{"bootout", "gui/4294967294/com.torvandelsyn.kestrune"}),
              LaunchAgent::bootout(4294967294).arguments);
}

}  // namespace
}  // namespace kestrune
