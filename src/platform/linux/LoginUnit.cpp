#include "platform/linux/LoginUnit.h"

#include <vector>

#include "base/Text.h"
#include "platform/ProgramPath.h"

namespace kestrune::LoginUnit {

namespace {

constexpr std::string_view startKey = "ExecStart=";

std::string quoted(std::string_view path) {
    std::string word = "\"";
    for (const char c : path) {
        if (c == '"' || c == '\\') {
            word += '\\';
        }
        word += c;
        if (c == '%') {
            word += c;
        }
    }
    return word + '"';
}

// The ":" keeps systemd from replacing "$" and what follows. It refuses quotes and backslashes in the first word.
std::string startLine(std::string_view path) {
    const bool isRefused = path.find_first_of("\"'\\") != std::string_view::npos;
    return std::string(startKey) + (isRefused ? ":/usr/bin/nice -n 0 " : ":") + quoted(path);
}

std::string unit(std::string_view path) {
    return "[Unit]\n"
           "Description=Kestrune\n"
           "PartOf=graphical-session.target\n"
           "After=graphical-session.target\n"
           "\n"
           "[Service]\n" +
           startLine(path) +
           "\n"
           "Restart=no\n"
           "Slice=background.slice\n"
           "\n"
           "[Install]\n"
           "WantedBy=graphical-session.target\n";
}

std::string withoutStartLine(std::string_view text) {
    std::vector<std::string> lines = split(text, '\n');
    std::erase_if(lines, [](const std::string& line) { return line.starts_with(startKey); });
    return joined(lines, "\n");
}

}  // namespace

std::optional<std::string> textFor(const std::string& executable) {
    return isPlainProgramPath(executable) ? std::optional(unit(executable)) : std::nullopt;
}

bool isOurs(std::string_view text) {
    return withoutStartLine(text) == withoutStartLine(unit("/"));
}

}  // namespace kestrune::LoginUnit
