#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

enum class CleanCategory : std::uint8_t { aiModels = 0, buildCaches = 1, appLeftovers = 2, logs = 3 };

inline constexpr std::array<CleanCategory, 4> allCleanCategories{CleanCategory::aiModels, CleanCategory::buildCaches,
                                                                 CleanCategory::appLeftovers, CleanCategory::logs};

/// The title shown for category; also its identity.
[[nodiscard]] std::string_view rawValue(CleanCategory category);

/// The name of its symbol in the icon set.
[[nodiscard]] std::string_view icon(CleanCategory category);

/// What moving things of this category costs the user.
[[nodiscard]] std::string_view consequenceNote(CleanCategory category);

/// The category with exactly this title.
[[nodiscard]] std::optional<CleanCategory> cleanCategory(std::string_view rawValue);

/// One cleanup candidate with its measured size.
struct CleanTarget {
    CleanCategory category = CleanCategory::buildCaches;
    std::string title;
    std::string subtitle;
    std::string path;            ///< absolute
    std::int64_t sizeBytes = 0;  ///< allocated
    bool isCommand = false;      ///< a command is never moved
    std::optional<std::vector<std::string>> command;

    /// Targets with equal paths are the same target.
    [[nodiscard]] const std::string& id() const { return path; }

    /// True for what may hold something irreplaceable; such a target is never recommended.
    [[nodiscard]] bool requiresReview() const;

    [[nodiscard]] std::string sizeFormatted() const;

    bool operator==(const CleanTarget&) const = default;
};

}  // namespace kestrune
