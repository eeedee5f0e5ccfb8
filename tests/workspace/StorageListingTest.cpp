#include "workspace/StorageListing.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

CleanTarget target(CleanCategory category, const std::string& title, const std::string& path) {
    CleanTarget made;
    made.category = category;
    made.title = title;
    made.subtitle = "Downloaded packages";
    made.path = path;
    return made;
}

const std::vector<CleanTarget> allTargets{
    target(CleanCategory::aiModels, "Ollama Models", "/home/anna/.ollama/models"),
    target(CleanCategory::buildCaches, "Gradle Caches", "/home/anna/.gradle/caches"),
    target(CleanCategory::buildCaches, "NPM Global Cache", "/home/anna/.npm/_cacache"),
};

std::vector<std::string> titlesOf(const std::vector<CleanTarget>& rows) {
    std::vector<std::string> titles;
    for (const auto& row : rows) {
        titles.push_back(row.title);
    }
    return titles;
}

}  // namespace

TEST(StorageListing, withoutAFilterEveryTargetIsListedInItsOrder) {
    EXPECT_EQ(storageRows(allTargets, {}, {}), allTargets);
}

TEST(StorageListing, aCategoryKeepsItsOwn) {
    EXPECT_EQ(titlesOf(storageRows(allTargets, {}, {CleanCategory::aiModels, "", false})),
              (std::vector<std::string>{"Ollama Models"}));
    EXPECT_TRUE(storageRows(allTargets, {}, {CleanCategory::appLeftovers, "", false}).empty());
}

TEST(StorageListing, theSearchLooksIntoTitleSubtitleAndPathInEitherCase) {
    EXPECT_EQ(titlesOf(storageRows(allTargets, {}, {std::nullopt, "GRADLE", false})),
              (std::vector<std::string>{"Gradle Caches"}));
    EXPECT_EQ(titlesOf(storageRows(allTargets, {}, {std::nullopt, "_CaCache", false})),
              (std::vector<std::string>{"NPM Global Cache"}));
    EXPECT_EQ(storageRows(allTargets, {}, {std::nullopt, "downloaded", false}).size(), 3U);
    EXPECT_TRUE(storageRows(allTargets, {}, {std::nullopt, "cargo", false}).empty());
}

TEST(StorageListing, excludedTargetsAreListedOnlyWhenAskedFor) {
    const std::set<std::string> excluded{"/home/anna/.gradle/caches"};
    EXPECT_EQ(titlesOf(storageRows(allTargets, excluded, {})),
              (std::vector<std::string>{"Ollama Models", "NPM Global Cache"}));
    EXPECT_EQ(storageRows(allTargets, excluded, {std::nullopt, "", true}), allTargets);
}

TEST(StorageListing, categoryAndSearchHoldTogether) {
    EXPECT_TRUE(storageRows(allTargets, {}, {CleanCategory::aiModels, "gradle", false}).empty());
}

TEST(StorageListing, pathsBelowHomeBeginWithATilde) {
    EXPECT_EQ(abbreviatedPath("/home/anna/.npm/_cacache", "/home/anna"), "~/.npm/_cacache");
    EXPECT_EQ(abbreviatedPath("/home/anna", "/home/anna/"), "~");
}

TEST(StorageListing, pathsElsewhereStayAsTheyAre) {
    EXPECT_EQ(abbreviatedPath("/home/annabel/x", "/home/anna"), "/home/annabel/x");
    EXPECT_EQ(abbreviatedPath("/etc", "/"), "/etc");
    EXPECT_EQ(abbreviatedPath("/etc", ""), "/etc");
}

}  // namespace kestrune
