#include "platform/linux/SystemdUnit.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

SystemdUnit unit(const std::string& launcher, const std::string& application, bool isAutostart = false) {
    return {launcher, application, isAutostart};
}

}  // namespace

TEST(SystemdUnit, namesOfTheConventionAreRead) {
    EXPECT_EQ(parseSystemdUnit("app-gnome-org.gnome.TextEditor-12345.scope"), unit("gnome", "org.gnome.TextEditor"));
    EXPECT_EQ(parseSystemdUnit("app-firefox-1a2b3c.scope"), unit("", "firefox"));
    EXPECT_EQ(parseSystemdUnit("app-org.kde.kate@1234abcd.service"), unit("", "org.kde.kate"));
    EXPECT_EQ(parseSystemdUnit("app-KDE-org.kde.okular@12.service"), unit("KDE", "org.kde.okular"));
    EXPECT_EQ(parseSystemdUnit("app-org.kde.kate.service"), unit("", "org.kde.kate"));
    EXPECT_EQ(parseSystemdUnit("app-flatpak-org.gimp.GIMP-99.scope"), unit("flatpak", "org.gimp.GIMP"));
    EXPECT_EQ(parseSystemdUnit("snap.firefox.firefox-8a1f-4b2c-99.scope"), unit("snap", "firefox_firefox"));
    EXPECT_EQ(parseSystemdUnit("dbus-:1.2-org.gnome.Maps@0.service"), unit("dbus", "org.gnome.Maps"));
}

TEST(SystemdUnit, aDashWithinTheIdIsEscaped) {
    EXPECT_EQ(parseSystemdUnit(R"(app-gnome-google\x2dchrome-77.scope)"), unit("gnome", "google-chrome"));
    EXPECT_EQ(parseSystemdUnit(R"(app-my\x2dapp@autostart.service)"), unit("", "my-app", true));
}

TEST(SystemdUnit, whatStartsWithTheSessionIsTold) {
    EXPECT_EQ(parseSystemdUnit(R"(app-gnome-org.gnome.SettingsDaemon.Power@autostart.service)"),
              unit("gnome", "org.gnome.SettingsDaemon.Power", true));
}

TEST(SystemdUnit, otherUnitsAreNone) {
    for (const char* name : {"",
                             "app-",
                             "app-.scope",
                             "app-firefox.scope",
                             "app--1.scope",
                             "app-a-b-c-1.scope",
                             "app-x-1.slice",
                             "app-x-1.mount",
                             "app-@1.service",
                             "app-gnome-@1.service",
                             "vte-spawn-0e3c.scope",
                             "gnome-session-manager@gnome.service",
                             "session-2.scope",
                             "snap.firefox-1.scope",
                             "snap..firefox-1.scope",
                             "snap.firefox.firefox.service",
                             "dbus-:1.2-@0.service",
                             "dbus-:1.2.service",
                             "dbus-:1@0-x.service",
                             "xapp-a-1.scope"}) {
        EXPECT_EQ(parseSystemdUnit(name), std::nullopt) << name;
    }
}

TEST(SystemdUnit, anIdThatCouldLeadElsewhereIsRefused) {
    for (const char* name : {R"(app-gnome-\x2e\x2e\x2fetc-1.scope)", R"(app-gnome-a\x2fb-1.scope)",
                             R"(app-gnome-a\x00b-1.scope)", R"(app-gnome-a\x0ab-1.scope)",
                             R"(app-gnome-\xff\xfe-1.scope)", "app-gnome-..-1.scope", "app-gnome-\x1b[31m-1.scope"}) {
        EXPECT_EQ(parseSystemdUnit(name), std::nullopt) << name;
    }
    EXPECT_EQ(parseSystemdUnit("app-" + std::string(300, 'a') + "-1.scope"), std::nullopt);
}

TEST(SystemdUnit, aBrokenEscapeStaysAsItIs) {
    EXPECT_EQ(parseSystemdUnit(R"(app-a\x2-1.scope)"), unit("", R"(a\x2)"));
    EXPECT_EQ(parseSystemdUnit(R"(app-a\xgg-1.scope)"), unit("", R"(a\xgg)"));
    EXPECT_EQ(parseSystemdUnit(R"(app-a\-1.scope)"), unit("", R"(a\)"));
    EXPECT_EQ(parseSystemdUnit(R"(app-a\x+1-1.scope)"), unit("", R"(a\x+1)"));
}

TEST(SystemdUnit, theUnitOfAProcessIsTheLastPartOfItsControlGroup) {
    EXPECT_EQ(systemdUnitName("0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-firefox-1.scope\n"),
              "app-firefox-1.scope");
    EXPECT_EQ(systemdUnitName("12:cpu:/app-other-1.scope\n1:name=systemd:/x\n0::/app-firefox-1.scope\n"),
              "app-firefox-1.scope");
    EXPECT_EQ(systemdUnitName("0::/\n"), "");
    EXPECT_EQ(systemdUnitName("12:cpu:/app-other-1.scope\n"), "");
    EXPECT_EQ(systemdUnitName(""), "");
}

}  // namespace kestrune
