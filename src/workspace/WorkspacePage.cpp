#include "workspace/WorkspacePage.h"

#include <cstddef>

#include "base/Localized.h"

namespace kestrune {

namespace {

struct PageText {
    std::string_view title;
    std::string_view symbol;
};

constexpr std::array<PageText, allWorkspacePages.size()> pageTexts{{
    {localizable("Overview"), "square.grid.2x2"},
    {localizable("Storage"), "internaldrive"},
    {localizable("Disk Explorer"), "chart.bar.xaxis"},
    {localizable("AI Tools"), "brain.head.profile"},
    {localizable("Running Apps"), "rectangle.stack"},
    {localizable("Automation"), "clock.arrow.circlepath"},
    {localizable("Activity"), "clock"},
    {localizable("Settings"), "gearshape"},
}};

}  // namespace

std::string_view rawValue(WorkspacePage page) {
    return pageTexts.at(static_cast<std::size_t>(page)).title;
}

std::string_view symbol(WorkspacePage page) {
    return pageTexts.at(static_cast<std::size_t>(page)).symbol;
}

bool showsProcesses(WorkspacePage page) {
    return page == WorkspacePage::ai || page == WorkspacePage::apps;
}

}  // namespace kestrune
