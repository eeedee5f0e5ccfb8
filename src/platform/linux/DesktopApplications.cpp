#include "platform/linux/DesktopApplications.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/Text.h"
#include "platform/linux/ApplicationNames.h"

namespace kestrune {

namespace {

const std::string& nameOf(const DesktopEntry& entry) {
    return isValidUtf8(entry.localizedName) ? entry.localizedName : entry.id;
}

}  // namespace

DesktopApplications::DesktopApplications(DesktopEntryFolders folders, IconFiles icons)
    : m_folders(std::move(folders)), m_icons(std::move(icons)) {
}

bool DesktopApplications::refresh() {
    if (!m_folders.refresh()) {
        return false;
    }
    m_index = DesktopEntryIndex(m_folders.takeEntries());
    // Whatever was installed brought its icon along.
    m_icons.forget();
    return true;
}

ApplicationIdentity DesktopApplications::identityOf(const SourcedApplication& application,
                                                    const ProcessFacts& process) const {
    const std::vector<std::string> programs = programsOf(process);
    const DesktopEntry* const entry = m_index.find(application.hints, programs);
    if (entry != nullptr) {
        return {nameOf(*entry), entry->id, {entry->icon}};
    }
    ApplicationIdentity identity;
    for (const std::string& name : {productAt(process.executable), application.name, programs.front()}) {
        if (identity.name.empty()) {
            identity.name = name;
        }
    }
    std::transform(application.hints.begin(), application.hints.end(), std::back_inserter(identity.iconNames),
                   [](const std::string& hint) { return lowerCased(hint); });
    return identity;
}

std::string DesktopApplications::nameOfProgram(const std::string& executable) const {
    const DesktopEntry* const entry = m_index.find({}, {lastPathComponent(executable)});
    return entry == nullptr ? std::string{} : nameOf(*entry);
}

std::string DesktopApplications::pictureOf(const std::vector<std::string>& iconNames) {
    for (const std::string& name : iconNames) {
        if (const std::string& picture = m_icons.find(name); !picture.empty()) {
            return picture;
        }
    }
    return {};
}

}  // namespace kestrune
