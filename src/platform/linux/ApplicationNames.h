#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/linux/DesktopEntry.h"

namespace kestrune {

/// What /proc tells about one process.
struct ProcessFacts {
    std::string executable;              ///< the path "exe" links to, perhaps with " (deleted)"; empty when unknown
    std::vector<std::string> arguments;  ///< with the program name first
    std::string workingFolder;           ///< of an interpreter only; empty when unknown

    bool operator==(const ProcessFacts&) const = default;
};

/// Program names to the names their .desktop files give them.
class ApplicationNames final {
public:
    /// The first entry that names a program wins, unless a later one starts it without arguments of its own and the
    /// first did not: "Steam" before a game that Steam starts.
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
