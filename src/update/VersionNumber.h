#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrune {

/// A version as programs compare it: numbers of any length parted by single dots, most significant first. Missing
/// numbers at the end are 0, so that "2.1" and "2.1.0" are the same version.
class VersionNumber final {
public:
    /// Nothing when text is anything else than digits and dots, or has a dot without a number on each side.
    [[nodiscard]] static std::optional<VersionNumber> parse(std::string_view text);

    bool operator==(const VersionNumber&) const = default;
    [[nodiscard]] std::strong_ordering operator<=>(const VersionNumber& other) const;

private:
    explicit VersionNumber(std::vector<std::string> parts) : m_parts(std::move(parts)) {}

    std::vector<std::string> m_parts;  ///< digits without leading zeros; no empty part at the end
};

}  // namespace kestrune
