#include "platform/linux/SystemdUnit.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <vector>

#include "base/Text.h"

namespace kestrune {

namespace {

bool takePrefix(std::string_view& text, std::string_view prefix) {
    const bool has = text.starts_with(prefix);
    text.remove_prefix(has ? prefix.size() : 0);
    return has;
}

bool takeSuffix(std::string_view& text, std::string_view suffix) {
    const bool has = text.ends_with(suffix);
    text.remove_suffix(has ? suffix.size() : 0);
    return has;
}

// "\x2d" back to "-"; text that is not escaped that way stays.
std::string unescaped(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned char byte = 0;
        const bool isEscaped = text.size() >= 4 && text.substr(0, 2) == "\\x";
        const char* const end = isEscaped ? text.data() + 4 : nullptr;
        if (isEscaped && std::from_chars(text.data() + 2, end, byte, 16).ptr == end) {
            plain += static_cast<char>(byte);
            text.remove_prefix(4);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

// An id is part of a file name: it leads nowhere else and can be shown.
bool isIdentifier(const std::string& text) {
    constexpr std::size_t longestFileName = 255;
    const auto isUnwanted = [](char c) { return c == '/' || (c >= 0 && c < ' ') || c == '\x7f'; };
    return !text.empty() && text.front() != '.' && text.size() <= longestFileName && isValidUtf8(text) &&
           std::none_of(text.begin(), text.end(), isUnwanted);
}

// [<launcher>-]<id>, and for scopes "-<random>" behind it.
bool readNames(SystemdUnit& unit, std::string_view name, bool hasRandom) {
    std::vector<std::string> pieces = split(name, '-');
    if (hasRandom) {
        pieces.pop_back();
    }
    if (pieces.empty() || pieces.size() > 2) {
        return false;
    }
    unit.application = unescaped(pieces.back());
    unit.launcher = pieces.size() == 2 ? unescaped(pieces.front()) : std::string();
    return isIdentifier(unit.application);
}

// <snap>.<command>-<random>; snapd calls the .desktop file "<snap>_<command>".
bool readSnap(SystemdUnit& unit, std::string_view name) {
    const std::vector<std::string> pieces = split(name.substr(0, name.find('-')), '.');
    if (pieces.size() != 2 || pieces.front().empty() || pieces.back().empty()) {
        return false;
    }
    unit.launcher = "snap";
    unit.application = pieces.front() + "_" + pieces.back();
    return isIdentifier(unit.application);
}

// :<connection>-<bus name>@<instance>; an application that the bus starts has its id for a name.
bool readBusName(SystemdUnit& unit, std::string_view name) {
    const std::size_t dash = name.find('-');
    const std::size_t at = name.find('@');
    if (dash == std::string_view::npos || at == std::string_view::npos || at < dash) {
        return false;
    }
    unit.launcher = "dbus";
    unit.application = unescaped(name.substr(dash + 1, at - dash - 1));
    return isIdentifier(unit.application);
}

bool readDesktopUnit(SystemdUnit& unit, std::string_view name) {
    if (takeSuffix(name, ".scope")) {
        return readNames(unit, name, true);
    }
    const bool isService = takeSuffix(name, ".service");
    const std::size_t at = name.find('@');
    unit.isAutostart = at != std::string_view::npos && name.substr(at + 1) == "autostart";
    return isService && readNames(unit, name.substr(0, at), false);
}

}  // namespace

std::optional<SystemdUnit> parseSystemdUnit(std::string_view name) {
    SystemdUnit unit;
    const bool isRead = takePrefix(name, "app-")     ? readDesktopUnit(unit, name)
                        : takePrefix(name, "snap.")  ? takeSuffix(name, ".scope") && readSnap(unit, name)
                        : takePrefix(name, "dbus-:") ? takeSuffix(name, ".service") && readBusName(unit, name)
                                                     : false;
    return isRead ? std::optional(unit) : std::nullopt;
}

std::string systemdUnitName(std::string_view cgroup) {
    for (const std::string& line : split(cgroup, '\n')) {
        if (std::string_view path = line; takePrefix(path, "0::/")) {
            return lastPathComponent(path);
        }
    }
    return {};
}

}  // namespace kestrune
