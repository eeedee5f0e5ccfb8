#include "platform/TranslationCatalogue.h"

#include "base/Text.h"

namespace kestrune::TranslationCatalogue {

namespace {

bool isUntranslated(const std::string& locale) {
    return locale == "C" || locale == "POSIX";
}

/// "de_AT.UTF-8@euro" is looked for as "de_AT@euro", "de_AT", "de@euro" and "de", as gettext does.
std::vector<std::string> catalogueNames(const std::string& locale) {
    const std::string::size_type at = locale.find('@');
    const std::string modifier = at == std::string::npos ? "" : locale.substr(at);
    const std::string region = locale.substr(0, locale.find_first_of(".@"));
    const std::string language = region.substr(0, region.find('_'));
    return {region + modifier, region, language + modifier, language};
}

}  // namespace

const std::string& Environment::locale() const {
    return !allCategories.empty() ? allCategories : !messages.empty() ? messages : everythingElse;
}

std::string chosen(const Environment& environment, const std::vector<std::string>& preferred,
                   const std::function<bool(const std::string& name)>& exists) {
    if (isUntranslated(environment.locale())) {
        return "";
    }
    for (const std::string& locale : environment.languages.empty() ? preferred : split(environment.languages, ':')) {
        const std::vector<std::string> names = catalogueNames(locale);
        if (names.back() == "en" || isUntranslated(locale)) {
            return "";
        }
        for (const std::string& name : names) {
            if (!name.empty() && name.find('/') == std::string::npos && exists(name)) {
                return name;
            }
        }
    }
    return "";
}

}  // namespace kestrune::TranslationCatalogue
