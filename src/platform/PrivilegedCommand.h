#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The two quoting steps of a command that is run again with administrator rights. Pure functions.
namespace kestrune::PrivilegedCommand {

/// elements as one command line for a POSIX shell (POSIX.1-2017, Shell Command Language, 2.2.2 Single-Quotes).
[[nodiscard]] std::string shellQuoted(const std::vector<std::string>& elements);

/// text as an AppleScript string literal.
[[nodiscard]] std::string scriptLiteral(std::string_view text);

/// The script that runs path with arguments as administrator.
[[nodiscard]] std::string administratorScript(const std::string& path, const std::vector<std::string>& arguments);

}  // namespace kestrune::PrivilegedCommand
