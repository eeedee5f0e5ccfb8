#include "platform/linux/AutostartEntry.h"

#include <utility>
#include <vector>

#include "base/Text.h"
#include "platform/ProgramPath.h"
#include "platform/linux/DesktopEntryText.h"

namespace kestrune::AutostartEntry {

namespace {

constexpr std::string_view mainGroup = "[Desktop Entry]";
constexpr std::string_view execKey = "Exec";
constexpr std::string_view tryExecKey = "TryExec";
constexpr std::string_view hiddenKey = "Hidden";
constexpr std::string_view enabledKey = "X-GNOME-Autostart-enabled";

// Undoes the escapes \s and \\ of a string value; the others stand for characters that no path of ours has.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char next = i + 1 < value.size() ? value[i + 1] : '\0';
        if (value[i] == '\\' && (next == '\\' || next == 's')) {
            text += next == 's' ? ' ' : '\\';
            ++i;
        } else {
            text += value[i];
        }
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string value;
    for (const char c : text) {
        value += c == '\\' ? "\\\\" : std::string(1, c);
    }
    return value;
}

// The command line that runs path, by the quoting rules of the Exec key.
std::string commandLine(std::string_view path) {
    constexpr std::string_view escapedInQuotes = "\"`$\\";
    std::string quoted = "\"";
    for (const char c : path) {
        if (escapedInQuotes.find(c) != std::string_view::npos) {
            quoted += '\\';
        }
        quoted += c;
        if (c == '%') {
            quoted += c;
        }
    }
    quoted += '"';
    // GLib and systemd look for the program before they turn "%%" into "%", and so would not find it.
    return path.find('%') == std::string_view::npos ? quoted : "/usr/bin/nice -n 0 " + quoted;
}

struct Line {
    std::string text;
    bool isOfMainGroup = false;
    std::string_view key = {};    ///< of text; empty for what is no key
    std::string_view value = {};  ///< of text
};

// The lines, the group's own header excluded from the group.
template <typename Visit>
void forEachLine(std::string_view text, Visit visit) {
    bool isOfMainGroup = false;
    for (std::string& raw : split(text, '\n')) {
        Line line{std::move(raw)};
        const std::string_view content = withoutBlanksAround(line.text);
        const std::size_t equals = content.find('=');
        if (content.starts_with('[')) {
            isOfMainGroup = content == mainGroup;
        } else if (isOfMainGroup && !content.starts_with('#') && equals != std::string_view::npos) {
            line.isOfMainGroup = true;
            line.key = withoutBlanksAround(content.substr(0, equals));
            line.value = withoutBlanksAround(content.substr(equals + 1));
        }
        visit(line, content);
    }
}

// text with key set to value: where the key stands, else right below the group's header.
std::string withKey(std::string_view text, std::string_view key, const std::string& value) {
    const std::string wanted = std::string(key) + "=" + value;
    std::vector<std::string> lines;
    std::size_t header = 0;
    bool isSet = false;
    forEachLine(text, [&](const Line& line, std::string_view content) {
        const bool isKey = line.isOfMainGroup && line.key == key;
        isSet = isSet || isKey;
        lines.push_back(isKey ? wanted : line.text);
        if (header == 0 && content == mainGroup) {
            header = lines.size();
        }
    });
    if (!isSet && header > 0) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(header), wanted);
    }
    return joined(lines, "\n");
}

std::string withoutPrograms(std::string_view text) {
    std::vector<std::string> lines;
    forEachLine(text, [&lines](const Line& line, std::string_view) {
        const bool namesProgram = line.isOfMainGroup && (line.key == execKey || line.key == tryExecKey);
        if (!namesProgram) {
            lines.push_back(line.text);
        }
    });
    return joined(lines, "\n");
}

std::string entry(const std::string& path) {
    return std::string(mainGroup) +
           "\n"
           "Type=Application\n"
           "Name=Kestrune\n"
           "Icon=com.torvandelsyn.kestrune\n"
           "Exec=" +
           escaped(commandLine(path)) + "\nTryExec=" + escaped(path) +
           "\n"
           "Terminal=false\n"
           "StartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

}  // namespace

std::optional<std::string> textFor(const std::string& executable) {
    return isPlainProgramPath(executable) ? std::optional(entry(executable)) : std::nullopt;
}

Reading read(std::string_view text) {
    Reading reading;
    forEachLine(text, [&reading](const Line& line, std::string_view content) {
        reading.isEntry = reading.isEntry || content == mainGroup;
        if (!line.isOfMainGroup) {
            return;
        }
        if (line.key == tryExecKey) {
            reading.tryExec = unescaped(line.value);
        }
        reading.isSwitchedOff = reading.isSwitchedOff || (line.key == hiddenKey && line.value == "true") ||
                                (line.key == enabledKey && line.value == "false");
    });
    return reading;
}

bool isOurs(std::string_view text) {
    return withoutPrograms(text) == withoutPrograms(entry("/"));
}

std::string switched(std::string_view text, bool on) {
    return on ? withKey(withKey(text, hiddenKey, "false"), enabledKey, "true") : withKey(text, hiddenKey, "true");
}

std::string redirected(std::string_view text, const std::string& executable) {
    return withKey(withKey(text, execKey, escaped(commandLine(executable))), tryExecKey, escaped(executable));
}

}  // namespace kestrune::AutostartEntry
