#include "platform/PrivilegedCommand.h"

#include "base/Text.h"

namespace kestrune::PrivilegedCommand {

namespace {

std::string singleQuoted(std::string_view element) {
    std::string quoted = "'";
    for (const char c : element) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    quoted += '\'';
    return quoted;
}

}  // namespace

std::string shellQuoted(const std::vector<std::string>& elements) {
    std::vector<std::string> quoted;
    quoted.reserve(elements.size());
    for (const std::string& element : elements) {
        quoted.push_back(singleQuoted(element));
    }
    return joined(quoted, " ");
}

std::string scriptLiteral(std::string_view text) {
    std::string literal = "\"";
    for (const char c : text) {
        if (c == '\\' || c == '"') {
            literal += '\\';
        }
        literal += c;
    }
    literal += '"';
    return literal;
}

std::string administratorScript(const std::string& path, const std::vector<std::string>& arguments) {
    std::vector<std::string> command{path};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return "do shell script " + scriptLiteral(shellQuoted(command)) + " with administrator privileges";
}

}  // namespace kestrune::PrivilegedCommand
