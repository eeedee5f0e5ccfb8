#include "platform/macos/MacLanguages.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace kestrune::MacLanguages {

namespace {

// RFC 5646: a script has four letters, a region two letters or three digits.
constexpr std::size_t scriptLength = 4;
constexpr std::size_t letterRegionLength = 2;
constexpr std::size_t digitRegionLength = 3;

struct Tag {
    std::string language;
    std::string script;
    std::string region;
};

Tag parsed(std::string_view text) {
    Tag tag;
    for (const std::string& part : split(text, '-')) {
        if (tag.language.empty()) {
            tag.language = part;
        } else if (part.size() == scriptLength && tag.script.empty() && tag.region.empty()) {
            tag.script = part;
        } else if ((part.size() == letterRegionLength || part.size() == digitRegionLength) && tag.region.empty()) {
            tag.region = part;
        }
    }
    return tag;
}

/// Catalogues tell the two ways of writing Chinese apart by a region where each is written.
std::string chineseLocale(const Tag& tag) {
    constexpr std::array traditionalRegions{"TW", "HK", "MO"};
    const bool isTraditional =
        tag.script == "Hant" || (tag.script.empty() && std::find(traditionalRegions.begin(), traditionalRegions.end(),
                                                                 tag.region) != traditionalRegions.end());
    return isTraditional ? "zh_TW" : "zh_CN";
}

std::string modifier(const std::string& script) {
    return script == "Latn" ? "@latin" : script == "Cyrl" ? "@cyrillic" : "";
}

}  // namespace

std::vector<std::string> localesOf(std::string_view tag) {
    const Tag parts = parsed(tag);
    const std::string locale = parts.language + (parts.region.empty() ? "" : "_" + parts.region);
    if (parts.language != "zh") {
        return {locale + modifier(parts.script)};
    }
    const std::string written = chineseLocale(parts);
    return parts.region.empty() || locale == written ? std::vector{written} : std::vector{locale, written};
}

}  // namespace kestrune::MacLanguages
