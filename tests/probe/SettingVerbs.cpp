#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "platform/PreferenceSuite.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxPreferences.h"
#include "tests/probe/ProbeText.h"
#include "tests/probe/Verbs.h"

namespace kestrune::probe {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<std::string_view, 3> booleanKeys{"reduceFX", "kestrune_login_default_2_1",
                                                      "kestrune_scan_reminders"};
constexpr std::string_view dateKey = "kestrune_last_scan_reminder";

// The settings file of home, or nothing when the environment names a suite that cannot be.
std::optional<std::string> settingsPath(const std::string& home) {
    const char* suite = std::getenv("KESTRUNE_TEST_SUITE");
    if (suite != nullptr && !PreferenceSuite::isPlainName(suite)) {
        static_cast<void>(std::fprintf(stderr, "\"%s\" is no plain name for a settings suite.\n", suite));
        return std::nullopt;
    }
    return LinuxPreferences::standardPath(absoluteVariable("XDG_CONFIG_HOME").value_or(home + "/.config"),
                                          suite == nullptr ? std::nullopt : std::optional<std::string>(suite));
}

std::optional<double> number(const std::string& text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && rest == end && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

int answer(bool saved) {
    std::puts(saved ? "OK" : "ERR This setting works for this session, but couldn't be saved.");
    return saved ? succeeded : failed;
}

int setValue(Preferences& preferences, const std::string& key, const Arguments& values) {
    if (std::find(booleanKeys.begin(), booleanKeys.end(), key) != booleanKeys.end()) {
        if (values != Arguments{"true"} && values != Arguments{"false"}) {
            return misused;
        }
        return answer(preferences.setBoolean(key, values[0] == "true"));
    }
    if (key == dateKey) {
        const auto seconds = values.size() == 1 ? number(values[0]) : std::nullopt;
        return seconds ? answer(preferences.setDate(key, WallTime{Seconds{*seconds}})) : misused;
    }
    return answer(preferences.setTexts(key, values));
}

Json value(const Preferences& preferences, const std::string& key) {
    if (const auto boolean = preferences.boolean(key)) {
        return *boolean;
    }
    if (const auto texts = preferences.texts(key)) {
        Json list = Json::array();
        for (const auto& text : *texts) {
            list.push_back(escaped(text));
        }
        return list;
    }
    if (const auto date = preferences.date(key)) {
        return date->time_since_epoch().count();
    }
    if (const auto numbers = preferences.numbers(key)) {
        return *numbers;
    }
    return nullptr;
}

}  // namespace

int setPreference(const Arguments& arguments) {
    if (arguments.size() < 2) {
        return misused;
    }
    const auto path = settingsPath(arguments[0]);
    if (!path) {
        return misused;
    }
    LinuxFileStore files;
    LinuxPreferences preferences(*path, files);
    return setValue(preferences, arguments[1], Arguments(arguments.begin() + 2, arguments.end()));
}

int preference(const Arguments& arguments) {
    if (arguments.size() != 2) {
        return misused;
    }
    const auto path = settingsPath(arguments[0]);
    if (!path) {
        return misused;
    }
    LinuxFileStore files;
    const LinuxPreferences preferences(*path, files);
    std::puts(value(preferences, arguments[1]).dump().c_str());
    return succeeded;
}

}  // namespace kestrune::probe
