#pragma once

#include <functional>
#include <string>
#include <vector>

/// Which of the program's catalogues a user reads. Pure functions.
namespace kestrune::TranslationCatalogue {

/// The environment variables that say which language the user reads; empty where not set.
struct Environment {
    std::string languages;       // LANGUAGE: by preference, separated by ":"
    std::string allCategories;   // LC_ALL
    std::string messages;        // LC_MESSAGES
    std::string everythingElse;  // LANG

    /// The name of the locale for texts; empty when none is set.
    [[nodiscard]] const std::string& locale() const;
};

/// The catalogue to use, such as "de" or "pt_BR"; empty for the English that the program is written in. preferred are
/// the locales the user reads where LANGUAGE names none. The locales "C" and "POSIX" ask for untranslated texts,
/// whatever else is set.
[[nodiscard]] std::string chosen(const Environment& environment, const std::vector<std::string>& preferred,
                                 const std::function<bool(const std::string& name)>& exists);

}  // namespace kestrune::TranslationCatalogue
