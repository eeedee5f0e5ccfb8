#include "platform/linux/ProcessFacts.h"

#include <fcntl.h>

#include <string_view>

#include "base/Text.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxProcessIdentity.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

ProcessFacts readProcessFacts(const std::string& folder) {
    // A virtual machine's class path can be very long; what tells programs apart comes first.
    constexpr std::size_t longest = 16'384;
    ProcessFacts facts;
    const LinuxFileDescriptor process(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    facts.executable = LinuxProcessIdentity::executableOf(process.get()).value_or(std::string{});
    LinuxStatusFile commandLine(folder + "/cmdline");
    std::string_view text = commandLine.read(longest).value_or(std::string_view{});
    if (!text.empty() && text.back() == '\0') {
        text.remove_suffix(1);
    }
    if (!text.empty()) {
        facts.arguments = split(text, '\0');
    }
    if (isLauncher(lastPathComponent(facts.executable))) {
        facts.workingFolder = LinuxProcessIdentity::workingDirectoryOf(process.get()).value_or(std::string{});
    }
    return facts;
}

}  // namespace kestrune
