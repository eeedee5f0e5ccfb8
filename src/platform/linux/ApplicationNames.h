#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ProcessFacts.h"

namespace kestrune {

/// File names that may be the program a process runs, most trusted first: of its executable, of its first argument,
/// and of the script an interpreter was started with.
[[nodiscard]] std::vector<std::string> programsOf(const ProcessFacts& process);

/// The product that programs below the folder of executable belong to, for those that run inside a virtual machine or
/// under a helper's name; else empty.
[[nodiscard]] std::string productAt(std::string_view executable);

/// Program names to the names their .desktop files give them.
class ApplicationNames final {
public:
    /// The first entry that names a program wins, unless a later one starts it without arguments of its own and the
    /// first did not: "Steam" before a game that Steam starts. Entries that menus do not show name nothing.
    void add(const DesktopEntry& entry);

    /// The name a user knows process by: from the table of programs that run under another program's name, from its
    /// .desktop file, else the file name of its executable. Empty when nothing is known.
    [[nodiscard]] std::string nameOf(const ProcessFacts& process) const;

private:
    struct Named {
        std::string name;
        bool hasOwnArguments = false;
    };

    [[nodiscard]] std::string lookUp(const std::string& program) const;

    std::map<std::string, Named> m_byProgram;
};

}  // namespace kestrune
