#include "platform/linux/DesktopApplications.h"

#include <utility>
#include <vector>

#include "base/Text.h"
#include "platform/linux/ApplicationNames.h"

namespace kestrune {

DesktopApplications::DesktopApplications(DesktopEntryFolders folders, IconFiles icons)
    : m_folders(std::move(folders)), m_icons(std::move(icons)) {
}

bool DesktopApplications::refresh() {
    if (!m_folders.refresh()) {
        return false;
    }
    m_index = DesktopEntryIndex(m_folders.entries());
    // Whatever was installed brought its icon along.
    m_icons.forget();
    return true;
}

ApplicationIdentity DesktopApplications::identityOf(const SourcedApplication& application,
                                                    const ProcessFacts& process) {
    const std::vector<std::string> programs = programsOf(process);
    const DesktopEntry* const entry = m_index.find(application.hints, programs);
    if (entry != nullptr) {
        const std::string& name = isValidUtf8(entry->localizedName) ? entry->localizedName : entry->id;
        return {name, entry->id, m_icons.find(entry->icon)};
    }
    ApplicationIdentity identity;
    for (const std::string& name : {productAt(process.executable), application.name, programs.front()}) {
        if (identity.name.empty()) {
            identity.name = name;
        }
    }
    for (const std::string& hint : application.hints) {
        if (identity.icon.empty()) {
            identity.icon = m_icons.find(lowerCased(hint));
        }
    }
    return identity;
}

}  // namespace kestrune
