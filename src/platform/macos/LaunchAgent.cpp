#include "platform/macos/LaunchAgent.h"

#include "platform/ProgramPath.h"

namespace kestrune::LaunchAgent {

namespace {

constexpr const char* launchctl = "/bin/launchctl";

std::string domainOf(std::uint32_t user) {
    return "gui/" + std::to_string(user);
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

// The two characters of UTF-8 beyond the control characters that XML 1.0 has no way to write.
bool hasNoncharacter(std::string_view text) {
    return text.find("\xEF\xBF\xBE") != std::string_view::npos || text.find("\xEF\xBF\xBF") != std::string_view::npos;
}

}  // namespace

const std::string& label() {
    static const std::string text = "com.torvandelsyn.kestrune";
    return text;
}

std::string path(const std::string& homeDirectory) {
    return homeDirectory + "/Library/LaunchAgents/" + label() + ".plist";
}

std::optional<std::string> propertyList(const std::string& executable) {
    if (!isPlainProgramPath(executable) || hasNoncharacter(executable)) {
        return std::nullopt;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n"
           "<dict>\n"
           "\t<key>Label</key>\n"
           "\t<string>" +
           label() +
           "</string>\n"
           "\t<key>ProgramArguments</key>\n"
           "\t<array>\n"
           "\t\t<string>" +
           escaped(executable) +
           "</string>\n"
           "\t</array>\n"
           "\t<key>RunAtLoad</key>\n"
           "\t<true/>\n"
           "\t<key>KeepAlive</key>\n"
           "\t<false/>\n"
           "\t<key>ProcessType</key>\n"
           "\t<string>Background</string>\n"
           "</dict>\n"
           "</plist>\n";
}

bool isProcess(std::string_view serviceName, std::int32_t parent) {
    constexpr std::int32_t launchd = 1;
    return parent == launchd && serviceName == label();
}

ToolCommand bootstrap(std::uint32_t user, const std::string& path) {
    return {launchctl, {"bootstrap", domainOf(user), path}};
}

ToolCommand bootout(std::uint32_t user) {
    return {launchctl, {"bootout", domainOf(user) + "/" + label()}};
}

}  // namespace kestrune::LaunchAgent
