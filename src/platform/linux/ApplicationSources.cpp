#include "platform/linux/ApplicationSource.h"

#include <unistd.h>

#include <algorithm>
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
        static_cast<void>(folders->refresh());
        const std::vector<DesktopEntry>& entries = folders->entries();
        return std::any_of(entries.begin(), entries.end(), [name = lowerCased(id)](const DesktopEntry& entry) {
            return entry.isShown && lowerCased(entry.id) == name;
        });
    };
}

std::unique_ptr<KWinSource> kwinSource() {
    const bool isWayland =
        LinuxAccount::variable("XDG_SESSION_TYPE") == "wayland" || !LinuxAccount::variable("WAYLAND_DISPLAY").empty();
    const std::string ownFolder = LinuxAccount::absoluteVariable("XDG_RUNTIME_DIR");
    return std::make_unique<KWinSource>(isWayland, ownFolder.empty() ? "/tmp" : ownFolder);
}

}  // namespace

SourcedApplication& applicationOf(std::int32_t pid, std::vector<SourcedApplication>& applications) {
    const auto known = std::find_if(applications.begin(), applications.end(),
                                    [pid](const SourcedApplication& other) { return other.pid == pid; });
    if (known != applications.end()) {
        return *known;
    }
    SourcedApplication& added = applications.emplace_back();
    added.pid = pid;
    return added;
}

void addHints(const std::vector<std::string>& more, std::vector<std::string>& hints) {
    for (const std::string& hint : more) {
        if (std::find(hints.begin(), hints.end(), hint) == hints.end()) {
            hints.push_back(hint);
        }
    }
}

std::vector<std::unique_ptr<ApplicationSource>> makeApplicationSources() {
    std::vector<std::unique_ptr<ApplicationSource>> sources;
    sources.push_back(std::make_unique<XcbApplicationSource>());
    sources.push_back(std::make_unique<SwaySource>(LinuxAccount::variable("SWAYSOCK")));
    sources.push_back(kwinSource());
    sources.push_back(std::make_unique<SystemdScopeSource>("/sys/fs/cgroup", "/proc", ::getuid(), shownInMenus()));
    sources.push_back(std::make_unique<GApplicationSource>("/proc"));
    return sources;
}

}  // namespace kestrune
