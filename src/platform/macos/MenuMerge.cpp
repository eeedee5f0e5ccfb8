#include "platform/macos/MenuMerge.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/Text.h"

namespace kestrune {

namespace {

constexpr std::size_t charactersOfALine = 80;

bool hasSameStructure(const std::vector<MenuItem>& left, const std::vector<MenuItem>& right);

bool isSameKindOfLine(const MenuItem& left, const MenuItem& right) {
    return left.separator == right.separator && left.action == right.action && left.key == right.key &&
           hasSameStructure(left.submenu, right.submenu);
}

bool hasSameStructure(const std::vector<MenuItem>& left, const std::vector<MenuItem>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSameKindOfLine);
}

/// Brings shown to what wanted says as far as an open menu allows, and notes each line that changes. Both have the same
/// structure.
void mergeLines(const std::vector<MenuItem>& wanted, std::vector<MenuItem>& shown, bool isOpen,
                const std::vector<std::size_t>& above, std::vector<MenuLineChange>& changes) {
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        std::vector<std::size_t> place = above;
        place.push_back(index);
        mergeLines(wanted[index].submenu, shown[index].submenu, isOpen, place, changes);

        MenuItem line = wanted[index];
        line.submenu = shown[index].submenu;
        line.hidden = isOpen ? shown[index].hidden : line.hidden;
        if (line != shown[index]) {
            shown[index] = line;
            changes.push_back({std::move(place), std::move(line)});
        }
    }
}

}  // namespace

MenuSteps MenuMerge::show(std::vector<MenuItem> menu) {
    m_wanted = std::move(menu);
    return steps();
}

MenuSteps MenuMerge::closed() {
    m_isOpen = false;
    return steps();
}

MenuSteps MenuMerge::steps() {
    MenuSteps answer;
    if (hasSameStructure(m_wanted, m_shown)) {
        mergeLines(m_wanted, m_shown, m_isOpen, {}, answer.changes);
    } else if (!m_isOpen) {
        m_shown = m_wanted;
        answer.rebuilt = m_wanted;
    }
    return answer;
}

MenuItem fitted(MenuItem line) {
    line.title = joined(splitAtWhiteSpace(line.title), " ");
    if (characterCount(line.title) <= charactersOfALine) {
        return line;
    }
    std::string cut;
    std::string_view rest = line.title;
    for (std::size_t characters = 1; characters < charactersOfALine; ++characters) {
        const std::string_view character = firstCharacter(rest);
        cut += character;
        rest.remove_prefix(character.size());
    }
    if (line.tooltip.empty()) {
        line.tooltip = line.title;
    }
    line.title = cut + "…";
    return line;
}

}  // namespace kestrune
