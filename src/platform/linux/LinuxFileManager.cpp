#include "platform/linux/LinuxFileManager.h"

#include <unistd.h>

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "platform/linux/LinuxAccount.h"
#include "platform/linux/LinuxFileStore.h"

namespace kestrune::LinuxFileManager {

namespace {

// They all take "-q", and the desktop starts them again when a folder is opened.
constexpr std::array<std::string_view, 4> known{"nautilus", "nemo", "thunar", "caja"};

constexpr std::size_t longestList = std::size_t{1} << 20U;

std::string variableOr(const char* name, const char* standard) {
    std::string value = LinuxAccount::variable(name);
    return value.empty() ? standard : value;
}

std::string absoluteOr(const char* name, std::string standard) {
    std::string value = LinuxAccount::absoluteVariable(name);
    return value.empty() ? std::move(standard) : value;
}

// The file manager an id such as "org.gnome.Nautilus.desktop" or "thunar-folder-handler.desktop" stands for; empty for
// any other program.
std::string_view managerOf(const std::string& id) {
    std::string words = lowerCased(id);
    std::replace(words.begin(), words.end(), '-', '.');
    const std::vector<std::string> parts = split(words, '.');
    const auto* const found = std::find_if(known.begin(), known.end(), [&parts](std::string_view manager) {
        return std::find(parts.begin(), parts.end(), manager) != parts.end();
    });
    return found == known.end() ? std::string_view{} : *found;
}

}  // namespace

std::vector<std::string> preferredForFolders(std::string_view text) {
    constexpr std::string_view key = "inode/directory=";
    std::vector<std::string> ids;
    bool isDefaults = false;
    for (const std::string& line : split(text, '\n')) {
        if (line.starts_with('[')) {
            isDefaults = line.starts_with("[Default Applications]");
        } else if (isDefaults && line.starts_with(key)) {
            for (std::string& id : split(std::string_view(line).substr(key.size()), ';')) {
                ids.push_back(std::move(id));
            }
        }
    }
    std::erase(ids, std::string());
    return ids;
}

Places standardPlaces() {
    const std::string home = LinuxAccount::homeDirectory();
    std::vector<std::string> folders{absoluteOr("XDG_CONFIG_HOME", home + "/.config")};
    for (const std::string& folder : split(variableOr("XDG_CONFIG_DIRS", "/etc/xdg"), ':')) {
        folders.push_back(folder);
    }
    folders.push_back(absoluteOr("XDG_DATA_HOME", home + "/.local/share") + "/applications");
    for (const std::string& folder : split(variableOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ':')) {
        folders.push_back(folder + "/applications");
    }
    std::vector<std::string> names;
    for (const std::string& desktop : split(lowerCased(LinuxAccount::variable("XDG_CURRENT_DESKTOP")), ':')) {
        if (!desktop.empty()) {
            names.push_back("/" + desktop + "-mimeapps.list");
        }
    }
    names.emplace_back("/mimeapps.list");
    Places places{{}, "/usr/bin"};
    for (const std::string& folder : folders) {
        if (folder.starts_with('/')) {
            for (const std::string& name : names) {
                places.choices.push_back(folder + name);
            }
        }
    }
    return places;
}

ToolCommand quitCommand(const Places& places) {
    const auto command = [&places](std::string_view manager) {
        return ToolCommand{places.programs + "/" + std::string(manager), {"-q"}};
    };
    const auto isThere = [&command](std::string_view manager) {
        return !manager.empty() && ::access(command(manager).executable.c_str(), X_OK) == 0;
    };
    for (const std::string& choice : places.choices) {
        for (const std::string& id :
             preferredForFolders(LinuxFileStore().read(choice, longestList).bytes.value_or(""))) {
            if (isThere(managerOf(id))) {
                return command(managerOf(id));
            }
        }
    }
    const auto* const first = std::find_if(known.begin(), known.end(), isThere);
    return command(first == known.end() ? known.front() : *first);
}

}  // namespace kestrune::LinuxFileManager
