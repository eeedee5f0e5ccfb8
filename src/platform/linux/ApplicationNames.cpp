#include "platform/linux/ApplicationNames.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/Text.h"

namespace kestrune {

namespace {

struct KnownFolder {
    std::string_view start;  ///< of a path component in lower case; no letter may follow
    std::string_view name;
};

// Programs that run inside a virtual machine or under a helper's name: their folder tells what they are.
constexpr std::array knownFolders{
    KnownFolder{"/android-studio", "Android Studio"},
    KnownFolder{"/androidstudio", "Android Studio"},
    KnownFolder{"/idea-iu", "IntelliJ IDEA"},
    KnownFolder{"/idea-ic", "IntelliJ IDEA"},
    KnownFolder{"/idea-u", "IntelliJ IDEA"},
    KnownFolder{"/idea-c", "IntelliJ IDEA"},
    KnownFolder{"/intellij-idea", "IntelliJ IDEA"},
    KnownFolder{"/intellijidea", "IntelliJ IDEA"},
    KnownFolder{"/idea/jbr", "IntelliJ IDEA"},
    KnownFolder{"/idea/bin", "IntelliJ IDEA"},
    KnownFolder{"/pycharm", "PyCharm"},
    KnownFolder{"/webstorm", "WebStorm"},
    KnownFolder{"/clion", "CLion"},
    KnownFolder{"/goland", "GoLand"},
    KnownFolder{"/phpstorm", "PhpStorm"},
    KnownFolder{"/rubymine", "RubyMine"},
    KnownFolder{"/datagrip", "DataGrip"},
    KnownFolder{"/google/chrome", "Google Chrome"},
    KnownFolder{"/lm-studio", "LM Studio"},
    KnownFolder{"/lm_studio", "LM Studio"},
    KnownFolder{"/lmstudio", "LM Studio"},
};

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

bool isBelow(const std::string& path, const KnownFolder& folder) {
    for (std::size_t at = path.find(folder.start); at != std::string::npos; at = path.find(folder.start, at + 1)) {
        const std::size_t end = at + folder.start.size();
        if (end == path.size() || !isLetter(path[end])) {
            return true;
        }
    }
    return false;
}

// The script or module an interpreter was started with; empty for "-c" and for none.
std::string scriptOf(const std::vector<std::string>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "-c" || argument == "-") {
            return {};
        }
        if (argument == "-m") {
            return i + 1 < arguments.size() ? arguments[i + 1] : std::string{};
        }
        if (argument == "-X" || argument == "-W") {
            ++i;
        } else if (!argument.starts_with('-')) {
            return argument;
        }
    }
    return {};
}

// ComfyUI has no executable of its own: it is "main.py" in its folder, or the module or command "comfyui".
bool isComfyUI(const std::string& script, const std::string& workingFolder) {
    constexpr std::string_view product = "comfyui";
    const std::string file = lowerCased(lastPathComponent(script));
    if (file == "main.py") {
        const std::string path = script.starts_with('/') ? script : workingFolder + "/" + script;
        const std::string folder = standardizedPath(path.substr(0, path.rfind('/')));
        return lowerCased(lastPathComponent(folder)).starts_with(product);
    }
    return file.starts_with(product);
}

std::string executableOf(const ProcessFacts& process) {
    if (!process.executable.empty()) {
        return process.executable;
    }
    return process.arguments.empty() ? std::string{} : process.arguments.front();
}

}  // namespace

std::string productAt(std::string_view executable) {
    const std::string path = lowerCased(executable);
    const auto known = std::find_if(knownFolders.begin(), knownFolders.end(),
                                    [&path](const KnownFolder& folder) { return isBelow(path, folder); });
    return known == knownFolders.end() ? std::string{} : std::string(known->name);
}

std::vector<std::string> programsOf(const ProcessFacts& process) {
    std::vector<std::string> programs{lastPathComponent(executableOf(process))};
    if (!process.arguments.empty()) {
        programs.push_back(lastPathComponent(process.arguments.front()));
    }
    if (isLauncher(programs.front())) {
        programs.push_back(lastPathComponent(scriptOf(process.arguments)));
    }
    return programs;
}

void ApplicationNames::add(const DesktopEntry& entry) {
    if (!entry.isShown) {
        return;
    }
    for (const std::string& program : entry.programs) {
        const auto [known, isNew] = m_byProgram.try_emplace(program, Named{entry.name, entry.hasOwnArguments});
        if (!isNew && known->second.hasOwnArguments && !entry.hasOwnArguments) {
            known->second = {entry.name, false};
        }
    }
}

std::string ApplicationNames::nameOf(const ProcessFacts& process) const {
    if (std::string name = productAt(executableOf(process)); !name.empty()) {
        return name;
    }
    const std::vector<std::string> programs = programsOf(process);
    if (programs.front().starts_with("python") && isLauncher(programs.front()) &&
        isComfyUI(scriptOf(process.arguments), process.workingFolder)) {
        return "ComfyUI";
    }
    for (const std::string& program : programs) {
        if (std::string name = lookUp(program); !name.empty()) {
            return name;
        }
    }
    return programs.front();
}

std::string ApplicationNames::lookUp(const std::string& program) const {
    const auto known = m_byProgram.find(program);
    return known == m_byProgram.end() ? std::string{} : known->second.name;
}

}  // namespace kestrune
