#include "storage/CleanTarget.h"

#include <algorithm>

#include "base/ByteCount.h"
#include "base/Localized.h"

namespace kestrune {

namespace {

struct CategoryText {
    std::string_view title;
    std::string_view icon;
    std::string_view consequenceNote;
};

constexpr std::array<CategoryText, allCleanCategories.size()> categoryTexts{{
    {localizable("AI Models & Caches"), "brain.head.profile",
     localizable("downloaded models may need downloading again; custom models must be backed up before removal")},
    {localizable("Build & Package Caches"), "hammer.fill",
     localizable("builds and package installs rebuild these on next run; source code is never touched")},
    {localizable("App Leftovers"), "archivebox.fill", localizable("left behind by apps that are no longer installed")},
    {localizable("Logs"), "internaldrive.fill", localizable("regenerated automatically by macOS and apps")},
}};

const CategoryText& textOf(CleanCategory category) {
    return categoryTexts.at(static_cast<std::size_t>(category));
}

}  // namespace

std::string_view rawValue(CleanCategory category) {
    return textOf(category).title;
}

std::string_view icon(CleanCategory category) {
    return textOf(category).icon;
}

std::string_view consequenceNote(CleanCategory category) {
    return textOf(category).consequenceNote;
}

std::optional<CleanCategory> cleanCategory(std::string_view rawValue) {
    const auto* const found =
        std::find_if(allCleanCategories.begin(), allCleanCategories.end(),
                     [rawValue](CleanCategory category) { return textOf(category).title == rawValue; });
    return found == allCleanCategories.end() ? std::nullopt : std::optional(*found);
}

bool CleanTarget::requiresReview() const {
    return category == CleanCategory::aiModels || category == CleanCategory::appLeftovers;
}

std::string CleanTarget::sizeFormatted() const {
    return formatByteCount(sizeBytes);
}

}  // namespace kestrune
