#include "platform/linux/ProcessFacts.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "base/Text.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

namespace {

std::string linkTarget(const std::string& path) {
    std::error_code error;
    return std::filesystem::read_symlink(path, error).string();
}

}  // namespace

ProcessFacts readProcessFacts(const std::string& folder) {
    // A virtual machine's class path can be very long; what tells programs apart comes first.
    constexpr std::size_t longest = 16'384;
    ProcessFacts facts;
    facts.executable = linkTarget(folder + "/exe");
    LinuxStatusFile commandLine(folder + "/cmdline");
    std::string_view text = commandLine.read(longest).value_or(std::string_view{});
    if (!text.empty() && text.back() == '\0') {
        text.remove_suffix(1);
    }
    if (!text.empty()) {
        facts.arguments = split(text, '\0');
    }
    if (isLauncher(lastPathComponent(facts.executable))) {
        facts.workingFolder = linkTarget(folder + "/cwd");
    }
    return facts;
}

}  // namespace kestrune
