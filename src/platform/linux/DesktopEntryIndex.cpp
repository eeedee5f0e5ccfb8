#include "platform/linux/DesktopEntryIndex.h"

#include <string_view>
#include <utility>

#include "base/Text.h"

namespace kestrune {

namespace {

int rankOf(const DesktopEntry& entry) {
    return (entry.isShown ? 2 : 0) + (entry.hasOwnArguments ? 0 : 1);
}

std::string plainId(const std::string& hint) {
    constexpr std::string_view suffix = ".desktop";
    return lowerCased(hint.ends_with(suffix) ? hint.substr(0, hint.size() - suffix.size()) : hint);
}

}  // namespace

DesktopEntryIndex::DesktopEntryIndex(std::vector<DesktopEntry> entries) : m_entries(std::move(entries)) {
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        const DesktopEntry& entry = m_entries[place];
        add(m_byWindowClass, entry.windowClass, place);
        add(m_byId, entry.id, place);
        for (const std::string& program : entry.programs) {
            add(m_byProgram, program, place);
        }
    }
}

const DesktopEntry* DesktopEntryIndex::find(const std::vector<std::string>& hints,
                                            const std::vector<std::string>& programs) const {
    for (const std::string& hint : hints) {
        const std::string name = plainId(hint);
        for (const Places* const places : {&m_byWindowClass, &m_byId}) {
            if (const DesktopEntry* const entry = at(*places, name)) {
                return entry;
            }
        }
    }
    // The first piece of a window's class is often the program's own name.
    for (const std::vector<std::string>* const names : {&programs, &hints}) {
        for (const std::string& name : *names) {
            if (const DesktopEntry* const entry = at(m_byProgram, lowerCased(name))) {
                return entry;
            }
        }
    }
    return nullptr;
}

void DesktopEntryIndex::add(Places& places, const std::string& name, std::size_t place) {
    if (name.empty()) {
        return;
    }
    const auto [known, isNew] = places.try_emplace(lowerCased(name), place);
    if (!isNew && rankOf(m_entries[place]) > rankOf(m_entries[known->second])) {
        known->second = place;
    }
}

const DesktopEntry* DesktopEntryIndex::at(const Places& places, const std::string& name) const {
    const auto known = places.find(name);
    return known == places.end() ? nullptr : &m_entries[known->second];
}

}  // namespace kestrune
