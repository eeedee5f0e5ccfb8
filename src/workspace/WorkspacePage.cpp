#include "workspace/WorkspacePage.h"

#include <cstddef>

namespace kestrune {

namespace {

struct PageText {
    std::string_view title;
    std::string_view symbol;
};

constexpr std::array<PageText, allWorkspacePages.size()> pageTexts{{
    {"Overview", "square.grid.2x2"},
    {"Storage", "internaldrive"},
    {"Disk Explorer", "chart.bar.xaxis"},
    {"AI Tools", "brain.head.profile"},
    {"Running Apps", "rectangle.stack"},
    {"Automation", "clock.arrow.circlepath"},
    {"Activity", "clock"},
    {"Settings", "gearshape"},
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
