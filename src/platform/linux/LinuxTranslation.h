#pragma once

#include <functional>
#include <string>

#include "platform/TranslationCatalogue.h"

/// The user's language, from the environment, and the program's catalogue for it, through GNU gettext.
namespace kestrune::LinuxTranslation {

using TranslationCatalogue::Environment;

/// The catalogue to use, such as "de" or "pt_BR"; empty for the English that the program is written in. LANGUAGE also
/// counts where no locale is set at all, but not in the locales "C" and "POSIX", which ask for untranslated texts.
[[nodiscard]] std::string catalogue(const Environment& environment,
                                    const std::function<bool(const std::string& name)>& exists);

/// The catalogues that belong to the program that runs: "../share/locale" from its own folder.
[[nodiscard]] std::string installedFolder();

/// Has every later text of the program in the user's language where folder (".../share/locale"; when empty,
/// installedFolder()) holds a catalogue for it. Answers the catalogue in use; empty for English, which costs no look at
/// the disk. Once, before other threads start: it may set LANGUAGE.
std::string install(std::string folder = {});

}  // namespace kestrune::LinuxTranslation
