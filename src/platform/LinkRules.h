#pragma once

#include <optional>
#include <string>

/// What a program may ask to be opened in the browser, the same on every system. Any thread.
namespace kestrune::LinkRules {

/// An https address without white space and control characters.
[[nodiscard]] bool isWebAddress(const std::string& address);

/// The file of the page called name in folder, in the plain form of its path; nothing when name is more than a name or
/// there is no such file.
[[nodiscard]] std::optional<std::string> helpPage(const std::string& folder, const std::string& name);

}  // namespace kestrune::LinkRules
