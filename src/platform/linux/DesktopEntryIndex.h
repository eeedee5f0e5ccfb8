#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/linux/DesktopEntry.h"

namespace kestrune {

/// Finds the desktop entry of a running application. Where several fit, one that menus show comes before one that they
/// do not, one without arguments of its own before one with, and the earlier one before the later.
class DesktopEntryIndex final {
public:
    explicit DesktopEntryIndex(std::vector<DesktopEntry> entries = {});

    /// hints may name the entry's window class or its id, most trusted first and in any letter case; programs are file
    /// names the process may run, most trusted first. Null when nothing fits.
    [[nodiscard]] const DesktopEntry* find(const std::vector<std::string>& hints,
                                           const std::vector<std::string>& programs) const;

private:
    using Places = std::unordered_map<std::string, std::size_t>;  ///< into m_entries, by lower-case name

    void add(Places& places, const std::string& name, std::size_t place);
    [[nodiscard]] const DesktopEntry* at(const Places& places, const std::string& name) const;

    std::vector<DesktopEntry> m_entries;
    Places m_byWindowClass;
    Places m_byId;
    Places m_byProgram;
};

}  // namespace kestrune
