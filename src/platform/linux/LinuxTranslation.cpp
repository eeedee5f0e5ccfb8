#include "platform/linux/LinuxTranslation.h"

#include <libintl.h>
#include <unistd.h>

#include <array>
#include <clocale>
#include <cstdlib>
#include <filesystem>

#include "base/Localized.h"
#include "base/Text.h"
#include "platform/linux/LinuxAccount.h"

namespace kestrune::LinuxTranslation {

namespace {

constexpr const char* domain = "kestrune";

/// The locale that texts are looked up in. It lives as long as the program: other threads may still ask while it ends.
locale_t& textLocale() {
    static locale_t locale = nullptr;
    return locale;
}

/// gettext translates nothing for a thread in the locale "C", which is where a program ends up whose language is not
/// generated on this system, and every program that never asked for a locale.
class InTextLocale final {
public:
    InTextLocale() : m_before(uselocale(textLocale())) {}

    ~InTextLocale() { uselocale(m_before); }

    InTextLocale(const InTextLocale&) = delete;
    InTextLocale& operator=(const InTextLocale&) = delete;

private:
    locale_t m_before;
};

const char* translation(const char* english) {
    const InTextLocale guard;
    return dgettext(domain, english);
}

const char* countForm(const char* one, const char* many, unsigned long count) {
    const InTextLocale guard;
    return dngettext(domain, one, many, count);
}

bool isInPlace(const std::string& folder, const std::string& name) {
    const std::string file = folder + "/" + name + "/LC_MESSAGES/" + domain + ".mo";
    return access(file.c_str(), R_OK) == 0;
}

Environment environmentOfProcess() {
    using LinuxAccount::variable;
    return {variable("LANGUAGE"), variable("LC_ALL"), variable("LC_MESSAGES"), variable("LANG")};
}

/// The user's own locale where the system has it, else one that has no language of its own.
locale_t openTextLocale(const Environment& environment) {
    const std::string& name = environment.locale();
    const locale_t own = name.empty() ? nullptr : newlocale(LC_MESSAGES_MASK, name.c_str(), nullptr);
    if (own != nullptr) {
        return own;
    }
    if (environment.languages.empty()) {
        // What a locale that is missing here would have stood for.
        setenv("LANGUAGE", name.c_str(), 1);
    }
    return newlocale(LC_MESSAGES_MASK, "C.UTF-8", nullptr);
}

}  // namespace

std::string catalogue(const Environment& environment, const std::function<bool(const std::string& name)>& exists) {
    return TranslationCatalogue::chosen(environment, split(environment.locale(), ':'), exists);
}

std::string installedFolder() {
    const std::filesystem::path folder = std::filesystem::path(LinuxAccount::executablePath()).parent_path();
    return (folder.parent_path() / "share" / "locale").string();
}

std::string install(std::string folder) {
    const Environment environment = environmentOfProcess();
    std::string name = catalogue(environment, [&folder](const std::string& candidate) {
        folder = folder.empty() ? installedFolder() : folder;
        return isInPlace(folder, candidate);
    });
    if (name.empty()) {
        return "";
    }
    if (environment.languages.find('/') != std::string::npos) {
        // gettext would take such a name for a path, and a catalogue from wherever that leads.
        setenv("LANGUAGE", name.c_str(), 1);
    }
    textLocale() = openTextLocale(environment);
    if (textLocale() == nullptr || bindtextdomain(domain, folder.c_str()) == nullptr ||
        bind_textdomain_codeset(domain, "UTF-8") == nullptr) {
        return "";
    }
    setTranslation({translation, countForm});
    return name;
}

}  // namespace kestrune::LinuxTranslation
