#pragma once

#include <optional>
#include <string>

/// The settings of a test run, kept apart from the user's own under a name that KESTRUNE_TEST_SUITE gives.
namespace kestrune::PreferenceSuite {

/// Whether a suite may have this name: 1 to 64 ASCII letters, digits, '.', '-' and '_', not beginning with '.', and
/// not "preferences", which is the name of the standard settings where they lie in a file.
[[nodiscard]] bool isPlainName(const std::string& name);

/// The suite that the environment names; nothing where it names none. A suite without a plain name ends the program.
[[nodiscard]] std::optional<std::string> fromEnvironment();

/// Says on standard error that the suite cannot be used and what to do, and ends the program.
[[noreturn]] void refuse();

}  // namespace kestrune::PreferenceSuite
