#include "platform/macos/MacTranslation.h"

#include <libintl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "base/Localized.h"
#include "base/Text.h"
#include "platform/TranslationCatalogue.h"
#include "platform/macos/MacLanguages.h"

namespace kestrune::MacTranslation {

namespace {

constexpr const char* domain = "kestrune";

const char* translation(const char* english) {
    return dgettext(domain, english);
}

const char* countForm(const char* one, const char* many, unsigned long count) {
    return dngettext(domain, one, many, count);
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::vector<std::string> localesOfAll(const std::vector<std::string>& languageTags) {
    std::vector<std::string> all;
    for (const std::string& tag : languageTags) {
        const std::vector<std::string> locales = MacLanguages::localesOf(tag);
        all.insert(all.end(), locales.begin(), locales.end());
    }
    return all;
}

}  // namespace

std::vector<std::string> folders(const std::string& resources, const std::string& executable) {
    const std::string programs = executable.substr(0, executable.rfind('/') + 1);
    return {resources + "/locale", standardizedPath(programs + "../share/locale")};
}

std::string install(const std::vector<std::string>& folders, const std::vector<std::string>& languageTags) {
    std::string folder;
    const auto exists = [&folders, &folder](const std::string& name) {
        const auto found = std::find_if(folders.begin(), folders.end(), [&name](const std::string& candidate) {
            return access((candidate + "/" + name + "/LC_MESSAGES/" + domain + ".mo").c_str(), R_OK) == 0;
        });
        folder = found == folders.end() ? "" : *found;
        return found != folders.end();
    };
    std::string name = TranslationCatalogue::chosen(
        {variable("LANGUAGE"), variable("LC_ALL"), variable("LC_MESSAGES"), variable("LANG")},
        localesOfAll(languageTags), exists);
    if (name.empty()) {
        return "";
    }
    // libintl has a rule of its own for the user's language. It finds what was found here.
    setenv("LANGUAGE", name.c_str(), 1);
    if (bindtextdomain(domain, folder.c_str()) == nullptr || bind_textdomain_codeset(domain, "UTF-8") == nullptr) {
        return "";
    }
    setTranslation({translation, countForm});
    return name;
}

}  // namespace kestrune::MacTranslation
