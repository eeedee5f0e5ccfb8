#pragma once

#include <string>
#include <vector>

/// The program's catalogues, through libintl. Before other threads start: it may set LANGUAGE.
namespace kestrune::MacTranslation {

/// Where catalogues may lie, best first: below the bundle's resources, and "../share/locale" beside a plain executable.
[[nodiscard]] std::vector<std::string> folders(const std::string& resources, const std::string& executable);

/// Has every later text of the program in the user's language where one of folders holds a catalogue for it; answers
/// which one, empty for English. languageTags are the system's, best first. LANGUAGE outranks them for whoever sets it,
/// and the locale "C" in LC_ALL, LC_MESSAGES or LANG means English. Another locale there changes nothing: a terminal
/// sets one after the region, which is not the language.
[[nodiscard]] std::string install(const std::vector<std::string>& folders,
                                  const std::vector<std::string>& languageTags);

}  // namespace kestrune::MacTranslation
