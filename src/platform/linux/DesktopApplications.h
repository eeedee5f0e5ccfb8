#pragma once

#include <string>
#include <vector>

#include "platform/linux/ApplicationSource.h"
#include "platform/linux/DesktopEntryFolders.h"
#include "platform/linux/DesktopEntryIndex.h"
#include "platform/linux/IconFiles.h"
#include "platform/linux/ProcessFacts.h"

namespace kestrune {

/// How the desktop shows an application; each may be empty.
struct ApplicationIdentity {
    std::string name;
    std::string identifier;              ///< of its desktop entry
    std::vector<std::string> iconNames;  ///< as pictureOf() takes them

    bool operator==(const ApplicationIdentity&) const = default;
};

/// The applications that are installed, as their .desktop files tell. One thread at a time.
class DesktopApplications final {
public:
    DesktopApplications(DesktopEntryFolders folders, IconFiles icons);

    /// Looks for changes. True when identityOf() may answer something else than before.
    [[nodiscard]] bool refresh();

    /// What to call a running application. Without a desktop entry: the product its folder tells, its own name, or that
    /// of its executable.
    [[nodiscard]] ApplicationIdentity identityOf(const SourcedApplication& application,
                                                 const ProcessFacts& process) const;

    /// The name of the desktop entry that starts the program with this executable; empty when there is none.
    [[nodiscard]] std::string nameOfProgram(const std::string& executable) const;

    /// Absolute path of the first of these icons that there is a picture of; empty when there is none.
    [[nodiscard]] std::string pictureOf(const std::vector<std::string>& iconNames);

private:
    DesktopEntryFolders m_folders;
    DesktopEntryIndex m_index;
    IconFiles m_icons;
};

}  // namespace kestrune
