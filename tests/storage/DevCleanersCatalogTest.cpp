#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "storage/DevCleaners.h"

namespace kestrune {

namespace {

std::vector<CatalogEntry> wholeCatalog() {
    std::vector<CatalogEntry> all;
    for (const auto& list : {DevCleaners::aiCandidates, DevCleaners::devCandidates, DevCleaners::sysCandidates}) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

}  // namespace

TEST(DevCleanersCatalog, itHoldsExactlyTwentyEntriesInThreeLists) {
    EXPECT_EQ(DevCleaners::aiCandidates.size(), 9U);
    EXPECT_EQ(DevCleaners::devCandidates.size(), 10U);
    EXPECT_EQ(DevCleaners::sysCandidates.size(), 1U);
    EXPECT_EQ(wholeCatalog().size(), 20U);
}

TEST(DevCleanersCatalog, everyPathIsRelativeAndPlain) {
    for (const auto& entry : wholeCatalog()) {
        const std::string path = "/" + std::string(entry.relPath) + "/";
        EXPECT_FALSE(entry.relPath.starts_with('/')) << entry.title;
        EXPECT_EQ(path.find("//"), std::string::npos) << entry.title;
        EXPECT_EQ(path.find("/./"), std::string::npos) << entry.title;
        EXPECT_EQ(path.find("/../"), std::string::npos) << entry.title;
    }
}

TEST(DevCleanersCatalog, noEntryLiesInsideAnother) {
    for (const auto& outer : wholeCatalog()) {
        for (const auto& inner : wholeCatalog()) {
            EXPECT_FALSE(inner.relPath.starts_with(std::string(outer.relPath) + "/")) << inner.title;
        }
    }
}

TEST(DevCleanersCatalog, titlesAndPathsAreUnique) {
    std::set<std::string_view> titles;
    std::set<std::string_view> paths;
    for (const auto& entry : wholeCatalog()) {
        titles.insert(entry.title);
        paths.insert(entry.relPath);
    }
    EXPECT_EQ(titles.size(), 20U);
    EXPECT_EQ(paths.size(), 20U);
}

TEST(DevCleanersCatalog, forbiddenParentsAreNeverTargets) {
    const std::vector<std::string_view> forbidden(DevCleaners::forbiddenTargets.begin(),
                                                  DevCleaners::forbiddenTargets.end());
    EXPECT_EQ(forbidden, (std::vector<std::string_view>{".claude", ".ssh", ".config", ".cache/huggingface"}));
    for (const auto& entry : wholeCatalog()) {
        EXPECT_EQ(std::count(forbidden.begin(), forbidden.end(), entry.relPath), 0) << entry.title;
    }
}

TEST(DevCleanersCatalog, theTextsCarryTheirTypographicCharacters) {
    EXPECT_EQ(DevCleaners::devCandidates[1].subtitle, "Debugging files for iPhones and iPads you’ve connected");
    EXPECT_EQ(DevCleaners::sysCandidates[0].subtitle, "Diagnostic logs — review before removing");
    EXPECT_EQ(DevCleaners::aiCandidates[8].relPath, ".claude/statsig");
}

}  // namespace kestrune
