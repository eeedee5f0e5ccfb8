#include "platform/linux/ApplicationSource.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/linux/DesktopEntryFolders.h"
#include "platform/linux/GApplicationSource.h"
#include "platform/linux/KWinSource.h"
#include "platform/linux/LinuxAccount.h"
#include "platform/linux/SwaySource.h"
#include "platform/linux/SystemdScopeSource.h"
#include "platform/linux/XcbApplicationSource.h"

namespace kestrune {

namespace {

// The folders are read at the first question, which only desktops that hide their windows lead to.
SystemdScopeSource::IsShown shownInMenus() {
    auto folders = std::make_shared<DesktopEntryFolders>(DesktopEntryFolders::standard(LinuxAccount::homeDirectory()));
    return [folders](const std::string& id) {
        (void)folders->refresh();
        const std::vector<DesktopEntry>& entries = folders->entries();
        return std::any_of(entries.begin(), entries.end(), [name = lowerCased(id)](const DesktopEntry& entry) {
            return entry.isShown && lowerCased(entry.id) == name;
        });
    };
}

std::string valueOf(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr ? value : "";
}

std::unique_ptr<KWinSource> kwinSource() {
    const bool isWayland = valueOf("XDG_SESSION_TYPE") == "wayland" || !valueOf("WAYLAND_DISPLAY").empty();
    const std::string ownFolder = LinuxAccount::absoluteVariable("XDG_RUNTIME_DIR");
    return std::make_unique<KWinSource>(isWayland, ownFolder.empty() ? "/tmp" : ownFolder);
}

}  // namespace

std::vector<std::unique_ptr<ApplicationSource>> makeApplicationSources() {
    std::vector<std::unique_ptr<ApplicationSource>> sources;
    sources.push_back(std::make_unique<XcbApplicationSource>());
    sources.push_back(std::make_unique<SwaySource>(valueOf("SWAYSOCK")));
    sources.push_back(kwinSource());
    sources.push_back(std::make_unique<SystemdScopeSource>("/sys/fs/cgroup", "/proc", ::getuid(), shownInMenus()));
    sources.push_back(std::make_unique<GApplicationSource>("/proc"));
    return sources;
}

}  // namespace kestrune
