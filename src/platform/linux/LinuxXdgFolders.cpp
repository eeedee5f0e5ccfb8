#include "platform/linux/LinuxXdgFolders.h"

#include <cstdlib>

#include "base/Text.h"

namespace kestrune::LinuxXdgFolders {

namespace {

std::string environmentOr(const char* name, const std::string& otherwise) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

}  // namespace

std::vector<std::string> data(const std::string& home) {
    std::vector<std::string> folders{environmentOr("XDG_DATA_HOME", home + "/.local/share")};
    for (const std::string& folder : split(environmentOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ':')) {
        folders.push_back(folder);
    }
    folders.push_back(home + "/.local/share/flatpak/exports/share");
    folders.emplace_back("/var/lib/flatpak/exports/share");
    folders.emplace_back("/var/lib/snapd/desktop");
    return folders;
}

}  // namespace kestrune::LinuxXdgFolders
