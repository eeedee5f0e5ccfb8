#include "platform/linux/PressureLevel.h"

#include <charconv>
#include <system_error>

namespace kestrune {

namespace {

constexpr double warningPercent = 10;
constexpr double criticalPercent = 10;

// The avg10 value of the line that starts with name.
std::optional<double> avg10(std::string_view text, std::string_view name) {
    constexpr std::string_view key = " avg10=";
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(line.size() == text.size() ? line.size() : line.size() + 1);
        if (line.substr(0, name.size()) != name || line.substr(name.size(), key.size()) != key) {
            continue;
        }
        line.remove_prefix(name.size() + key.size());
        double value = 0;
        const std::errc error = std::from_chars(line.data(), line.data() + line.size(), value).ec;
        return error == std::errc{} ? std::optional(value) : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

std::optional<PressureReading> parsePressure(std::string_view text) {
    const std::optional<double> some = avg10(text, "some");
    if (!some) {
        return std::nullopt;
    }
    return PressureReading{*some, avg10(text, "full").value_or(0)};
}

PressureLevels pressureLevels(const PressureReading& reading, bool triggered) {
    PressureLevels levels;
    levels.critical = reading.fullAvg10 >= criticalPercent;
    levels.warning = !levels.critical && (triggered || reading.someAvg10 >= warningPercent);
    levels.normal = !levels.critical && !levels.warning;
    return levels;
}

}  // namespace kestrune
