#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrune::MacLanguages {

/// A language tag of the system ("de-AT", "zh-Hant-HK", "sr-Latn") as the locales that catalogues are named after, best
/// first. Pure.
[[nodiscard]] std::vector<std::string> localesOf(std::string_view tag);

}  // namespace kestrune::MacLanguages
