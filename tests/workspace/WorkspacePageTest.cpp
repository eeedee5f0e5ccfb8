#include "workspace/WorkspacePage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrune {

TEST(WorkspacePage, pagesKeepTheirOrderAndTitles) {
    std::vector<std::string_view> titles;
    for (const WorkspacePage page : allWorkspacePages) {
        titles.push_back(rawValue(page));
    }
    EXPECT_EQ(titles, (std::vector<std::string_view>{"Overview", "Storage", "Disk Explorer", "AI Tools", "Running Apps",
                                                     "Automation", "Activity", "Settings"}));
}

TEST(WorkspacePage, everyPageHasItsSymbol) {
    std::vector<std::string_view> symbols;
    for (const WorkspacePage page : allWorkspacePages) {
        symbols.push_back(symbol(page));
    }
    EXPECT_EQ(symbols, (std::vector<std::string_view>{"square.grid.2x2", "internaldrive", "chart.bar.xaxis",
                                                      "brain.head.profile", "rectangle.stack", "clock.arrow.circlepath",
                                                      "clock", "gearshape"}));
}

TEST(WorkspacePage, onlyAIToolsAndRunningAppsShowProcesses) {
    std::vector<WorkspacePage> listing;
    for (const WorkspacePage page : allWorkspacePages) {
        if (showsProcesses(page)) {
            listing.push_back(page);
        }
    }
    EXPECT_EQ(listing, (std::vector<WorkspacePage>{WorkspacePage::ai, WorkspacePage::apps}));
}

}  // namespace kestrune
