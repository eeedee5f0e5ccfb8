#include "engine/AppClosing.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "engine/LowerCase.h"

namespace kestrune::AppClosing {

namespace {

constexpr std::array<std::string_view, 25> heavyIdentifiers{"com.google.Chrome",         "org.mozilla.firefox",
                                                            "com.tinyspeck.slackmacgap", "com.spotify.client",
                                                            "com.hnc.Discord",           "ru.keepcoder.Telegram",
                                                            "net.whatsapp.WhatsApp",     "com.microsoft.teams",
                                                            "com.microsoft.teams2",      "us.zoom.xos",
                                                            "com.microsoft.VSCode",      "com.sublimetext.3",
                                                            "com.sublimetext.4",         "com.googlecode.iterm2",
                                                            "com.apple.Terminal",        "com.apple.Photos",
                                                            "com.adobe.Photoshop",       "com.figma.Desktop",
                                                            "com.google.android.studio", "com.apple.dt.Xcode",
                                                            "com.jetbrains.intellij",    "com.jetbrains.intellij.ce",
                                                            "com.jetbrains.pycharm",     "com.jetbrains.WebStorm",
                                                            "com.docker.docker"};

// Safari counts by its name alone.
constexpr std::array<std::string_view, 23> heavyNames{"google chrome",
                                                      "safari",
                                                      "firefox",
                                                      "slack",
                                                      "spotify",
                                                      "discord",
                                                      "telegram",
                                                      "whatsapp",
                                                      "microsoft teams",
                                                      "zoom",
                                                      "visual studio code",
                                                      "sublime text",
                                                      "iterm2",
                                                      "terminal",
                                                      "photos",
                                                      "photoshop",
                                                      "figma",
                                                      "android studio",
                                                      "xcode",
                                                      "intellij idea",
                                                      "pycharm",
                                                      "webstorm",
                                                      "docker"};

template <typename Names>
bool contains(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

bool isHeavy(const RunningApplication& application) {
    return contains(heavyIdentifiers, application.bundleIdentifier) ||
           contains(heavyNames, lowerCasedInAnyScript(application.localizedName));
}

bool isSameProcess(const RunningApplication& found, std::uint64_t startTime) {
    return found.startTime == 0 || startTime == 0 || found.startTime == startTime;
}

}  // namespace kestrune::AppClosing
