#include "platform/linux/DesktopEntry.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"
#include "platform/linux/DesktopEntryText.h"

namespace kestrune {

namespace {

constexpr std::array launchers{"bash", "bwrap", "dash", "electron", "env",  "flatpak",  "gapplication",
                               "gjs",  "java",  "mono", "node",     "perl", "pkexec",   "python",
                               "ruby", "sh",    "snap", "sudo",     "wine", "xdg-open", "zsh"};

struct Fields {
    std::string type;
    std::string name;
    std::string exec;
    std::string tryExec;
    std::string windowClass;
    std::string icon;
    std::string translatedName;
    std::size_t translation = 0;  ///< its place among the languages
    bool isShown = true;
    bool isDeleted = false;
};

// Undoes the escapes of a string value: \s \n \t \r \\.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        ++i;
        switch (value[i]) {
            case 's':
                text += ' ';
                break;
            case 'n':
                text += '\n';
                break;
            case 't':
                text += '\t';
                break;
            case 'r':
                text += '\r';
                break;
            case '\\':
                text += '\\';
                break;
            default:
                text += '\\';
                text += value[i];
                break;
        }
    }
    return text;
}

// Keeps value when it is a translation of the name into a better language than the one kept so far.
void readTranslation(std::string_view key, const std::string& value, const std::vector<std::string>& languages,
                     Fields& fields) {
    constexpr std::string_view prefix = "Name[";
    if (!key.starts_with(prefix) || key.back() != ']' || value.empty() || !isValidUtf8(value)) {
        return;
    }
    const std::string_view language = key.substr(prefix.size(), key.size() - prefix.size() - 1);
    const auto place =
        static_cast<std::size_t>(std::find(languages.begin(), languages.end(), language) - languages.begin());
    if (place < languages.size() && (fields.translatedName.empty() || place < fields.translation)) {
        fields.translatedName = value;
        fields.translation = place;
    }
}

Fields readFields(std::string_view text, const std::vector<std::string>& languages) {
    Fields fields;
    const std::array<std::pair<std::string_view, std::string*>, 6> kept{{{"Type", &fields.type},
                                                                         {"Name", &fields.name},
                                                                         {"Exec", &fields.exec},
                                                                         {"TryExec", &fields.tryExec},
                                                                         {"Icon", &fields.icon},
                                                                         {"StartupWMClass", &fields.windowClass}}};
    bool isMainGroup = false;
    for (const std::string& raw : split(text, '\n')) {
        const std::string_view line = withoutBlanksAround(raw);
        if (!line.empty() && line.front() == '[') {
            isMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!isMainGroup || equals == std::string_view::npos || equals == 0 || line.front() == '#') {
            continue;
        }
        const std::string_view key = withoutBlanksAround(line.substr(0, equals));
        const std::string value = unescaped(withoutBlanksAround(line.substr(equals + 1)));
        for (const auto& [name, field] : kept) {
            if (key == name) {
                *field = value;
            }
        }
        readTranslation(key, value, languages, fields);
        fields.isShown = fields.isShown && !(key == "NoDisplay" && value == "true");
        fields.isDeleted = fields.isDeleted || (key == "Hidden" && value == "true");
    }
    return fields;
}

// The words of an Exec line: blanks separate, double quotes hold together, a backslash takes the next character.
std::vector<std::string> commandWords(std::string_view line) {
    std::vector<std::string> words;
    std::string word;
    bool isQuoted = false;
    bool hasWord = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '"') {
            isQuoted = !isQuoted;
            hasWord = true;
        } else if (c == '\\' && i + 1 < line.size()) {
            word += line[++i];
            hasWord = true;
        } else if (c == ' ' && !isQuoted) {
            if (hasWord) {
                words.push_back(std::exchange(word, {}));
            }
            hasWord = false;
        } else {
            word += c;
            hasWord = true;
        }
    }
    if (hasWord) {
        words.push_back(word);
    }
    return words;
}

bool isAssignment(const std::string& word) {
    const std::size_t equals = word.find('=');
    return equals != std::string::npos && word.find('/') > equals;
}

// The program an Exec line is about, and whether words of its own follow. A package runner names it in --command.
struct Command {
    std::string program;
    bool hasOwnArguments = false;
};

Command commandOf(const std::string& exec) {
    constexpr std::string_view packagedCommand = "--command=";
    const std::vector<std::string> words = commandWords(exec);
    for (const std::string& word : words) {
        if (word.starts_with(packagedCommand)) {
            return {lastPathComponent(word.substr(packagedCommand.size())), false};
        }
    }
    auto word = words.begin();
    while (word != words.end() && (isLauncher(lastPathComponent(*word)) || isAssignment(*word) ||
                                   (word != words.begin() && !word->empty() && word->front() == '-'))) {
        ++word;
    }
    if (word == words.end()) {
        return {};
    }
    const bool hasOwnArguments =
        std::any_of(word + 1, words.end(), [](const std::string& rest) { return rest.empty() || rest.front() != '%'; });
    return {lastPathComponent(*word), hasOwnArguments};
}

}  // namespace

bool isLauncher(std::string_view program) {
    // Interpreters carry their version in the name.
    const std::string_view plain = program.substr(0, program.find_last_not_of("0123456789.") + 1);
    return std::any_of(launchers.begin(), launchers.end(), [plain](std::string_view name) { return name == plain; });
}

std::vector<std::string> languagesOf(std::string_view locale) {
    // lang_COUNTRY.ENCODING@MODIFIER
    const std::size_t at = locale.find('@');
    const std::string modifier(at == std::string_view::npos ? std::string_view{} : locale.substr(at));
    const std::string territory(locale.substr(0, std::min(locale.find('.'), at)));
    const std::string language = territory.substr(0, territory.find('_'));
    if (language.empty() || language == "C" || language == "POSIX") {
        return {};
    }
    std::vector<std::string> languages;
    for (const std::string& plain : {territory, language}) {
        for (const std::string& name : {plain + modifier, plain}) {
            if (std::find(languages.begin(), languages.end(), name) == languages.end()) {
                languages.push_back(name);
            }
        }
    }
    return languages;
}

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, const std::vector<std::string>& languages) {
    const Fields fields = readFields(text, languages);
    if (fields.type != "Application" || fields.name.empty() || fields.isDeleted) {
        return std::nullopt;
    }
    const Command command = commandOf(fields.exec);
    DesktopEntry entry;
    entry.name = fields.name;
    entry.localizedName = fields.translatedName.empty() ? fields.name : fields.translatedName;
    entry.icon = fields.icon;
    entry.windowClass = fields.windowClass;
    entry.hasOwnArguments = command.hasOwnArguments;
    entry.isShown = fields.isShown;
    for (const std::string& program : {lastPathComponent(fields.tryExec), command.program, fields.windowClass}) {
        const bool isKnown = std::find(entry.programs.begin(), entry.programs.end(), program) != entry.programs.end();
        if (!program.empty() && !isKnown && !isLauncher(program)) {
            entry.programs.push_back(program);
        }
    }
    return entry;
}

}  // namespace kestrune
