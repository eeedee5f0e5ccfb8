#include "platform/linux/LinuxXdgFolders.h"

#include "base/Text.h"
#include "platform/linux/LinuxAccount.h"

namespace kestrune::LinuxXdgFolders {

std::vector<std::string> data(const std::string& home) {
    const std::string own = LinuxAccount::absoluteVariable("XDG_DATA_HOME");
    const std::string shared = LinuxAccount::variable("XDG_DATA_DIRS");
    std::vector<std::string> folders{own.empty() ? home + "/.local/share" : own};
    for (const std::string& folder : split(shared.empty() ? "/usr/local/share:/usr/share" : shared, ':')) {
        // The rules for these folders ignore relative paths.
        if (folder.starts_with('/')) {
            folders.push_back(folder);
        }
    }
    folders.push_back(home + "/.local/share/flatpak/exports/share");
    folders.emplace_back("/var/lib/flatpak/exports/share");
    folders.emplace_back("/var/lib/snapd/desktop");
    return folders;
}

}  // namespace kestrune::LinuxXdgFolders
