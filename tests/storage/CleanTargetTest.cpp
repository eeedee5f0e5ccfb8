#include "storage/CleanTarget.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

CleanTarget targetOf(CleanCategory category) {
    CleanTarget target;
    target.category = category;
    return target;
}

}  // namespace

TEST(CleanCategory, theTitleLogsYieldsStoredValueThree) {
    ASSERT_TRUE(cleanCategory("Logs").has_value());
    EXPECT_EQ(static_cast<int>(*cleanCategory("Logs")), 3);
}

TEST(CleanCategory, otherTextsYieldNone) {
    EXPECT_EQ(cleanCategory("logs"), std::nullopt);
    EXPECT_EQ(cleanCategory(""), std::nullopt);
    EXPECT_EQ(cleanCategory("Logs "), std::nullopt);
}

TEST(CleanCategory, everyTitleLeadsBackToItsCategory) {
    for (const CleanCategory category : allCleanCategories) {
        EXPECT_EQ(cleanCategory(rawValue(category)), category);
    }
}

TEST(CleanCategory, categoriesKeepTheirOrderTitlesIconsAndNotes) {
    EXPECT_EQ(sizeof(CleanCategory), 1U);
    EXPECT_EQ(rawValue(allCleanCategories[0]), "AI Models & Caches");
    EXPECT_EQ(rawValue(allCleanCategories[1]), "Build & Package Caches");
    EXPECT_EQ(rawValue(allCleanCategories[2]), "App Leftovers");
    EXPECT_EQ(rawValue(allCleanCategories[3]), "Logs");
    EXPECT_EQ(icon(CleanCategory::aiModels), "brain.head.profile");
    EXPECT_EQ(icon(CleanCategory::buildCaches), "hammer.fill");
    EXPECT_EQ(icon(CleanCategory::appLeftovers), "archivebox.fill");
    EXPECT_EQ(icon(CleanCategory::logs), "internaldrive.fill");
    EXPECT_EQ(consequenceNote(CleanCategory::aiModels),
              "downloaded models may need downloading again; custom models must be backed up before removal");
    EXPECT_EQ(consequenceNote(CleanCategory::buildCaches),
              "builds and package installs rebuild these on next run; source code is never touched");
    EXPECT_EQ(consequenceNote(CleanCategory::appLeftovers), "left behind by apps that are no longer installed");
    EXPECT_EQ(consequenceNote(CleanCategory::logs), "regenerated automatically by macOS and apps");
}

TEST(CleanTarget, modelsAndLeftoversRequireReviewCachesAndLogsDoNot) {
    EXPECT_TRUE(targetOf(CleanCategory::aiModels).requiresReview());
    EXPECT_FALSE(targetOf(CleanCategory::buildCaches).requiresReview());
    EXPECT_TRUE(targetOf(CleanCategory::appLeftovers).requiresReview());
    EXPECT_FALSE(targetOf(CleanCategory::logs).requiresReview());
}

TEST(CleanTarget, targetsWithEqualPathsAreTheSameItemWhateverTheirTitles) {
    CleanTarget first = targetOf(CleanCategory::logs);
    first.title = "User Logs";
    first.path = "/home/anna/Library/Logs";
    CleanTarget second = first;
    second.title = "Other";
    EXPECT_EQ(first.id(), "/home/anna/Library/Logs");
    EXPECT_EQ(first.id(), second.id());
}

TEST(CleanTarget, theSizeIsShownInFileStyleUnitsAndCanBeReassigned) {
    CleanTarget target = targetOf(CleanCategory::logs);
    target.sizeBytes = 12'300'000;
    EXPECT_EQ(target.sizeFormatted(), "12.3 MB");
    target.sizeBytes = 0;
    EXPECT_EQ(target.sizeFormatted(), "Zero KB");
}

}  // namespace kestrune
