#include "platform/linux/DesktopEntry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrune {
namespace {

std::string entryText(const std::string& name, const std::string& exec, const std::string& more = {}) {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nName[de]=Anders\nExec=" + exec + "\n" + more;
}

std::vector<std::string> programsIn(const std::string& exec) {
    return parseDesktopEntry(entryText("Name", exec)).value().programs;
}

TEST(DesktopEntry, readsTheMainGroupOnly) {
    const auto entry = parseDesktopEntry(
        "# comment\n[Desktop Entry]\nType = Application\nName = Text Editor\nExec=gedit %U\nTryExec=/usr/bin/gedit\n"
        "StartupWMClass=Gedit\n[Desktop Action new]\nName=New Window\nExec=other --new-window\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "Text Editor");
    EXPECT_EQ(entry->programs, (std::vector<std::string>{"gedit", "Gedit"}));
    EXPECT_FALSE(entry->hasOwnArguments);
}

TEST(DesktopEntry, whatIsNoApplicationIsLeftOut) {
    EXPECT_EQ(parseDesktopEntry(""), std::nullopt);
    EXPECT_EQ(parseDesktopEntry("[Desktop Entry]\nType=Link\nName=x\n"), std::nullopt);
    EXPECT_EQ(parseDesktopEntry("[Desktop Entry]\nType=Application\nExec=x\n"), std::nullopt);
    EXPECT_EQ(parseDesktopEntry(entryText("x", "x", "Hidden=true\n")), std::nullopt);
}

TEST(DesktopEntry, execIsReadWithItsQuotingAndLaunchers) {
    EXPECT_EQ(programsIn("/opt/app/run %F"), std::vector<std::string>{"run"});
    EXPECT_EQ(programsIn("\"/opt/My App/my app\" %u"), std::vector<std::string>{"my app"});
    EXPECT_EQ(programsIn("env GDK_BACKEND=x11 /usr/bin/tool"), std::vector<std::string>{"tool"});
    EXPECT_EQ(programsIn("python3 /usr/share/tool/tool.py"), std::vector<std::string>{"tool.py"});
    EXPECT_EQ(programsIn("/usr/bin/flatpak run --branch=stable --command=gimp-2.10 org.gimp.GIMP @@u %U @@"),
              std::vector<std::string>{"gimp-2.10"});
    EXPECT_EQ(programsIn("sh"), std::vector<std::string>{});
    EXPECT_EQ(programsIn(""), std::vector<std::string>{});
    EXPECT_EQ(programsIn("\""), std::vector<std::string>{});
}

TEST(DesktopEntry, launchersCarryVersions) {
    EXPECT_TRUE(isLauncher("python3.11"));
    EXPECT_TRUE(isLauncher("bash"));
    EXPECT_FALSE(isLauncher("pythonic"));
    EXPECT_FALSE(isLauncher(""));
    EXPECT_FALSE(isLauncher("3"));
}

TEST(DesktopEntry, entryThatMenusDoNotShowStillMatchesAWindow) {
    EXPECT_FALSE(parseDesktopEntry(entryText("x", "x", "NoDisplay=true\n")).value().isShown);
    EXPECT_TRUE(parseDesktopEntry(entryText("x", "x", "NoDisplay=false\n")).value().isShown);
}

TEST(DesktopEntry, nameIsToldInTheUsersLanguage) {
    const std::string text = entryText("Files", "x", "Name[de_AT]=Ordner\nName[de@x]=Mit Zusatz\n");
    EXPECT_EQ(parseDesktopEntry(text, languagesOf("de_DE.UTF-8")).value().localizedName, "Anders");
    EXPECT_EQ(parseDesktopEntry(text, languagesOf("de_AT")).value().localizedName, "Ordner");
    EXPECT_EQ(parseDesktopEntry(text, languagesOf("de_DE@x")).value().localizedName, "Mit Zusatz");
    EXPECT_EQ(parseDesktopEntry(text, languagesOf("fr_FR.UTF-8")).value().localizedName, "Files");
    EXPECT_EQ(parseDesktopEntry(text, languagesOf("C.UTF-8")).value().localizedName, "Files");
    EXPECT_EQ(parseDesktopEntry(text, languagesOf("de_DE.UTF-8")).value().name, "Files");
}

TEST(DesktopEntry, translationThatIsNoTextIsPassedOver) {
    const std::string text = "[Desktop Entry]\nType=Application\nName=Files\nName[de]=\xff\nName[]=x\nName[=y\n";
    EXPECT_EQ(parseDesktopEntry(text, {"de", ""}).value().localizedName, "x");
    EXPECT_EQ(parseDesktopEntry(text, {"de"}).value().localizedName, "Files");
}

TEST(DesktopEntry, localeNamesItsLanguagesFromTheNarrowestOn) {
    EXPECT_EQ(languagesOf("de_DE.UTF-8@euro"), (std::vector<std::string>{"de_DE@euro", "de_DE", "de@euro", "de"}));
    EXPECT_EQ(languagesOf("pt_BR"), (std::vector<std::string>{"pt_BR", "pt"}));
    EXPECT_EQ(languagesOf("eo"), std::vector<std::string>{"eo"});
    for (const char* plain : {"", "C", "C.UTF-8", "POSIX", "@euro", ".UTF-8"}) {
        EXPECT_TRUE(languagesOf(plain).empty()) << plain;
    }
}

TEST(DesktopEntry, linesWithoutSenseDoNoHarm) {
    EXPECT_EQ(parseDesktopEntry("[Desktop Entry]\n=\n[\n]\n\\\nType=Application\nName=late\n"), std::nullopt);
    const auto entry = parseDesktopEntry("\xff\xfe[Desktop Entry\n[Desktop Entry]\n=x\nType=Application\nName=A\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "A");
    EXPECT_EQ(entry->icon, "");
}

}  // namespace
}  // namespace kestrune
