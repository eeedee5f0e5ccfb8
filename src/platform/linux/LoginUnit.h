#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The text of the systemd user unit that starts the program with the graphical session (systemd.service(5),
/// systemd.syntax(7)). It says what a launch agent would: a label (its name), the program and no arguments, started at
/// login, never restarted, in the background. Pure.
namespace kestrune::LoginUnit {

/// Our unit for the program at executable, an absolute path. Nothing for a path that a unit cannot hold: one with
/// control characters or bytes that are not UTF-8.
[[nodiscard]] std::optional<std::string> textFor(const std::string& executable);

/// Whether text is our unit for some path, and nobody has changed anything else in it.
[[nodiscard]] bool isOurs(std::string_view text);

}  // namespace kestrune::LoginUnit
